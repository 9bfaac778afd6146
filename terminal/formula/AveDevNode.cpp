#include "terminal/formula/AveDevNode.h"

#include <algorithm>
#include <cstdint>

namespace terminal {
namespace {

/// A number that looks random and is never the same for two places: the finisher of S. Vigna's SplitMix64.
std::uint64_t priorityOf(int at) {
    std::uint64_t x = static_cast<std::uint64_t>(at) + 0x9e3779b97f4a7c15U;
    x = (x ^ (x >> 30U)) * 0xbf58476d1ce4e5b9U;
    x = (x ^ (x >> 27U)) * 0x94d049bb133111ebU;
    return x ^ (x >> 31U);
}

} // namespace

void AveDevNode::evaluate(std::size_t from, std::size_t end) {
    mBranches.resize(mValues.size());
    if (from <= mOriginAt) {
        mOrigin = kNoValue;
    }
    if (from < mEnd || std::isnan(mOrigin)) {
        mRoot = -1;
        mFirst = mEnd = 0;
    }
    for (std::size_t i = from; i < end; ++i) {
        const double x = mX[i];
        if (std::isnan(mOrigin) && hasValue(x)) {
            mOrigin = x;
            mOriginAt = i;
        }
        moveTo(i + 1 >= mLength ? i + 1 - mLength : 0, i);
        mValues[i] = hasValue(x) ? finite(deviation(x - mOrigin)) : kNoValue;
    }
}

void AveDevNode::moveTo(std::size_t first, std::size_t end) {
    if (mEnd < first) {
        mRoot = -1;
        mFirst = mEnd = first;
    }
    for (; mEnd < end; ++mEnd) {
        if (hasValue(mX[mEnd])) {
            insert(static_cast<int>(mEnd));
        }
    }
    for (; mFirst < first; ++mFirst) {
        if (hasValue(mX[mFirst])) {
            mRoot = removed(mRoot, static_cast<int>(mFirst));
        }
    }
}

double AveDevNode::deviation(double x) const {
    const double count = mRoot < 0 ? 0.0 : mBranches[mRoot].count;
    const double sum = mRoot < 0 ? 0.0 : mBranches[mRoot].sum;
    const auto length = static_cast<double>(mLength);
    if (count + 1.0 != length) {
        return kNoValue;
    }
    const double mean = (sum + x) / length;
    double below = 0.0; // points that are not above the mean, and their sum
    double belowSum = 0.0;
    for (int at = mRoot; at >= 0;) {
        const Branch &branch = mBranches[at];
        if (branch.value > mean) {
            at = branch.left;
            continue;
        }
        below += 1.0 + (branch.left < 0 ? 0 : mBranches[branch.left].count);
        belowSum += branch.value + (branch.left < 0 ? 0.0 : mBranches[branch.left].sum);
        at = branch.right;
    }
    const double above = count - below;
    const double total = mean * below - belowSum + (sum - belowSum) - mean * above + std::abs(x - mean);
    return std::max(total, 0.0) / length;
}

bool AveDevNode::isBefore(int a, int b) const {
    const double x = mBranches[a].value;
    const double y = mBranches[b].value;
    return x < y || (x == y && a < b);
}

void AveDevNode::refresh(int at) {
    Branch &branch = mBranches[at];
    branch.count = 1;
    branch.sum = branch.value;
    for (const int child : {branch.left, branch.right}) {
        if (child >= 0) {
            branch.count += mBranches[child].count;
            branch.sum += mBranches[child].sum;
        }
    }
}

void AveDevNode::split(int branch, int at, int &before, int &behind) {
    if (branch < 0) {
        before = behind = -1;
        return;
    }
    int inner = -1;
    if (isBefore(branch, at)) {
        split(mBranches[branch].right, at, inner, behind);
        mBranches[branch].right = inner;
        before = branch;
    } else {
        split(mBranches[branch].left, at, before, inner);
        mBranches[branch].left = inner;
        behind = branch;
    }
    refresh(branch);
}

int AveDevNode::merge(int before, int behind) {
    if (before < 0 || behind < 0) {
        return before < 0 ? behind : before;
    }
    const bool beforeOnTop = priorityOf(before) > priorityOf(behind);
    const int top = beforeOnTop ? before : behind;
    if (beforeOnTop) {
        mBranches[top].right = merge(mBranches[top].right, behind);
    } else {
        mBranches[top].left = merge(before, mBranches[top].left);
    }
    refresh(top);
    return top;
}

void AveDevNode::insert(int at) {
    mBranches[at] = {mX[static_cast<std::size_t>(at)] - mOrigin, 0.0, 0, -1, -1};
    refresh(at);
    int before = -1;
    int behind = -1;
    split(mRoot, at, before, behind);
    mRoot = merge(merge(before, at), behind);
}

int AveDevNode::removed(int branch, int at) {
    if (branch < 0) {
        return branch;
    }
    if (branch == at) {
        return merge(mBranches[at].left, mBranches[at].right);
    }
    int &child = isBefore(at, branch) ? mBranches[branch].left : mBranches[branch].right;
    child = removed(child, at);
    refresh(branch);
    return branch;
}

} // namespace terminal
