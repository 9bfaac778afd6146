#pragma once

#include "terminal/formula/VectorGraph.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace terminal {

/// A function of the last points, in time linear in the points whatever their number.
///
/// `Kind` joins values to parts: `Part of(double x, std::size_t i)`, `Part join(const Part &before, const Part &after)`
/// and `double result(const Part &, std::size_t i)`. The points are cut into blocks as long as the window. A window
/// is then the end of one block and the beginning of the next: one joined from the end of its block, one from the
/// beginning. Nothing is ever subtracted, so nothing is lost to rounding, and a point is the same whichever way it
/// was come to.
template <class Kind> class WindowNode : public VectorNode {
public:
    /// `length` 0 takes all points from the first one.
    WindowNode(const Operand &x, std::size_t length, Kind kind)
        : mX(x), mKind(kind), mBlock(length > 0 ? length : std::numeric_limits<std::size_t>::max()) {}

protected:
    void evaluate(std::size_t from, std::size_t end) override {
        if (from < mTailEnd) {
            mTailEnd = 0;
        }
        const ArgumentValues x = mX.values();
        double *const values = mValues.data();
        std::size_t inBlock = from % mBlock;
        bringHeads(from, inBlock);
        Part *const heads = mHeads.data();
        Part head = inBlock > 0 ? heads[inBlock - 1] : Part();
        for (std::size_t i = from; i < end; ++i) {
            const Part own = mKind.of(x[i], i);
            head = inBlock > 0 ? mKind.join(head, own) : own;
            heads[inBlock] = head;
            const bool spans = i >= mBlock && inBlock + 1 < mBlock;
            const Part all = spans ? mKind.join(tail(i - inBlock, inBlock + 1), head) : head;
            values[i] = finite(mKind.result(all, i));
            inBlock = inBlock + 1 < mBlock ? inBlock + 1 : 0;
        }
        mHeadsEnd = end;
    }

private:
    using Part = typename Kind::Part;

    /// Has mHeads the heads of the block's points before `point`.
    void bringHeads(std::size_t point, std::size_t inBlock) {
        mHeads.resize(std::min(mBlock, mValues.size()));
        const std::size_t start = point - inBlock;
        if (inBlock == 0 || (mHeadsEnd >= point && mHeadsEnd - start <= mBlock)) {
            return;
        }
        mHeads[0] = mKind.of(mX[start], start);
        for (std::size_t k = 1; k < inBlock; ++k) {
            mHeads[k] = mKind.join(mHeads[k - 1], mKind.of(mX[start + k], start + k));
        }
    }

    /// The points of the block that ends before `end`, without the first `skipped`.
    const Part &tail(std::size_t end, std::size_t skipped) {
        if (mTailEnd != end) {
            mTails.resize(mBlock);
            const std::size_t start = end - mBlock;
            mTails[mBlock - 1] = mKind.of(mX[end - 1], end - 1);
            for (std::size_t k = mBlock - 1; k-- > 0;) {
                mTails[k] = mKind.join(mKind.of(mX[start + k], start + k), mTails[k + 1]);
            }
            mTailEnd = end;
        }
        return mTails[skipped];
    }

    const Argument mX;
    const Kind mKind;
    const std::size_t mBlock;
    std::vector<Part> mHeads; ///< per point of one block: from the beginning of the block to it
    std::size_t mHeadsEnd = 0; ///< behind the last point of mHeads; 0 when there is none
    std::vector<Part> mTails; ///< per point of one block: from it to the end of the block
    std::size_t mTailEnd = 0; ///< behind the block of mTails; 0 when there is none
};

/// Sum and number of the points that have a value.
struct SumKind {
    struct Part {
        double sum = 0.0;
        double count = 0.0;
    };
    Part of(double x, std::size_t) const { return hasValue(x) ? Part{x, 1.0} : Part(); }
    Part join(const Part &a, const Part &b) const { return {a.sum + b.sum, a.count + b.count}; }
};

struct TotalKind : SumKind {
    double result(const Part &part, std::size_t) const { return part.count > 0.0 ? part.sum : kNoValue; }
};

struct MeanKind : SumKind {
    double length;
    double result(const Part &part, std::size_t) const {
        return part.count == length ? part.sum / length : kNoValue;
    }
};

/// Sum weighted 1, 2, ... from the oldest point to the newest.
struct WeightedKind {
    struct Part {
        double sum = 0.0;
        double weighted = 0.0;
        double count = 0.0;
    };
    Part of(double x, std::size_t) const { return hasValue(x) ? Part{x, x, 1.0} : Part(); }
    Part join(const Part &a, const Part &b) const {
        return {a.sum + b.sum, a.weighted + b.weighted + a.count * b.sum, a.count + b.count};
    }
};

struct WeightedMeanKind : WeightedKind {
    double length;
    double result(const Part &part, std::size_t) const {
        return part.count == length ? part.weighted / (length * (length + 1.0) / 2.0) : kNoValue;
    }
};

/// Mean and squared deviations, and their product with the place of the point: joined as by T. F. Chan, G. H. Golub
/// and R. J. LeVeque, Updating Formulae and a Pairwise Algorithm for Computing Sample Variances, 1979.
struct MomentsKind {
    struct Part {
        double count = 0.0;
        double mean = 0.0;
        double squares = 0.0;
        double products = 0.0; ///< deviations times places
    };
    Part of(double x, std::size_t) const { return hasValue(x) ? Part{1.0, x, 0.0, 0.0} : Part(); }
    Part join(const Part &a, const Part &b) const {
        const double count = a.count + b.count;
        if (count == 0.0) {
            return a;
        }
        const double shift = b.mean - a.mean;
        const double share = a.count * b.count / count;
        // The middles of two runs of places next to each other are half of all places apart.
        return {count, a.mean + shift * b.count / count, a.squares + b.squares + shift * shift * share,
                a.products + b.products + shift * share * (count / 2.0)};
    }
};

struct DeviationKind : MomentsKind {
    double length;
    double divisor; ///< of the squared deviations
    bool root;
    double result(const Part &part, std::size_t) const {
        if (part.count != length) {
            return kNoValue;
        }
        const double quotient = part.squares / divisor;
        return root ? std::sqrt(quotient) : quotient;
    }
};

struct SlopeKind : MomentsKind {
    double length;
    double result(const Part &part, std::size_t) const {
        return part.count == length ? part.products / (length * (length * length - 1.0) / 12.0) : kNoValue;
    }
};

/// The largest value, or with `sign` -1 the smallest, and the point where it is: the latest of equal ones.
struct ExtremeKind {
    struct Part {
        double value = kNoValue;
        std::size_t at = 0;
    };
    double sign;
    bool distance; ///< answer the points since then, not the value
    Part of(double x, std::size_t i) const { return {x, i}; }
    Part join(const Part &a, const Part &b) const {
        const bool later = std::isnan(a.value) || sign * b.value >= sign * a.value;
        return later ? b : a;
    }
    double result(const Part &part, std::size_t i) const {
        const bool found = hasValue(part.value);
        return distance && found ? static_cast<double>(i - part.at) : part.value;
    }
};

/// How many points are true.
struct TruthKind {
    struct Part {
        double count = 0.0;
    };
    Part of(double x, std::size_t) const { return {hasValue(x) && x != 0.0 ? 1.0 : 0.0}; }
    Part join(const Part &a, const Part &b) const { return {a.count + b.count}; }
};

struct CountKind : TruthKind {
    double result(const Part &part, std::size_t) const { return part.count; }
};

struct EveryKind : TruthKind {
    double length;
    double result(const Part &part, std::size_t i) const {
        return part.count == std::min(length, static_cast<double>(i) + 1.0) ? 1.0 : 0.0;
    }
};

struct ExistKind : TruthKind {
    double result(const Part &part, std::size_t) const { return part.count > 0.0 ? 1.0 : 0.0; }
};

} // namespace terminal
