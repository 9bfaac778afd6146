#include "chartdata/PointMerge.h"

#include <algorithm>

namespace TC {
namespace {

/// Stores an element, growing the list up to it. Whether the list is another one now.
template <class T> bool put(std::vector<T> &list, std::size_t index, const T &item, const T &missing) {
    if (list.size() == index) {
        list.push_back(item);
        return true;
    }
    const bool grown = list.size() < index;
    if (grown) {
        list.resize(index + 1, missing);
    }
    const bool changed = grown || list[index] != item;
    list[index] = item;
    return changed;
}

/// Stores the items of a point, one a line. Whether any list is another one now.
template <class T>
bool putLines(std::vector<std::vector<T>> &lists, std::size_t index, const std::vector<T> &items,
              const T &missing) {
    if (lists.size() < items.size()) {
        lists.resize(items.size());
    }
    bool changed = false;
    for (std::size_t line = 0; line < items.size(); ++line) {
        changed |= put(lists[line], index, items[line], missing);
    }
    return changed;
}

/// Stores the last items of the lines of another series.
template <class T>
void putLastOfLines(std::vector<std::vector<T>> &lists, std::size_t index,
                    const std::vector<std::vector<T>> &incoming, const T &missing) {
    if (lists.size() < incoming.size()) {
        lists.resize(incoming.size());
    }
    for (std::size_t line = 0; line < incoming.size(); ++line) {
        if (!incoming[line].empty()) {
            put(lists[line], index, incoming[line].back(), missing);
        }
    }
}

const qint32 kInvalid = 0;
const qint32 kValid = 1;
const std::string kNoText;

void storeLastOf(se::RPCFormulaResult &series, std::size_t index, const se::RPCFormulaResult &incoming,
                 EPointParts parts) {
    put(series.mTimes, index, incoming.mTimes.back(), se::TimePosition());
    put(series.mValid, index, kValid, kInvalid);
    putLastOfLines(series.mValues, index, incoming.mValues, kUnsetValue);
    if (parts == EPointParts::Everything) {
        putLastOfLines(series.mTexts, index, incoming.mTexts, kNoText);
        putLastOfLines(series.mExtra1, index, incoming.mExtra1, se::kDefaultColor);
        putLastOfLines(series.mExtra2, index, incoming.mExtra2, 0.0);
    }
}

} // namespace

PointPlace findPlace(const std::vector<se::TimePosition> &times, const se::TimePosition &time) {
    if (times.empty() || times.back() < time) {
        return {EPointPlace::New, times.size()};
    }
    if (times.back() == time) {
        return {EPointPlace::Newest, times.size() - 1};
    }
    const auto found = std::lower_bound(times.begin(), times.end(), time);
    if (found == times.end() || *found != time) {
        return {};
    }
    return {EPointPlace::Older, static_cast<std::size_t>(found - times.begin())};
}

bool storePoint(se::RPCFormulaResult &series, const PointPlace &place, const se::RPCFormulaInstantResult &point,
                EPointParts parts) {
    bool changed = place.kind == EPointPlace::New;
    if (changed) {
        series.mTimes.push_back(point.mTime);
    }
    changed |= put(series.mValid, place.index, kValid, kInvalid);
    changed |= putLines(series.mValues, place.index, point.mValues, kUnsetValue);
    if (parts == EPointParts::Everything) {
        changed |= putLines(series.mTexts, place.index, point.mTexts, kNoText);
        changed |= putLines(series.mExtra1, place.index, point.mExtra1, se::kDefaultColor);
        changed |= putLines(series.mExtra2, place.index, point.mExtra2, 0.0);
    }
    return changed;
}

EPushOutcome mergeLastPoint(se::RPCFormulaResult &series, const se::RPCFormulaResult &incoming,
                            EPointParts parts) {
    const std::size_t length = series.mTimes.size();
    const qint64 stored = length ? series.mTimes.back().first : 0;
    const qint64 arrived = incoming.mTimes.back().first;
    if (stored > arrived) {
        return EPushOutcome::Outdated;
    }
    if (stored == arrived) {
        if (!length) {
            return EPushOutcome::Nothing;
        }
        storeLastOf(series, length - 1, incoming, parts);
        return EPushOutcome::Updated;
    }
    storeLastOf(series, length, incoming, parts);
    if (parts == EPointParts::Everything && !incoming.mPointTags.empty()) {
        put(series.mPointTags, length, incoming.mPointTags.back(), 0);
    }
    return EPushOutcome::Appended;
}

} // namespace TC
