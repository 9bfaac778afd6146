#pragma once

#include "terminal/market/MinuteBar.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace terminal {

/// What stands for the value of a point that has none.
constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

inline bool hasValue(double x) {
    return !std::isnan(x);
}

/// What is no finite number is no value.
inline double finite(double x) {
    return std::isfinite(x) ? x : kNoValue;
}

/// A vector over the points of a day, computed from vectors that were made before it. A point depends on itself and
/// on points before it, never on those behind: what changed at a point needs no work in front of it.
class VectorNode {
public:
    virtual ~VectorNode() = default;
    VectorNode(const VectorNode &) = delete;
    VectorNode &operator=(const VectorNode &) = delete;

    const std::vector<double> &values() const { return mValues; }
    /// Only what is used is computed.
    void use() { mUsed = true; }
    bool isUsed() const { return mUsed; }
    /// Points that are computed.
    std::size_t done() const { return mDone; }
    /// Makes room for `count` points, of which those before `from` stay as they are when they are computed.
    void prepare(std::size_t from, std::size_t count) {
        mDone = std::min({mDone, from, count});
        if (mValues.size() + 1 == count) {
            mValues.push_back(kNoValue); // of all ways to grow the quickest
        } else {
            mValues.resize(count);
        }
    }
    /// Computes the points before `end` that are not yet, of those that there is room for.
    void update(std::size_t end) {
        if (mDone < end) {
            evaluate(mDone, end);
            mDone = end;
        }
    }

protected:
    VectorNode() = default;
    /// Computes points `from` to `end` - 1 into mValues, which has room for all points that there will be.
    virtual void evaluate(std::size_t from, std::size_t end) = 0;

    std::vector<double> mValues;

private:
    std::size_t mDone = 0; ///< points that are computed
    bool mUsed = false;
};

/// A vector, or a number that stands for every point.
struct Operand {
    Operand(double number) : number(number) {} // NOLINT(google-explicit-constructor)
    Operand(VectorNode *node) : node(node) {} // NOLINT(google-explicit-constructor)

    bool isNumber() const { return node == nullptr; }
    double at(std::size_t i) const { return node ? node->values()[i] : number; }

    VectorNode *node = nullptr; ///< null for a number
    double number = kNoValue;
};

/// The values of an argument for a loop over points, while its vector stays as long as it is.
class ArgumentValues {
public:
    explicit ArgumentValues(const Operand &operand)
        : mVector(operand.node ? operand.node->values().data() : nullptr), mNumber(operand.number) {}
    double operator[](std::size_t i) const { return mVector ? mVector[i] : mNumber; }

private:
    const double *mVector; ///< null for a number
    double mNumber;
};

/// Argument of a node: an operand that it uses.
class Argument {
public:
    Argument(const Operand &operand) : mOperand(operand) { // NOLINT(google-explicit-constructor)
        if (mOperand.node) {
            mOperand.node->use();
        }
    }
    double operator[](std::size_t i) const { return mOperand.at(i); }
    ArgumentValues values() const { return ArgumentValues(mOperand); }

private:
    Operand mOperand;
};

/// A vector that is read off the bars, and keeps what it read.
class BarColumn : public VectorNode {
public:
    /// Whether a point that is computed would be the same of this bar.
    virtual bool isOf(const MinuteBar &bar, std::size_t i) const = 0;
};

/// The vectors of one formula in the order of their making. One thread.
///
/// Of bars nothing is kept but the columns that the formula uses: bars that differ in nothing else are the same to it.
class VectorGraph {
public:
    /// At most so many vectors are made: where one more would be, `onFull` is called instead, and has to throw.
    void setLimit(std::size_t most, std::function<void()> onFull) {
        mMost = most;
        mOnFull = std::move(onFull);
    }
    template <class Node, class... Arguments> Node *add(Arguments &&...arguments) {
        if (mNodes.size() >= mMost) {
            mOnFull();
        }
        auto node = std::make_unique<Node>(std::forward<Arguments>(arguments)...);
        Node *made = node.get();
        mNodes.push_back(std::move(node));
        if constexpr (std::is_base_of_v<BarColumn, Node>) {
            mColumns.push_back(made);
        }
        return made;
    }
    /// Number of vectors made.
    std::size_t size() const { return mNodes.size(); }

    /// The bars that the vectors read, from open() to close() and during evaluate().
    const MinuteBars &bars() const { return *mBars; }
    /// Has vectors that are made from now on read these bars.
    void open(const MinuteBars &bars);
    /// The values of a vector over these bars, computed when they are not yet.
    const std::vector<double> &read(VectorNode *node);
    /// All vectors are made, and used where they are ever used.
    void close();

    /// First bar from which on bars differ from those computed last.
    std::size_t firstChange(const MinuteBars &bars) const;
    /// The same when only the last bars can differ.
    std::size_t firstOfLastChanges(const MinuteBars &bars) const;
    /// Called with the number of points that are computed by now.
    using Progress = std::function<void(std::size_t end)>;
    /// Takes the bars, of which those before `from` are as they were, and computes what is used, some points of all
    /// vectors after the other. False when so many milliseconds of the thread's time were over before the end; the
    /// graph is of no use then.
    bool evaluate(const MinuteBars &bars, std::size_t from, int milliseconds, const Progress &progress = {});

private:
    bool isSame(const MinuteBar &bar, std::size_t i) const;
    /// Computes the points behind the first `done`. False when the time was over before the end.
    bool evaluateBlocks(std::size_t done, int milliseconds, const Progress &progress);

    const MinuteBars *mBars = nullptr;
    std::size_t mCount = 0; ///< of the bars taken last
    std::size_t mDone = 0; ///< points of them that all vectors used are computed over
    std::size_t mMost = std::numeric_limits<std::size_t>::max();
    std::function<void()> mOnFull;
    std::vector<std::unique_ptr<VectorNode>> mNodes;
    std::vector<BarColumn *> mColumns; ///< of mNodes; those that are used, once the graph is closed
    std::vector<VectorNode *> mUsed; ///< of mNodes, once the graph is closed
};

} // namespace terminal
