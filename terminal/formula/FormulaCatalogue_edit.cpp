// Parameters and texts of formulas.

#include "terminal/formula/FormulaCatalogue.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cmath>

namespace terminal {
namespace {

const QString kSection = QStringLiteral("formulas");

QString tr(const char *text) {
    return QCoreApplication::translate("FormulaCatalogue", text);
}

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

TC::CFormulaParameter shown(const FormulaParameter &parameter) {
    TC::CFormulaParameter made;
    made.mName = parameter.name;
    made.mText = parameter.text;
    made.mIsText = parameter.isText;
    made.mDefault = parameter.value;
    made.mMin = parameter.min;
    made.mMax = parameter.max;
    made.mStrDefault = parameter.textValue;
    return made;
}

/// Why a value cannot be that of a parameter; empty when it can.
QString refusalOf(const FormulaParameter &parameter, const TC::CFormulaParameter &value) {
    if (parameter.isText != value.mIsText) {
        return tr("参数 %1 的类型不符").arg(parameter.name);
    }
    const bool inRange = value.mValue >= parameter.min && value.mValue <= parameter.max;
    return parameter.isText || inRange ? QString() : tr("参数 %1 的值超出范围").arg(parameter.name);
}

QJsonValue keptValue(const FormulaParameter &parameter, const TC::CFormulaParameter &value) {
    return parameter.isText ? QJsonValue(value.mStrValue) : QJsonValue(value.mValue);
}

} // namespace

TC::CFormulaParameters FormulaCatalogue::parameters(const QString &name) {
    TC::CFormulaParameters all;
    const FormulaPtr formula = find(name);
    if (!formula) {
        return scriptParameters(name);
    }
    const TC::CFormulaDetail &record = *formula->record;
    for (const FormulaParameter &parameter : formula->description.parameters) {
        TC::CFormulaParameter made = shown(parameter);
        if (parameter.isText) {
            made.mStrValue = record.mStrParamValues[record.mStrParamNames.indexOf(parameter.name)];
        } else {
            made.mValue = record.mParamValues[record.mParamNames.indexOf(parameter.name)];
        }
        all.append(made);
    }
    return all;
}

QString FormulaCatalogue::setParameters(const QString &name, const TC::CFormulaParameters &parameters) {
    const FormulaPtr formula = find(name);
    if (!formula) {
        return setScriptParameters(name, parameters);
    }
    const QString entry = formula->description.name;
    QJsonObject kept = mConfig.section(kSection).value(entry).toObject();
    TC::CFormulaParam request;
    request.mFormulaName = name;
    LuaFormulaFile trial = *fileOf(request);
    for (const TC::CFormulaParameter &value : parameters) {
        for (const FormulaParameter &parameter : formula->description.parameters) {
            if (parameter.name != value.mName) {
                continue;
            }
            const QString refusal = refusalOf(parameter, value);
            if (!refusal.isEmpty()) {
                return refusal;
            }
            kept.insert(parameter.name, keptValue(parameter, value));
            trial.arguments.insert(parameter.name,
                                   value.mIsText ? value.mStrValue : QString::number(value.mValue, 'g', 17));
        }
    }
    if (const auto error = checkLuaFormula(trial)) {
        return tr("参数不能用：%1").arg(error->text);
    }
    mConfig.changeSection(kSection, {{entry, kept}});
    renewRecord(entry);
    changed(formula->description.name);
    return {};
}

TC::CFormulaDetailPtr FormulaCatalogue::script(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mScripts.value(name.toUpper());
}

TC::CFormulaParameters FormulaCatalogue::scriptParameters(const QString &name) const {
    TC::CFormulaParameters all;
    if (const TC::CFormulaDetailPtr defaults = script(name)) {
        const TC::CFormulaDetailPtr record = keptRecord(*defaults);
        for (int i = 0; i < record->mParamNames.size(); ++i) {
            TC::CFormulaParameter made;
            made.mName = record->mParamNames[i];
            made.mValue = record->mParamValues[i];
            made.mDefault = defaults->mParamValues[i];
            all.append(made);
        }
        for (int i = 0; i < record->mStrParamNames.size(); ++i) {
            TC::CFormulaParameter made;
            made.mName = record->mStrParamNames[i];
            made.mIsText = true;
            made.mStrValue = record->mStrParamValues[i];
            made.mStrDefault = defaults->mStrParamValues[i];
            all.append(made);
        }
    }
    return all;
}

/// What a value may be, the model alone knows, and tells it when it runs.
QString FormulaCatalogue::setScriptParameters(const QString &name, const TC::CFormulaParameters &parameters) {
    const TC::CFormulaDetailPtr defaults = script(name);
    if (!defaults) {
        return tr("没有指标 %1").arg(name);
    }
    QJsonObject kept = mConfig.section(kSection).value(defaults->mName).toObject();
    for (const TC::CFormulaParameter &value : parameters) {
        const QVector<QString> &names = value.mIsText ? defaults->mStrParamNames : defaults->mParamNames;
        if (!names.contains(value.mName)) {
            return tr("参数 %1 的类型不符").arg(value.mName);
        }
        if (!value.mIsText && !std::isfinite(value.mValue)) {
            return tr("参数 %1 的值超出范围").arg(value.mName);
        }
        kept.insert(value.mName, value.mIsText ? QJsonValue(value.mStrValue) : QJsonValue(value.mValue));
    }
    mConfig.changeSection(kSection, {{defaults->mName, kept}});
    {
        std::lock_guard<std::mutex> hold(mLock);
        mScriptRecords.insert(defaults->mName, keptRecord(*defaults));
    }
    changed(defaults->mName);
    return {};
}

void FormulaCatalogue::renewRecord(const QString &upperName) {
    std::lock_guard<std::mutex> hold(mLock);
    for (Formulas *formulas : {&mBuiltin, &mUser}) {
        const auto found = formulas->find(upperName);
        if (found != formulas->end()) {
            const Formula &old = **found;
            *found = makeFormula(old.file, old.description, old.isUserMade);
        }
    }
}

TC::CFormulaSource FormulaCatalogue::source(const QString &name) {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = name.toUpper();
    TC::CFormulaSource source;
    source.mHasBuiltin = mBuiltin.contains(upper);
    source.mIsUserMade = mUser.contains(upper) || mFaulty.contains(upper);
    if (mUser.contains(upper)) {
        source.mText = QString::fromUtf8(mUser[upper]->file.text);
    } else if (mFaulty.contains(upper)) {
        source.mText = QString::fromUtf8(mFaulty[upper].text);
    } else if (source.mHasBuiltin) {
        source.mText = QString::fromUtf8(mBuiltin[upper]->file.text);
    }
    return source;
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
        .arg(name.isEmpty() ? tr("我的指标") : name, tr("分钟数"));
}

TC::CFormulaFault FormulaCatalogue::checkFormula(const QString &text) {
    const auto error = checkLuaFormula({QString(), text.toUtf8(), {}});
    return error ? faultOf(*error) : TC::CFormulaFault();
}

TC::CFormulaFault FormulaCatalogue::saveFormula(QString &name, const QString &text) {
    if (mUserFolder.isEmpty()) {
        return fault(tr("没有存放自编指标的文件夹"));
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
        return fault(tr("已有指标 %1，请换一个名称").arg(own));
    }
    if (!isFileName(own)) {
        return fault(tr("名称“%1”不能用作文件名").arg(own));
    }
    file.path = fileToSave(own);
    file.folders = QFileInfo(QDir(mUserFolder).relativeFilePath(file.path)).path().split('/');
    file.folders.removeAll(QStringLiteral("."));
    const FormulaPtr formula = userFormula(file, error);
    if (!formula) {
        return faultOf(error);
    }
    const QString unwritten = writeFormulaFile(file.path, file.text);
    if (!unwritten.isEmpty()) {
        return fault(unwritten);
    }
    {
        std::lock_guard<std::mutex> hold(mLock);
        mUser.insert(own, formula);
        mFaulty.remove(own);
        buildTree();
    }
    name = own;
    changed(own);
    return {};
}

QString FormulaCatalogue::fileToSave(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = name.toUpper();
    if (mUser.contains(upper)) {
        return mUser[upper]->file.path;
    }
    if (mFaulty.contains(upper)) {
        return mFaulty[upper].path;
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
        return tr("指标 %1 没有可恢复的内置内容").arg(name);
    }
    QFile file(fileToSave(name));
    if (file.exists() && !file.remove()) {
        return tr("文件 %1 无法删除（%2）").arg(file.fileName(), file.errorString());
    }
    {
        std::lock_guard<std::mutex> hold(mLock);
        mUser.remove(name.toUpper());
        mFaulty.remove(name.toUpper());
        buildTree();
    }
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
