#include "terminal/formula/FormulaCatalogue.h"

#include "terminal/formula/FormulaParameters.h"
#include "terminal/formula/FormulaTree.h"
#include "terminal/formula/FormulaWords.h"
#include "terminal/formula/ScriptModelCatalogue.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

/// The resource belongs to a static library, which leaves out what nobody names. Outside all namespaces, as it must be.
static void loadFormulaResource() {
    Q_INIT_RESOURCE(formulas);
}

namespace terminal {
namespace {

const QString kSection = QStringLiteral("formulas"); ///< of the configuration

TC::CFormulaFault faultOf(const FormulaError &error) {
    return {error.line, error.text};
}

TC::CFormulaFault fault(const QString &text) {
    return {0, text};
}

/// Whether a name can be that of a file on every system.
bool isFileName(const QString &name) {
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|");
    for (const QChar c : name) {
        if (c < QLatin1Char(' ') || forbidden.contains(c)) {
            return false;
        }
    }
    return !name.isEmpty() && name.size() <= 64 && !name.startsWith(QLatin1Char('.'));
}

} // namespace

FormulaCatalogue::FormulaCatalogue(ConfigService &config, QString userFolder, QString scriptFolder,
                                   FormulaErrorSink sink)
    : mConfig(config), mUserFolder(std::move(userFolder)), mScriptFolder(std::move(scriptFolder)),
      mSink(std::move(sink)) {
    loadFormulaResource();
    readBuiltin();
    readUser();
    readScripts();
    buildTree();
    mIsOpen = true;
}

FormulaCatalogue::~FormulaCatalogue() = default;

void FormulaCatalogue::readBuiltin() {
    for (const FormulaFile &file : readFormulaFiles(QStringLiteral(":/timeshare/formulas"), mSink)) {
        FormulaError error;
        const auto description =
            describeLuaFormula({QFileInfo(file.path).completeBaseName(), file.text, {}}, &error);
        if (!description) {
            tell(error);
            continue;
        }
        mFormulas.addBuiltin(makeFormula(file, *description, false));
    }
}

void FormulaCatalogue::readUser() {
    mTrials = std::make_unique<FormulaTrials>(
        readFormulaFiles(mUserFolder, mSink),
        [this](const FormulaFile &file, const LuaFormulaTrial &trial) { takeUser(file, trial); });
    mTrials->wait(kLongestStart);
}

void FormulaCatalogue::takeUser(const FormulaFile &file, const LuaFormulaTrial &trial) {
    const QString name = trial.description ? trial.description->name : QString();
    if (!trial.description) {
        mFormulas.addFaulty(file);
        tell(trial.error);
    } else if (!mFormulas.hasUser(name)) {
        mFormulas.putUser(migrated(makeFormula(file, *trial.description, true)));
    } else if (mFormulas.userPath(name) != file.path) { // else it has been edited meanwhile
        mFormulas.addFaulty(file);
        tell({name, 0, FormulaWords::tr("文件 %1 与另一个文件的指标同名，未使用").arg(file.path)});
    }
    if (mIsOpen) {
        buildTree();
        changed(name);
    }
}

void FormulaCatalogue::readScripts() {
    if (mScriptFolder.isEmpty()) {
        return;
    }
    for (const TC::CFormulaDetailPtr &record : readScriptModels(mScriptFolder)) {
        const QString name = record->mName.toUpper();
        if (mFormulas.find(name)) {
            tell({record->mName, 0, FormulaWords::tr("模型与指标同名，未使用")});
        } else {
            mScripts.insert(name, record);
            mScriptRecords.insert(name, recordOf(*record, keptValues(name)));
        }
    }
}

CataloguedFormulaPtr FormulaCatalogue::migrated(const CataloguedFormulaPtr &formula) const {
    FormulaFile file = formula->file;
    file.text = withNameInCapitals(file.text, formula->description.name);
    if (file.text == formula->file.text) {
        return formula;
    }
    const QString unwritten = writeFormulaFile(file.path, file.text);
    if (!unwritten.isEmpty()) {
        tell({formula->description.name, 0, unwritten}); // it is used all the same
    }
    return makeFormula(file, formula->description, true);
}

CataloguedFormulaPtr FormulaCatalogue::userFormula(const FormulaFile &file, FormulaError &error) const {
    const LuaFormulaTrial trial = tryLuaFormula({QFileInfo(file.path).completeBaseName(), file.text, {}});
    error = trial.error;
    return trial.description ? makeFormula(file, *trial.description, true) : nullptr;
}

CataloguedFormulaPtr FormulaCatalogue::makeFormula(const FormulaFile &file,
                                                   const FormulaDescription &description,
                                                   bool isUserMade) const {
    const auto formula = std::make_shared<CataloguedFormula>();
    formula->file = file;
    formula->description = description;
    formula->isUserMade = isUserMade;
    formula->record =
        recordOf(description, isUserMade || !file.folders.isEmpty(), keptValues(description.name));
    return formula;
}

QJsonObject FormulaCatalogue::keptValues(const QString &name) const {
    return mConfig.section(kSection).value(name.toUpper()).toObject();
}

void FormulaCatalogue::buildTree() {
    const QVector<FormulaShelf::Place> places = mFormulas.places();
    std::lock_guard<std::mutex> hold(mLock);
    mRoot = formulaTree(places, mScripts.values().toVector());
}

TC::CFormulaDetailPtr FormulaCatalogue::getFormula(const QString &name) {
    if (const CataloguedFormulaPtr formula = mFormulas.find(name)) {
        return formula->record;
    }
    std::lock_guard<std::mutex> hold(mLock);
    return mScriptRecords.value(name.toUpper());
}

TC::CFormulaCatalogDetailPtr FormulaCatalogue::getRootCatalog() {
    std::lock_guard<std::mutex> hold(mLock);
    return mRoot;
}

bool FormulaCatalogue::genLuaFormula(const QString &fileName, const QString &name) {
    const TC::CFormulaDetailPtr record = getFormula(name);
    return record && record->mFileName == fileName;
}

std::optional<LuaFormulaFile> FormulaCatalogue::fileOf(const TC::CFormulaParam &param) const {
    const CataloguedFormulaPtr formula = mFormulas.find(param.mFormulaName);
    if (!formula) {
        return std::nullopt;
    }
    return LuaFormulaFile{formula->description.name, formula->file.text, argumentsOf(*formula->record)};
}

WorkLane FormulaCatalogue::laneOf(const TC::CFormulaParam &param) const {
    const CataloguedFormulaPtr formula = mFormulas.find(param.mFormulaName);
    if (!formula || formula->isUserMade) {
        return WorkLane::First;
    }
    return formula->file.folders.isEmpty() ? WorkLane::Price : WorkLane::Quick;
}

QStringList FormulaCatalogue::names() const {
    QStringList all;
    for (const FormulaShelf::Place &place : mFormulas.places()) {
        all.append(place.formula->description.name);
    }
    return all;
}

std::optional<FormulaDescription> FormulaCatalogue::description(const QString &name) const {
    const CataloguedFormulaPtr formula = mFormulas.find(name);
    return formula ? std::make_optional(formula->description) : std::nullopt;
}

void FormulaCatalogue::tell(const FormulaError &error) const {
    if (mSink) {
        mSink(error);
    }
}

// Parameters

TC::CFormulaParameters FormulaCatalogue::parameters(const QString &name) {
    if (const CataloguedFormulaPtr formula = mFormulas.find(name)) {
        return parametersOf(formula->description, *formula->record);
    }
    const TC::CFormulaDetailPtr defaults = script(name);
    return defaults ? parametersOf(*defaults, *recordOf(*defaults, keptValues(name)))
                    : TC::CFormulaParameters();
}

QString FormulaCatalogue::setParameters(const QString &name, const TC::CFormulaParameters &parameters) {
    const CataloguedFormulaPtr formula = mFormulas.find(name);
    if (!formula) {
        return setScriptParameters(name, parameters);
    }
    const FormulaDescription &description = formula->description;
    QJsonObject kept = keptValues(description.name);
    const QString refusal = setValues(kept, description, parameters);
    if (!refusal.isEmpty()) {
        return refusal;
    }
    const LuaFormulaFile trial{description.name, formula->file.text,
                               argumentsOf(*recordOf(description, true, kept))};
    if (const auto error = checkLuaFormula(trial)) {
        return FormulaWords::tr("参数不能用：%1").arg(error->text);
    }
    mConfig.changeSection(kSection, {{description.name.toUpper(), kept}});
    mFormulas.renew(description.name, [this](const CataloguedFormula &old) {
        return makeFormula(old.file, old.description, old.isUserMade);
    });
    changed(description.name);
    return {};
}

TC::CFormulaDetailPtr FormulaCatalogue::script(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mScripts.value(name.toUpper());
}

QString FormulaCatalogue::setScriptParameters(const QString &name, const TC::CFormulaParameters &parameters) {
    const TC::CFormulaDetailPtr defaults = script(name);
    if (!defaults) {
        return FormulaWords::tr("没有指标 %1").arg(name);
    }
    QJsonObject kept = mConfig.section(kSection).value(defaults->mName).toObject();
    const QString refusal = setValues(kept, *defaults, parameters);
    if (!refusal.isEmpty()) {
        return refusal;
    }
    mConfig.changeSection(kSection, {{defaults->mName, kept}});
    {
        std::lock_guard<std::mutex> hold(mLock);
        mScriptRecords.insert(defaults->mName, recordOf(*defaults, kept));
    }
    changed(defaults->mName);
    return {};
}

// Texts

TC::CFormulaSource FormulaCatalogue::source(const QString &name) {
    return mFormulas.source(name);
}

QString FormulaCatalogue::newFormulaText(const QString &name) {
    return QStringLiteral("formula {\n"
                          "  name = \"%1\", type = 0,\n"
                          "  text = \"\",\n"
                          "  source = \"\",\n"
                          "  parameters = {{\"N\", 10, min = 1, max = 240, text = \"%2\"}},\n"
                          "  lines = {{\"MA\"}},\n"
                          "}\n"
                          "\n"
                          "function run()\n"
                          "  return MA(CLOSE, N)\n"
                          "end\n")
        .arg(name.isEmpty() ? FormulaWords::tr("我的指标") : name, FormulaWords::tr("分钟数"));
}

TC::CFormulaFault FormulaCatalogue::checkFormula(const QString &text) {
    const auto error = checkLuaFormula({QString(), text.toUtf8(), {}});
    return error ? faultOf(*error) : TC::CFormulaFault();
}

TC::CFormulaFault FormulaCatalogue::saveFormula(QString &name, const QString &text) {
    if (mUserFolder.isEmpty()) {
        return fault(FormulaWords::tr("没有存放自编指标的文件夹"));
    }
    FormulaFile file;
    file.text = text.toUtf8();
    FormulaError error;
    const auto description = describeLuaFormula({name, file.text, {}}, &error);
    if (!description) {
        return faultOf(error);
    }
    const QString own = description->name;
    file.text = withNameInCapitals(file.text, own);
    const bool isSame = own.compare(name, Qt::CaseInsensitive) == 0;
    if (!isSame && !source(own).mText.isEmpty()) {
        return fault(FormulaWords::tr("已有指标 %1，请换一个名称").arg(own));
    }
    if (!isFileName(own)) {
        return fault(FormulaWords::tr("名称“%1”不能用作文件名").arg(own));
    }
    file.path = fileToSave(own);
    file.folders = QFileInfo(QDir(mUserFolder).relativeFilePath(file.path)).path().split('/');
    file.folders.removeAll(QStringLiteral("."));
    const CataloguedFormulaPtr formula = userFormula(file, error);
    if (!formula) {
        return faultOf(error);
    }
    const QString unwritten = writeFormulaFile(file.path, file.text);
    if (!unwritten.isEmpty()) {
        return fault(unwritten);
    }
    mFormulas.putUser(formula);
    buildTree();
    name = own;
    changed(own);
    return {};
}

QString FormulaCatalogue::fileToSave(const QString &name) const {
    const QString known = mFormulas.userPath(name);
    if (!known.isEmpty()) {
        return known;
    }
    // A file of that name may hold another formula.
    const QDir folder(mUserFolder);
    QString path = folder.filePath(name + QStringLiteral(".lua"));
    for (int i = 2; QFileInfo::exists(path); ++i) {
        path = folder.filePath(QStringLiteral("%1 %2.lua").arg(name).arg(i));
    }
    return path;
}

QString FormulaCatalogue::restoreFormula(const QString &name) {
    const TC::CFormulaSource current = source(name);
    if (!current.mHasBuiltin || !current.mIsUserMade) {
        return FormulaWords::tr("指标 %1 没有可恢复的内置内容").arg(name);
    }
    QFile file(fileToSave(name));
    if (file.exists() && !file.remove()) {
        return FormulaWords::tr("文件 %1 无法删除（%2）").arg(file.fileName(), file.errorString());
    }
    mFormulas.removeUser(name);
    buildTree();
    changed(name);
    return {};
}

void FormulaCatalogue::setChangeListener(ChangeListener listener) {
    mListener = std::move(listener);
}

void FormulaCatalogue::changed(const QString &name) {
    if (mListener) {
        mListener(name);
    }
}

} // namespace terminal
