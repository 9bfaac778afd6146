#pragma once

#include "terminal/trade/TradeRecords.h"

#include <string>

namespace terminal {

/// One line of an import of the user's orders or deals.
struct ImportedTrade {
    std::string account;
    std::string instrument;
    std::string key; ///< may be empty
    double price = 0.0;
    int volume = 0;
    long long time = 0; ///< seconds since the epoch
    int direction = 0;
};

/// Why a line is left out; null when it is taken. Taken are lines with account and instrument, a price that is a
/// positive number, a volume, a direction of 48 or 49, and a time from 1970-01-02 to 2038-01-18.
const char *troubleOf(const ImportedTrade &imported);

/// A line as an order or a deal of a day. `number` makes a key where the line has none.
template <class Record> Record recordOf(const ImportedTrade &imported, int day, int number) {
    Record record;
    record.account = imported.account;
    record.instrument = imported.instrument;
    record.key = imported.key.empty() ? "import-" + std::to_string(imported.time) + "-" + std::to_string(number)
                                      : imported.key;
    record.price = imported.price;
    record.volume = imported.volume;
    record.time = imported.time * 1000;
    record.day = day;
    record.direction = imported.direction;
    record.source = TradeSource::Imported;
    return record;
}

} // namespace terminal
