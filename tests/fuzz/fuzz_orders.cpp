// Files of orders and deals: any bytes, as text and line by line.

#include "linkage/ImportLine.h"
#include "terminal/files/FileLines.h"
#include "toolkit/files/DecodedText.h"

#include <QByteArray>
#include <QDateTime>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QDateTime now(QDate(2024, 3, 15), QTime(14, 0), Qt::OffsetFromUTC, 8 * 3600);
    terminal::splitLines(GZ::decodedText(content), [&now](const QString &line) {
        if (line.contains(QLatin1Char('\n'))) {
            std::abort();
        }
        for (const char separator : {',', '\t'}) {
            const auto read = TC::ImportLine::read(line, QString(QLatin1Char(separator)), now);
            if (read.has_value() != (line.count(QLatin1Char(separator)) >= 6)) {
                std::abort();
            }
        }
        return true;
    });
    return 0;
}
