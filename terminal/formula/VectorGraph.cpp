#include "terminal/formula/VectorGraph.h"

#include "terminal/formula/TimeLimit.h"

#include <algorithm>
#include <optional>

namespace terminal {
namespace {

/// Elements of vectors that are computed without a look at the time, which costs more than a point of a usual formula.
constexpr std::size_t kQuick = 4096;

} // namespace

void VectorNode::update(std::size_t from, std::size_t count) {
    const std::size_t start = count - left(from, count);
    mValues.resize(count);
    evaluate(start, count);
    mDone = count;
}

bool VectorGraph::evaluate(const MinuteBars &bars, std::size_t from, int milliseconds) {
    from = std::min({from, bars.size(), mBars.size()});
    mBars.resize(from);
    mBars.insert(mBars.end(), bars.begin() + static_cast<std::ptrdiff_t>(from), bars.end());
    std::size_t work = 0;
    std::optional<TimeLimit> limit;
    for (const std::unique_ptr<VectorNode> &node : mNodes) {
        if (!node->isUsed()) {
            continue;
        }
        work += node->left(from, mBars.size());
        if (work > kQuick && !limit) {
            limit.emplace(milliseconds);
        }
        node->update(from, mBars.size());
        if (limit && limit->isOver()) {
            return false;
        }
    }
    return true;
}

const std::vector<double> &VectorGraph::read(VectorNode *node) {
    // What is computed already has no points left to do.
    node->use();
    for (const std::unique_ptr<VectorNode> &each : mNodes) {
        if (each->isUsed() && each->values().size() != mBars.size()) {
            each->update(0, mBars.size());
        }
        if (each.get() == node) {
            break;
        }
    }
    return node->values();
}

} // namespace terminal
