#pragma once

#include "terminal/market/ImportTarget.h"

#include <QMap>

#include <map>
#include <utility>

namespace terminal {

/// A day of an instrument that is to be loaded.
struct LoadedDay {
    MinuteBars bars;
    double previousClose = 0.0; ///< 0 when it is not told
    DaySessions sessions; ///< empty for those of the instrument
};

/// What files have brought and the server does not have yet. Trades of files of trades are not among it: it keeps minutes.
class LoadBatch {
public:
    using Place = std::pair<QString, int>; ///< key of an instrument and day

    static constexpr size_t kMostBars = 50000000;

    /// Of one file so many bars are taken, which are kept in memory; it is refused when it has more.
    explicit LoadBatch(size_t mostBars = kMostBars) : mMostBars(mostBars) {}

    /// A target for one file, which errors name, and of which nothing stays without commit(). The store knows instruments and
    /// calendars.
    std::unique_ptr<ImportTarget> target(CMarketStore &store, const QString &file);

    const std::map<Place, LoadedDay> &days() const { return mDays; }
    /// By key; all of those days.
    const QMap<QString, Instrument> &instruments() const { return mInstruments; }
    int bars() const;
    void clear();

private:
    class FileTarget;

    const size_t mMostBars;
    std::map<Place, LoadedDay> mDays;
    QMap<QString, Instrument> mInstruments;
};

} // namespace terminal
