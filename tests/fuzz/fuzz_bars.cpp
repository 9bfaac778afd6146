// Files of minute bars: any heading, any rows.

#include "terminal/market/BarColumns.h"
#include "terminal/market/BarRowParser.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char *>(data), size);
    const auto takeLine = [&text] {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        return line;
    };
    const std::string_view heading = takeLine();
    terminal::BarColumns columns;
    const QByteArray line(heading.data(), static_cast<int>(heading.size()));
    if (!terminal::recogniseColumns(terminal::readHeadings(line), columns).isEmpty()) {
        return 0;
    }
    terminal::BarRowParser parser(columns);
    while (!text.empty()) {
        terminal::BarRow row;
        if (parser.parse(takeLine(), row).isEmpty()) {
            parser.finish(row);
        }
    }
    return 0;
}
