// The tree and the records; changes are in FormulaCatalogue_edit.cpp.

#include "terminal/formula/FormulaCatalogue.h"

#include "terminal/formula/ScriptModelCatalogue.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <boost/make_shared.hpp>

/// The resource belongs to a static library, which leaves out what nobody names. Outside all namespaces, as it must be.
static void loadFormulaResource() {
    Q_INIT_RESOURCE(formulas);
}

namespace terminal {
namespace {

using Node = TC::CFormulaCatalogDetail;

/// The folder of a name within a folder, made when there is none.
TC::CFormulaCatalogDetailPtr folderIn(const TC::CFormulaCatalogDetailPtr &parent, const QString &name, int type,
                                      int modelType) {
    for (const TC::CFormulaCatalogDetailPtr &child : parent->children()) {
        if (child->isFolder() && child->catalogName() == name) {
            return child;
        }
    }
    const auto folder = boost::make_shared<Node>(name, type, modelType);
    parent->addChild(folder);
    return folder;
}

TC::CFormulaCatalogDetailPtr folderIn(TC::CFormulaCatalogDetailPtr parent, const QStringList &names, int type,
                                      int modelType) {
    for (const QString &name : names) {
        parent = folderIn(parent, name, type, modelType);
    }
    return parent;
}

/// Value of a number that was kept, when it is one that the parameter may have.
double numberOf(const FormulaParameter &parameter, const QJsonObject &kept) {
    const double value = kept.value(parameter.name).toDouble(parameter.value);
    return value >= parameter.min && value <= parameter.max ? value : parameter.value;
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
        const QString name = description->name;
        mBuiltin.insert(name, makeFormula(file, *description, false));
        mOrder.append(name);
    }
}

void FormulaCatalogue::readUser() {
    for (const FormulaFile &file : readFormulaFiles(mUserFolder, mSink)) {
        FormulaError error;
        FormulaPtr formula = userFormula(file, error);
        if (formula && mUser.contains(formula->description.name)) {
            error = {formula->description.name, 0,
                     QCoreApplication::translate("FormulaCatalogue", "文件 %1 与另一个文件的指标同名，未使用")
                         .arg(file.path)};
            formula = nullptr;
        }
        if (formula) {
            mUser.insert(formula->description.name, migrated(formula));
        } else {
            mFaulty.insert(QFileInfo(file.path).completeBaseName().toUpper(), file);
            tell(error);
        }
    }
}

void FormulaCatalogue::readScripts() {
    if (mScriptFolder.isEmpty()) {
        return;
    }
    for (const TC::CFormulaDetailPtr &record : readScriptModels(mScriptFolder)) {
        const QString name = record->mName.toUpper();
        if (mBuiltin.contains(name) || mUser.contains(name)) {
            tell({record->mName, 0, QCoreApplication::translate("FormulaCatalogue", "模型与指标同名，未使用")});
        } else {
            mScripts.insert(name, record);
            mScriptRecords.insert(name, keptRecord(*record));
        }
    }
}

FormulaCatalogue::FormulaPtr FormulaCatalogue::migrated(const FormulaPtr &formula) const {
    const QByteArray text =
        formula ? withNameInCapitals(formula->file.text, formula->description.name) : QByteArray();
    if (!formula || text == formula->file.text) {
        return formula;
    }
    FormulaFile file = formula->file;
    file.text = text;
    const QString unwritten = writeFormulaFile(file.path, file.text);
    if (!unwritten.isEmpty()) {
        tell({formula->description.name, 0, unwritten}); // it is used all the same
    }
    return makeFormula(file, formula->description, true);
}

FormulaCatalogue::FormulaPtr FormulaCatalogue::userFormula(const FormulaFile &file, FormulaError &error) const {
    const LuaFormulaFile lua{QFileInfo(file.path).completeBaseName(), file.text, {}};
    const auto description = describeLuaFormula(lua, &error);
    if (!description) {
        return nullptr;
    }
    if (const auto fault = checkLuaFormula(lua)) {
        error = *fault;
        return nullptr;
    }
    return makeFormula(file, *description, true);
}

std::shared_ptr<FormulaCatalogue::Formula> FormulaCatalogue::makeFormula(const FormulaFile &file,
                                                                         const FormulaDescription &description,
                                                                         bool isUserMade) const {
    const auto formula = std::make_shared<Formula>();
    formula->file = file;
    formula->description = description;
    formula->isUserMade = isUserMade;
    formula->record = makeRecord(*formula);
    return formula;
}

TC::CFormulaDetailPtr FormulaCatalogue::makeRecord(const Formula &formula) const {
    const FormulaDescription &description = formula.description;
    const auto record = boost::make_shared<TC::CFormulaDetail>();
    record->mName = description.name;
    record->mFileName = description.name;
    record->mType = description.type;
    record->mVisible = formula.isUserMade || !formula.file.folders.isEmpty();
    for (int i = 0; i < description.lines.size(); ++i) {
        if (description.lines[i].precision >= 0) {
            record->mPrecisions.insert(i, description.lines[i].precision);
        }
    }
    const QJsonObject kept = mConfig.section(QStringLiteral("formulas")).value(description.name).toObject();
    for (const FormulaParameter &parameter : description.parameters) {
        if (parameter.isText) {
            record->mStrParamNames.append(parameter.name);
            record->mStrParamValues.append(kept.value(parameter.name).toString(parameter.textValue));
        } else {
            record->mParamNames.append(parameter.name);
            record->mParamValues.append(numberOf(parameter, kept));
        }
    }
    return record;
}

TC::CFormulaDetailPtr FormulaCatalogue::keptRecord(const TC::CFormulaDetail &script) const {
    const auto record = boost::make_shared<TC::CFormulaDetail>(script);
    const QJsonObject kept =
        mConfig.section(QStringLiteral("formulas")).value(script.mName.toUpper()).toObject();
    for (int i = 0; i < script.mParamNames.size(); ++i) {
        record->mParamValues[i] = kept.value(script.mParamNames[i]).toDouble(script.mParamValues[i]);
    }
    for (int i = 0; i < script.mStrParamNames.size(); ++i) {
        record->mStrParamValues[i] = kept.value(script.mStrParamNames[i]).toString(script.mStrParamValues[i]);
    }
    return record;
}

void FormulaCatalogue::buildTree() {
    const auto root = boost::make_shared<Node>();
    for (const QString &name : qAsConst(mOrder)) {
        const QStringList &folders = mBuiltin[name]->file.folders;
        const FormulaPtr formula = mUser.value(name, mBuiltin[name]);
        folderIn(root, folders, Node::eFolder, Node::eOrdinary)
            ->addChild(boost::make_shared<Node>(formula->description.name, Node::eFormula));
    }
    const QString own = QCoreApplication::translate("FormulaCatalogue", "自编指标");
    for (auto user = mUser.cbegin(); user != mUser.cend(); ++user) {
        if (!mBuiltin.contains(user.key())) {
            const QStringList folders = QStringList(own) + user.value()->file.folders;
            folderIn(root, folders, Node::eUserFolder, Node::eUserMade)
                ->addChild(
                    boost::make_shared<Node>(user.value()->description.name, Node::eFormula, Node::eUserMade));
        }
    }
    for (const TC::CFormulaDetailPtr &script : qAsConst(mScripts)) {
        folderIn(root, QStringList(QCoreApplication::translate("FormulaCatalogue", "PYTHON模型指标")),
                 Node::eFolder, Node::eScript)
            ->addChild(boost::make_shared<Node>(script->mName, Node::eFormula, Node::eScript));
    }
    mRoot = root;
}

FormulaCatalogue::FormulaPtr FormulaCatalogue::find(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = name.toUpper();
    return mUser.value(upper, mBuiltin.value(upper));
}

TC::CFormulaDetailPtr FormulaCatalogue::getFormula(const QString &name) {
    if (const FormulaPtr formula = find(name)) {
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
    const FormulaPtr formula = find(param.mFormulaName);
    if (!formula) {
        return std::nullopt;
    }
    LuaFormulaFile file{formula->description.name, formula->file.text, {}};
    const TC::CFormulaDetail &record = *formula->record;
    for (int i = 0; i < record.mParamNames.size(); ++i) {
        file.arguments.insert(record.mParamNames[i], QString::number(record.mParamValues[i], 'g', 17));
    }
    for (int i = 0; i < record.mStrParamNames.size(); ++i) {
        file.arguments.insert(record.mStrParamNames[i], record.mStrParamValues[i]);
    }
    return file;
}

QStringList FormulaCatalogue::names() const {
    std::lock_guard<std::mutex> hold(mLock);
    QStringList all;
    for (const QString &name : mOrder) {
        all.append(mUser.value(name, mBuiltin[name])->description.name);
    }
    for (auto user = mUser.cbegin(); user != mUser.cend(); ++user) {
        if (!mBuiltin.contains(user.key())) {
            all.append(user.value()->description.name);
        }
    }
    return all;
}

std::optional<FormulaDescription> FormulaCatalogue::description(const QString &name) const {
    const FormulaPtr formula = find(name);
    return formula ? std::make_optional(formula->description) : std::nullopt;
}

void FormulaCatalogue::tell(const FormulaError &error) const {
    if (mSink) {
        mSink(error);
    }
}

} // namespace terminal
