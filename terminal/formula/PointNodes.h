#pragma once

#include "terminal/formula/VectorGraph.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <tuple>
#include <utility>

namespace terminal {

/// A column of the bars.
template <auto Field> class BarNode : public BarColumn {
public:
    explicit BarNode(const VectorGraph &graph) : mGraph(graph) {}

    bool isOf(const MinuteBar &bar, std::size_t i) const override {
        const double value = Field(bar, i);
        return value == mValues[i] || (std::isnan(value) && std::isnan(mValues[i]));
    }

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        const MinuteBar *const bars = mGraph.bars().data();
        double *const values = mValues.data();
        for (std::size_t i = from; i < end; ++i) {
            values[i] = Field(bars[i], i);
        }
    }

private:
    const VectorGraph &mGraph;
};

/// The last price of another instrument at the end of each minute; no value before its first one.
class UnderlyingNode : public BarColumn {
public:
    UnderlyingNode(const VectorGraph &graph, const MinuteBars &underlying)
        : mGraph(graph), mUnderlying(underlying) {}

    bool isOf(const MinuteBar &bar, std::size_t i) const override { return bar.time == mTimes[i]; }

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        mTimes.resize(mValues.size());
        const MinuteBars &bars = mGraph.bars();
        auto behind = mUnderlying.begin();
        for (std::size_t i = from; i < end; ++i) {
            mTimes[i] = bars[i].time;
            behind = std::upper_bound(behind, mUnderlying.end(), mTimes[i],
                                      [](qint64 time, const MinuteBar &bar) { return time < bar.time; });
            mValues[i] = behind == mUnderlying.begin() ? kNoValue : std::prev(behind)->price;
        }
    }

private:
    const VectorGraph &mGraph;
    const MinuteBars &mUnderlying;
    std::vector<qint64> mTimes; ///< of the bars
};

/// Given values; points behind them have none.
class DataNode : public VectorNode {
public:
    explicit DataNode(std::vector<double> data) : mData(std::move(data)) {}

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        for (std::size_t i = from; i < end; ++i) {
            mValues[i] = i < mData.size() ? mData[i] : kNoValue;
        }
    }

private:
    const std::vector<double> mData;
};

/// A function of `Count` numbers at each point. `Function` gets values only, unless it takes what has none.
template <auto Function, std::size_t Count, bool TakesMissing> class PointNode : public VectorNode {
public:
    explicit PointNode(const std::array<Argument, Count> &arguments) : mArguments(arguments) {}

    static double apply(const std::array<double, Count> &x) {
        return apply(x, std::make_index_sequence<Count>());
    }

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        evaluate(from, end, std::make_index_sequence<Count>());
    }

private:
    template <std::size_t... I>
    static double apply(const std::array<double, Count> &x, std::index_sequence<I...>) {
        if constexpr (!TakesMissing) {
            if ((std::isnan(x[I]) || ...)) {
                return kNoValue;
            }
        }
        return finite(Function(x[I]...));
    }
    template <std::size_t... I>
    void evaluate(std::size_t from, std::size_t end, std::index_sequence<I...> all) {
        const std::array<ArgumentValues, Count> x = {mArguments[I].values()...};
        double *const values = mValues.data();
        for (std::size_t i = from; i < end; ++i) {
            values[i] = apply({x[I][i]...}, all);
        }
    }

    const std::array<Argument, Count> mArguments;
};

/// `X` of a number of points before, which may differ from point to point.
class RefNode : public VectorNode {
public:
    RefNode(const Operand &x, const Operand &distance) : mX(x), mDistance(distance) {}

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        const ArgumentValues x = mX.values();
        const ArgumentValues distances = mDistance.values();
        double *const values = mValues.data();
        for (std::size_t i = from; i < end; ++i) {
            const double distance = std::trunc(distances[i]);
            const bool inside = distance >= 0.0 && distance <= static_cast<double>(i);
            values[i] = inside ? x[i - static_cast<std::size_t>(distance)] : kNoValue;
        }
    }

private:
    const Argument mX;
    const Argument mDistance;
};

/// 1 where `A` rises above `B`.
class CrossNode : public VectorNode {
public:
    CrossNode(const Operand &a, const Operand &b) : mA(a), mB(b) {}

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        for (std::size_t i = from; i < end; ++i) {
            // Comparing what has no value is false.
            mValues[i] = i > 0 && mA[i - 1] <= mB[i - 1] && mA[i] > mB[i] ? 1.0 : 0.0;
        }
    }

private:
    const Argument mA;
    const Argument mB;
};

/// A function that runs on from point to point. `Step` gets the state of the point before, no value at the first
/// one, both arguments and the setting, and answers the new state and the value of the point.
template <auto Step> class RunningNode : public VectorNode {
public:
    RunningNode(const Operand &x, const Operand &y, double setting) : mX(x), mY(y), mSetting(setting) {}

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        if (from == 0) {
            mStates.clear();
        }
        if (mStates.empty()) {
            from = run<false>(from, end);
        }
        if (from < end) {
            mStates.resize(mValues.size());
            run<true>(from, end);
        }
    }

private:
    /// Computes points up to `end`, or up to the first one whose state is to be kept and is not.
    template <bool Keeps> std::size_t run(std::size_t from, std::size_t end) {
        const ArgumentValues x = mX.values();
        const ArgumentValues y = mY.values();
        double *const values = mValues.data();
        double *const states = Keeps ? mStates.data() : values;
        double state = from > 0 ? states[from - 1] : kNoValue;
        for (std::size_t i = from; i < end; ++i) {
            double value = kNoValue;
            std::tie(state, value) = Step(state, x[i], y[i], mSetting);
            if constexpr (Keeps) {
                states[i] = state;
            } else if (Q_UNLIKELY(!isSame(state, value))) {
                mStates.assign(values, values + i);
                return i;
            }
            values[i] = value;
        }
        return end;
    }
    static bool isSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

    const Argument mX;
    const Argument mY;
    const double mSetting;
    std::vector<double> mStates; ///< per point; none as long as they are the values
};

} // namespace terminal
