#pragma once

#include "terminal/market/MinuteBar.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
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
    /// How many elements update() would compute.
    std::size_t left(std::size_t from, std::size_t count) const {
        return count - std::min({from, mDone, count});
    }
    /// Brings the vector to `count` points of which those from `from` on are to be computed (again).
    void update(std::size_t from, std::size_t count);

protected:
    VectorNode() = default;
    /// Computes points `from` to `count` - 1 into mValues, which has `count` elements.
    virtual void evaluate(std::size_t from, std::size_t count) = 0;

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

/// The vectors of one formula in the order of their making. One thread.
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
        return made;
    }
    /// Number of vectors made.
    std::size_t size() const { return mNodes.size(); }

    /// The bars that the vectors read; set by evaluate().
    const MinuteBars &bars() const { return mBars; }
    /// Takes the bars, of which those before `from` are as they were, and computes what is used. False when so many
    /// milliseconds of the thread's time were over before the end; the graph is of no use then.
    bool evaluate(const MinuteBars &bars, std::size_t from, int milliseconds);
    /// The values of a vector over the bars taken, computed when they are not yet.
    const std::vector<double> &read(VectorNode *node);

private:
    MinuteBars mBars;
    std::size_t mMost = std::numeric_limits<std::size_t>::max();
    std::function<void()> mOnFull;
    std::vector<std::unique_ptr<VectorNode>> mNodes;
};

} // namespace terminal
