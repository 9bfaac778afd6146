#include "chartdata/OverlayAlignment.h"

#include <algorithm>

namespace TC {
namespace {

template <class T>
void shapeLines(std::vector<std::vector<T>> &lists, std::size_t lines, std::size_t points, const T &missing) {
    lists.resize(lines);
    for (std::vector<T> &list : lists) {
        list.resize(points, missing);
    }
}

qint64 secondOf(const se::TimePosition &time) {
    return time.first / 1000;
}

/// Whether the values or the validity of the slot are others now.
bool fillSlot(se::RPCFormulaResult &aligned, std::size_t slot, const se::TimePosition &time,
              const se::RPCFormulaResult &overlay, std::size_t point) {
    bool changed = aligned.mValid[slot] != 1;
    aligned.mTimes[slot] = time;
    aligned.mValid[slot] = 1;
    const std::size_t lines = std::min(aligned.mValues.size(), overlay.mValues.size());
    for (std::size_t line = 0; line < lines; ++line) {
        if (point < overlay.mValues[line].size()) {
            changed |= aligned.mValues[line][slot] != overlay.mValues[line][point];
            aligned.mValues[line][slot] = overlay.mValues[line][point];
        }
    }
    return changed;
}

} // namespace

bool hasShapeOf(const se::RPCFormulaResult &series, const se::RPCFormulaResult &main) {
    const std::size_t points = main.mTimes.size();
    const auto isWhole = [points](const std::vector<double> &line) { return line.size() == points; };
    return series.mTimes.size() == points && series.mValid.size() == points &&
           series.mValues.size() == main.mValues.size() &&
           std::all_of(series.mValues.begin(), series.mValues.end(), isWhole);
}

void shapeLike(se::RPCFormulaResult &series, const se::RPCFormulaResult &main) {
    const std::size_t points = main.mTimes.size();
    series.mTimes.resize(points);
    series.mValid.resize(points, 0);
    shapeLines(series.mValues, main.mValues.size(), points, 0.0);
    shapeLines(series.mTexts, main.mTexts.size(), points, std::string());
    shapeLines(series.mExtra1, main.mExtra1.size(), points, se::kDefaultColor);
    shapeLines(series.mExtra2, main.mExtra2.size(), points, 0.0);
    series.mPointTags = main.mPointTags;
    series.mShared1 = main.mShared1;
    series.mShared2 = main.mShared2;
}

std::size_t alignValues(se::RPCFormulaResult &aligned, const se::RPCFormulaResult &main,
                        const se::RPCFormulaResult &overlay, std::size_t first) {
    std::size_t firstChanged = main.mTimes.size();
    std::size_t point = first;
    std::size_t slot = first;
    while (point < overlay.mTimes.size() && slot < main.mTimes.size()) {
        const qint64 overlaySecond = secondOf(overlay.mTimes[point]);
        const qint64 mainSecond = secondOf(main.mTimes[slot]);
        if (mainSecond == overlaySecond && fillSlot(aligned, slot, main.mTimes[slot], overlay, point)) {
            firstChanged = std::min(firstChanged, slot);
        }
        point += overlaySecond <= mainSecond ? 1 : 0;
        slot += mainSecond <= overlaySecond ? 1 : 0;
    }
    return firstChanged;
}

} // namespace TC
