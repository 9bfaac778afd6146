#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QString>

#include <vector>

namespace terminal {

/// The lines of a series that are not shown, with their values at every point.
class HiddenVariables {
public:
    /// Takes a whole series in place of what was there.
    void take(const se::RPCFormulaMetaResult &meta, const se::RPCFormulaResult &result);
    /// Takes one point, which changes the last one or follows it; others are passed over.
    void take(const se::RPCFormulaInstantResult &point);

    /// "name:value" of each hidden line at a point, counted from 0, with a blank between; up to four decimals, "--"
    /// where a line has no value. Empty without hidden lines, and for a point that is not there.
    QString textAt(int index) const;
    /// What its values take; 0 without hidden lines.
    size_t bytes() const;

private:
    struct Line {
        size_t place = 0; ///< in the series
        QString name;
        std::vector<double> values;
    };

    std::vector<Line> mLines;
    std::vector<se::TimePosition> mTimes;
};

} // namespace terminal
