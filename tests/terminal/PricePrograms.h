#pragma once

#include "terminal/formula/FormulaProgram.h"
#include "terminal/threads/ThreadTime.h"

#include <chrono>
#include <string>
#include <utility>

namespace tests {

/// One line, the price.
class PriceProgram : public terminal::FormulaProgram {
public:
    explicit PriceProgram(std::string line, se::ELineAxis axis = se::eLineShared)
        : mLine(std::move(line)), mAxis(axis) {}

    se::RPCFormulaMetaResult describe() const override {
        se::RPCFormulaMetaResult meta;
        meta.mLineCount = 1;
        meta.mLineNames = {mLine};
        meta.mLineAxis = {mAxis};
        return meta;
    }
    se::RPCFormulaResult evaluate(const terminal::MinuteBars &bars) const override {
        se::RPCFormulaResult result;
        result.mValues.resize(1);
        for (const terminal::MinuteBar &bar : bars) {
            result.mTimes.emplace_back(bar.time, 0);
            result.mValid.push_back(1);
            result.mValues[0].push_back(bar.price);
        }
        return result;
    }

private:
    const std::string mLine;
    const se::ELineAxis mAxis;
};

/// The same after so many milliseconds of a processor.
class BurningPriceProgram : public PriceProgram {
public:
    BurningPriceProgram(std::string line, int milliseconds)
        : PriceProgram(std::move(line)), mMilliseconds(milliseconds) {}

    se::RPCFormulaResult evaluate(const terminal::MinuteBars &bars) const override {
        const auto end = terminal::threadTime() + std::chrono::milliseconds(mMilliseconds);
        while (terminal::threadTime() < end) {
        }
        return PriceProgram::evaluate(bars);
    }

private:
    const int mMilliseconds;
};

} // namespace tests
