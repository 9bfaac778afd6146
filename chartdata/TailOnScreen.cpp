#include "chartdata/TailOnScreen.h"

#include <algorithm>
#include <utility>

namespace TC {

void TailOnScreen::noteMoved(int order) {
    mIsMeasured = false;
    noteLonger(order);
}

void TailOnScreen::noteLonger(int order) {
    mMoved = mMoved == kNone || mMoved == order ? order : kEverySeries;
}

int TailOnScreen::takeMoved() {
    const int moved = std::exchange(mMoved, kNone);
    return moved >= 0 && static_cast<std::size_t>(moved) < mPlaces.size() ? moved : kEverySeries;
}

Touched TailOnScreen::take(int order) {
    if (order != kEverySeries) {
        return std::exchange(mPlaces[static_cast<std::size_t>(order)], Touched());
    }
    const Touched places = all();
    mPlaces.clear();
    return places;
}

void TailOnScreen::emptyPlaces() {
    for (Touched &place : mPlaces) {
        place = Touched();
    }
}

void TailOnScreen::add(int order, const Touched &where) {
    const auto at = static_cast<std::size_t>(order);
    if (mPlaces.size() <= at) {
        mPlaces.resize(at + 1);
    }
    mPlaces[at].add(where);
}

Touched TailOnScreen::all() const {
    Touched places;
    for (const Touched &place : mPlaces) {
        places.add(place);
    }
    return places;
}

bool TailOnScreen::isAsked(const QRegion &part) const {
    return std::all_of(part.begin(), part.end(), [this](const QRect &rect) { return mAsked.holds(rect); });
}

} // namespace TC
