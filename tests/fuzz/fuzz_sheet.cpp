// Spreadsheets: any bytes as a file, which the program beside the terminal reads, and as the rows that it sends back. The
// first byte chooses: an odd one is followed by a file, an even one by rows.

#include "linkage/ImportLine.h"
#include "terminal/files/FileLines.h"
#include "terminal/files/ForeignFile.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>

#include <cstdint>
#include <cstdlib>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void takeRows(const QByteArray &text) {
    const QDateTime now(QDate(2024, 3, 15), QTime(14, 0), Qt::OffsetFromUTC, 8 * 3600);
    int left = 1000; // a damaged file may claim 65 536 rows of nothing
    terminal::splitLines(QString::fromUtf8(text), [&now, &left](const QString &line) {
        check(!line.contains(QLatin1Char('\n')));
        const auto read = TC::ImportLine::read(line, QStringLiteral("\t"), now);
        check(read.has_value() == (line.count(QLatin1Char('\t')) >= 6));
        return --left > 0;
    });
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments) {
    static QCoreApplication application(*count, *arguments); // knows where the reader is
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const QByteArray content(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    if (*data % 2 == 0) {
        takeRows(content);
        return 0;
    }
    const terminal::ForeignText read = terminal::readForeign(QStringLiteral("sheet"), content);
    check(read.error.isEmpty() || (read.isFaultOfFile && read.text.isEmpty() && !read.error.contains('\n')));
    takeRows(read.text);
    return 0;
}
