// Files of trades and snapshots: any heading, any rows, as far as the minutes of their days.

#include "terminal/market/ImportedDays.h"
#include "terminal/market/TickDays.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace terminal;

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// What always holds between ticks, their minutes and their days.
void follow(std::vector<TickRow> rows, ImportKind kind, const DaySessions &sessions) {
    std::vector<PlacedTick> ticks;
    if (!placeTicks(rows, kind, sessions, ticks).isNone()) {
        return;
    }
    std::vector<BarRow> minutes = minutesOfTicks(ticks);
    for (const BarRow &minute : minutes) {
        check(minute.low <= minute.close && minute.close <= minute.high && minute.volume > 0.0);
    }
    BarReading reading;
    reading.sessions = sessions;
    BarDays days;
    if (!sortIntoDays(minutes, reading, days).isNone()) {
        return;
    }
    size_t found = 0;
    for (const std::vector<PlacedTick> &ofDay : ticksOfDays(ticks, days)) {
        check(!ofDay.empty());
        found += ofDay.size();
    }
    check(found == ticks.size());
    for (MinuteBars &bars : days.days) {
        fillAverages(bars);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char *>(data), size);
    const auto takeLine = [&text] {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        return line;
    };
    const std::string_view heading = takeLine();
    TickColumns columns;
    const QByteArray line(heading.data(), static_cast<int>(heading.size()));
    if (!recogniseTickColumns(readHeadings(line), columns).isEmpty()) {
        return 0;
    }
    TickRowParser parser(columns);
    std::vector<TickRow> rows;
    while (!text.empty()) {
        TickRow row;
        row.line = static_cast<int>(rows.size()) + 2;
        if (parser.parse(takeLine(), row).isEmpty()) {
            rows.push_back(row);
        }
    }
    rows.erase(std::remove_if(rows.begin(), rows.end(),
                              [&parser](TickRow &row) { return !parser.finish(row).isEmpty(); }),
               rows.end());
    follow(rows, columns.kind, DaySessions({{570, 690}, {781, 900}}));
    follow(rows, columns.kind, DaySessions({{1260, 1440}, {1, 150}, {541, 615}, {631, 690}, {811, 900}}));
    return 0;
}
