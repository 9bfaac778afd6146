#include "terminal/formula/ScriptModelCatalogue.h"

#include "toolkit/files/RegularFile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <boost/make_shared.hpp>

/// A static library leaves out what nobody names. Outside all namespaces, as it must be.
static void loadScriptResource() {
    Q_INIT_RESOURCE(scripts);
}

namespace terminal {
namespace {

constexpr int kLongestHeader = 16384; ///< bytes of a file that are looked at
constexpr int kLastType = 2;

/// Takes one parameter; a value that is neither a quoted text nor a number is passed over.
void takeParameter(TC::CFormulaDetail &detail, const QString &name, const QString &value) {
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"'))) {
        detail.mStrParamNames.append(name);
        detail.mStrParamValues.append(value.mid(1, value.size() - 2));
    } else if (isNumber) {
        detail.mParamNames.append(name);
        detail.mParamValues.append(number);
    }
}

/// Copies a file, which may be a resource and as such read-only, to one that the user may change.
bool copyForUser(const QString &from, const QString &to) {
    return QFile::copy(from, to) &&
           QFile::setPermissions(to, QFile::permissions(to) | QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace

TC::CFormulaDetail readScriptModelHeader(const QString &name, const QByteArray &text) {
    static const QRegularExpression parameter(QStringLiteral("^#\\s*parameter\\s+(\\S+?)\\s*:\\s*(.*)$"));
    static const QRegularExpression type(QStringLiteral("^#\\s*type\\s*:\\s*(\\d)\\s*$"));
    TC::CFormulaDetail detail;
    detail.mName = name.toUpper();
    detail.mFileName = detail.mName;
    detail.mLanguage = TC::EFormulaLanguage::Python;
    for (const QString &whole : QString::fromUtf8(text).split(QLatin1Char('\n'))) {
        const QString line = whole.trimmed();
        if (!line.startsWith(QLatin1Char('#'))) {
            break;
        }
        if (const auto match = parameter.match(line); match.hasMatch()) {
            takeParameter(detail, match.captured(1), match.captured(2).trimmed());
        } else if (const auto kind = type.match(line);
                   kind.hasMatch() && kind.captured(1).toInt() <= kLastType) {
            detail.mType = kind.captured(1).toInt();
        }
    }
    return detail;
}

QVector<TC::CFormulaDetailPtr> readScriptModels(const QString &folder) {
    QVector<TC::CFormulaDetailPtr> models;
    for (const QFileInfo &info :
         QDir(folder).entryInfoList({QStringLiteral("*.py")}, QDir::Files, QDir::Name)) {
        const QString name = info.completeBaseName();
        GZ::RegularFile file(info.filePath());
        const QByteArray header = file.head(kLongestHeader);
        if (name == name.toUpper() && file.isGood()) {
            models.append(boost::make_shared<TC::CFormulaDetail>(readScriptModelHeader(name, header)));
        }
    }
    return models;
}

QString builtInScripts() {
    loadScriptResource();
    return QStringLiteral(":/timeshare/scripts");
}

bool copyMissingFiles(const QString &from, const QString &to) {
    if (!QDir().mkpath(to)) {
        return false;
    }
    bool good = true;
    for (const QFileInfo &info : QDir(from).entryInfoList(QDir::Files)) {
        const QString target = QDir(to).filePath(info.fileName());
        good = (QFile::exists(target) || copyForUser(info.filePath(), target)) && good;
    }
    return good;
}

} // namespace terminal
