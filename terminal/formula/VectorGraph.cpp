#include "terminal/formula/VectorGraph.h"

#include "terminal/formula/TimeLimit.h"

#include <algorithm>

namespace terminal {
namespace {

/// Elements of vectors that are computed without a look at the time, which costs more than a point of a usual formula.
constexpr std::size_t kQuick = 4096;

/// Points that all vectors are computed over before the next ones: what one vector wrote is still in the processor's
/// cache when another reads it.
constexpr std::size_t kBlock = 2048;

} // namespace

void VectorGraph::open(const MinuteBars &bars) {
    mBars = &bars;
    mCount = bars.size();
}

const std::vector<double> &VectorGraph::read(VectorNode *node) {
    node->use();
    for (const std::unique_ptr<VectorNode> &each : mNodes) {
        if (each->isUsed()) {
            each->prepare(mCount, mCount);
            each->update(mCount);
        }
        if (each.get() == node) {
            break;
        }
    }
    return node->values();
}

void VectorGraph::close() {
    mBars = nullptr;
    for (const std::unique_ptr<VectorNode> &node : mNodes) {
        if (node->isUsed()) {
            mUsed.push_back(node.get());
        }
    }
    const auto isIdle = [](const BarColumn *column) { return !column->isUsed(); };
    mColumns.erase(std::remove_if(mColumns.begin(), mColumns.end(), isIdle), mColumns.end());
}

bool VectorGraph::isSame(const MinuteBar &bar, std::size_t i) const {
    return std::all_of(mColumns.begin(), mColumns.end(),
                       [&bar, i](const BarColumn *column) { return column->isOf(bar, i); });
}

std::size_t VectorGraph::firstChange(const MinuteBars &bars) const {
    const std::size_t common = std::min(mCount, bars.size());
    std::size_t first = 0;
    while (first < common && isSame(bars[first], first)) {
        ++first;
    }
    return first;
}

std::size_t VectorGraph::firstOfLastChanges(const MinuteBars &bars) const {
    std::size_t first = bars.empty() ? 0 : bars.size() - 1;
    while (first > 0 && (first > mCount || !isSame(bars[first - 1], first - 1))) {
        --first;
    }
    return first;
}

bool VectorGraph::evaluate(const MinuteBars &bars, std::size_t from, int milliseconds,
                           const Progress &progress) {
    from = std::min({from, bars.size(), mCount});
    mBars = &bars;
    mCount = bars.size();
    const std::size_t done = std::min(from, mDone);
    bool isInTime = true;
    if ((mCount - done) * mUsed.size() <= kQuick) {
        for (VectorNode *node : mUsed) {
            node->prepare(from, mCount);
            node->update(mCount);
        }
    } else {
        for (VectorNode *node : mUsed) {
            node->prepare(from, mCount);
        }
        isInTime = evaluateBlocks(done, milliseconds, progress);
    }
    mDone = mCount;
    mBars = nullptr;
    return isInTime;
}

bool VectorGraph::evaluateBlocks(std::size_t done, int milliseconds, const Progress &progress) {
    const TimeLimit limit(milliseconds);
    while (done < mCount) {
        done = std::min(done + kBlock, mCount);
        for (VectorNode *node : mUsed) {
            node->update(done);
            if (limit.isOver()) {
                return false;
            }
        }
        if (progress) {
            progress(done);
        }
    }
    return true;
}

} // namespace terminal
