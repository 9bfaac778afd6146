#pragma once

#include "terminal/formula/VectorGraph.h"

#include <cstddef>
#include <vector>

namespace terminal {

/// Mean of the absolute deviations of the last points from their mean, in points times logarithm of the window.
///
/// The points of the window before the newest one stand in a search tree by value, with number and sum of each branch.
/// Its shape depends on its points alone (R. Seidel, C. R. Aragon, Randomized Search Trees, 1996, with priorities
/// hashed from the places), so that a point is the same whichever way it was come to.
class AveDevNode : public VectorNode {
public:
    AveDevNode(const Operand &x, std::size_t length) : mX(x), mLength(length) {}

protected:
    void evaluate(std::size_t from, std::size_t end) override;

private:
    /// A point in the tree; -1 for no child.
    struct Branch {
        double value = 0.0; ///< less mOrigin
        double sum = 0.0; ///< of the branch
        int count = 0; ///< of the branch
        int left = -1;
        int right = -1;
    };

    /// Brings the tree to points `first` to `end` - 1.
    void moveTo(std::size_t first, std::size_t end);
    double deviation(double x) const;
    bool isBefore(int a, int b) const;
    void refresh(int at);
    /// Cuts a branch into what is before a point and what is behind it.
    void split(int branch, int at, int &before, int &behind);
    int merge(int before, int behind);
    void insert(int at);
    int removed(int branch, int at);

    const Argument mX;
    const std::size_t mLength;
    double mOrigin = kNoValue; ///< the first value: sums of distances from it lose less to rounding
    std::size_t mOriginAt = 0;
    std::vector<Branch> mBranches; ///< per point
    int mRoot = -1;
    std::size_t mFirst = 0; ///< points mFirst to mEnd - 1 are in the tree, those without a value left out
    std::size_t mEnd = 0;
};

} // namespace terminal
