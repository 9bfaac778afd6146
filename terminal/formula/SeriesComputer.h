#pragma once

#include "terminal/formula/FormulaProgram.h"
#include "terminal/formula/PlacedDay.h"

#include <memory>

namespace terminal {

/// A whole series with its description.
struct FormulaSeries {
    se::RPCFormulaMetaResult meta;
    se::RPCFormulaResult result;
};

/// Puts points that are not valid in front of a series, at these times.
void padSeries(se::RPCFormulaResult &series, const std::vector<qint64> &times);

/// Computes the series of placed bars with one program.
///
/// What the program reads of the instrument beside its own are always the bars taken last. A series has a point for
/// every placed bar, and in front one that is not valid for each position before the first. Not for several threads at
/// once.
class SeriesComputer {
public:
    SeriesComputer() = default;
    /// A null program, of a formula that is not known, gives empty series.
    explicit SeriesComputer(std::unique_ptr<FormulaProgram> program);

    bool hasProgram() const { return mProgram != nullptr; }
    /// Key of the instrument that the program reads beside its own; empty when it reads none.
    QString underlying() const;
    void setUnderlying(MinuteBars bars);
    /// Takes a bar of that instrument. It concerns the minutes from its own on, of those that are placed.
    SeriesChange takeUnderlying(const MinuteBar &bar, const MinuteBars &placed);

    FormulaSeries series(const PlacedBars &placed) const;
    /// The point of the last bar. There has to be a program and a bar.
    se::RPCFormulaInstantResult lastPoint(const PlacedBars &placed) const;

private:
    std::unique_ptr<FormulaProgram> mProgram;
    MinuteBars mUnderlying;
};

} // namespace terminal
