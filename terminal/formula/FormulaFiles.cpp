#include "terminal/formula/FormulaFiles.h"

#include "toolkit/files/RegularFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace terminal {
namespace {

constexpr qint64 kLargestFormula = 1 << 20; ///< bytes
constexpr int kDeepest = 8; ///< folders in one another; links may go round

QString shownName(const QString &folder) {
    int digits = 0;
    while (digits < folder.size() && folder[digits].isDigit()) {
        ++digits;
    }
    return digits < folder.size() ? folder.mid(digits) : folder;
}

void tell(const FormulaErrorSink &sink, const QFileInfo &file, const QString &reason) {
    if (sink) {
        sink({file.completeBaseName(), 0,
              QCoreApplication::translate("FormulaCatalogue", "文件 %1 无法读取（%2）")
                  .arg(file.filePath(), reason)});
    }
}

void readFolder(const QDir &folder, const QStringList &names, QVector<FormulaFile> &files,
                const FormulaErrorSink &sink) {
    if (names.size() < kDeepest) {
        for (const QString &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
            readFolder(QDir(folder.filePath(name)), names + QStringList(shownName(name)), files, sink);
        }
    }
    const QStringList patterns{QStringLiteral("*.lua")};
    for (const QFileInfo &info : folder.entryInfoList(patterns, QDir::Files, QDir::Name)) {
        GZ::RegularFile file(info.filePath());
        const QByteArray text = file.whole(kLargestFormula);
        if (file.fault() == GZ::RegularFile::eTooLarge) {
            tell(sink, info, QCoreApplication::translate("FormulaCatalogue", "文件太大"));
        } else if (!file.isGood()) {
            tell(sink, info, file.reason());
        } else {
            files.append({info.filePath(), names, text});
        }
    }
}

} // namespace

QVector<FormulaFile> readFormulaFiles(const QString &root, const FormulaErrorSink &sink) {
    QVector<FormulaFile> files;
    if (!root.isEmpty()) {
        readFolder(QDir(root), {}, files, sink);
    }
    return files;
}

QByteArray withNameInCapitals(const QByteArray &text, const QString &name) {
    static const QRegularExpression written(QStringLiteral("\\bname\\s*=\\s*([\"'])([^\"'\\n]*)\\1"));
    QRegularExpressionMatchIterator matches = written.globalMatch(QString::fromUtf8(text));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.captured(2).toUpper() == name && match.captured(2) != name) {
            const QByteArray before = match.captured().toUtf8();
            QString after = match.captured();
            after.replace(match.capturedStart(2) - match.capturedStart(), match.capturedLength(2), name);
            const int at = text.indexOf(before);
            if (at < 0) {
                return text; // not in UTF-8
            }
            QByteArray changed = text;
            return changed.replace(at, before.size(), after.toUtf8());
        }
    }
    return text;
}

QString writeFormulaFile(const QString &path, const QByteArray &text) {
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() && file.commit();
    return written ? QString()
                   : QCoreApplication::translate("FormulaCatalogue", "文件 %1 无法写入（%2）")
                         .arg(path, file.errorString());
}

} // namespace terminal
