#pragma once

#include "host/Export.h"
#include "host/services/CFormulaManager.h"

#include <vector>

namespace TC {

/// The trading of one minute.
struct MinuteBar {
    qint64 mEnd = 0; ///< end of the minute, milliseconds since the epoch
    double mOpen = 0.0;
    double mClose = 0.0;
    double mVolume = 0.0; ///< of this minute alone
    double mAmount = 0.0; ///< price times volume of this minute, in the volume's unit
};

/// What a formula service answers for the two formulas of the main chart, "REALTIME" and "REALTIMEVOL" in any letter
/// case, made of the bars of one trading day from its first minute on. Any thread.
///
/// Lines of REALTIME: the close, and the day's mean price so far, which is the close before anything was traded. Line of
/// REALTIMEVOL: the volume, coloured by the change of the close against the minute before, in the first minute against its
/// open.
class TIMESHARE_EXPORT MainSeries {
public:
    /// Whether it is one of the two.
    static bool isMain(const QString &formula);
    /// The description of the lines; null for any other formula, as the two that follow.
    static FormulaMetaPtr meta(const QString &formula);
    /// All points.
    static FormulaResultPtr result(const QString &formula, const std::vector<MinuteBar> &bars);
    /// The last point alone; null without a bar. Reads all bars for the mean price: a stream is made by MainDay.
    static FormulaInstantPtr lastPoint(const QString &formula, const std::vector<MinuteBar> &bars);
};

/// The running day of a main chart, bar by bar. However long the day is already, a bar and its point take the same time.
/// One thread at a time.
class TIMESHARE_EXPORT MainDay {
public:
    /// Takes the newest bar. One of the last bar's minute stands in its place, a later one follows; an earlier one is left
    /// out, and the answer is false.
    bool add(const MinuteBar &bar);
    const std::vector<MinuteBar> &bars() const { return mBars; }
    /// All points so far, for the history.
    FormulaResultPtr result(const QString &formula) const { return MainSeries::result(formula, mBars); }
    /// The last point, for the stream; null without a bar and for any other formula.
    FormulaInstantPtr lastPoint(const QString &formula) const;

private:
    std::vector<MinuteBar> mBars;
    double mVolumeBefore = 0.0; ///< of all bars but the last
    double mAmountBefore = 0.0;
};

} // namespace TC
