#include "terminal/files/FileLines.h"

#include "terminal/files/ForeignFile.h"
#include "toolkit/files/DecodedText.h"
#include "toolkit/files/RegularFile.h"

namespace terminal {
namespace {

constexpr qint64 kLargestFile = 100LL * 1000 * 1000; ///< bytes

QString readContent(const QString &path, QByteArray &content) {
    GZ::RegularFile file(path);
    content = file.whole(kLargestFile);
    if (file.fault() == GZ::RegularFile::eTooLarge) {
        return QStringLiteral("%1: larger than %2 MB: split it").arg(path).arg(kLargestFile / 1000000);
    }
    return file.isGood() ? QString() : QStringLiteral("%1: cannot be read: %2").arg(path, file.reason());
}

bool startsWithMark(const QByteArray &content) {
    return content.startsWith("\xff\xfe") || content.startsWith("\xfe\xff");
}

} // namespace

void splitLines(const QString &text, const TakeLine &take) {
    for (int start = 0; start < text.size();) {
        const int found = text.indexOf(QLatin1Char('\n'), start);
        const int end = found < 0 ? text.size() : found;
        const bool carriage = end > start && text[end - 1] == QLatin1Char('\r');
        if (!take(text.mid(start, end - start - (carriage ? 1 : 0)))) {
            return;
        }
        start = end + 1;
    }
}

QString readFileLines(const QString &path, TC::EFileType type, const TakeLine &take) {
    QByteArray content;
    const QString trouble = readContent(path, content);
    if (!trouble.isEmpty()) {
        return trouble;
    }
    if (startsWithMark(content) || !content.contains('\0')) {
        splitLines(GZ::decodedText(content), take);
        return {};
    }
    if (type == TC::EFileType::Spreadsheet) {
        const ForeignText sheet = readForeign(QStringLiteral("sheet"), content);
        if (sheet.error.isEmpty()) {
            splitLines(QString::fromUtf8(sheet.text), take);
            return {};
        }
        if (!sheet.isFaultOfFile) {
            return QStringLiteral("%1: cannot be read: %2").arg(path, sheet.error);
        }
    }
    return type == TC::EFileType::Spreadsheet
               ? QStringLiteral("%1: neither a spreadsheet of Excel 97-2003 (.xls) nor a text: save it as one")
                     .arg(path)
               : QStringLiteral("%1: a binary file, no text: save it as comma-separated text").arg(path);
}

} // namespace terminal
