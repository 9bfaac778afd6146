#include "toolkit/widgets/StretchLengths.h"

#include <QtGlobal>

#include <algorithm>

namespace GZ {

std::vector<int> divideLength(int length, const std::vector<LengthWish> &wishes) {
    std::vector<int> lengths(wishes.size(), 0);
    int left = std::max(length, 0);
    qint64 shares = 0;
    for (std::size_t i = 0; i < wishes.size(); ++i) {
        if (wishes[i].fixed >= 0) {
            lengths[i] = std::min(wishes[i].fixed, left);
            left -= lengths[i];
        } else {
            shares += std::max(wishes[i].stretch, 0);
        }
    }
    // Each ends where the shares up to it end, so that rounding never adds up.
    qint64 sharesBefore = 0;
    int used = 0;
    for (std::size_t i = 0; i < wishes.size() && shares > 0; ++i) {
        if (wishes[i].fixed < 0) {
            sharesBefore += std::max(wishes[i].stretch, 0);
            const int end = static_cast<int>(static_cast<double>(left) * static_cast<double>(sharesBefore) /
                                             static_cast<double>(shares));
            lengths[i] = end - used;
            used = end;
        }
    }
    return lengths;
}

int movedLength(int first, int second, int pixels, int least) {
    const qint64 both = qint64(first) + second;
    const qint64 lowest = std::min(first, least);
    const qint64 highest = both - std::min(second, least);
    return static_cast<int>(std::clamp(qint64(first) + pixels, lowest, std::max(lowest, highest)));
}

} // namespace GZ
