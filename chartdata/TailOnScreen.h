#pragma once

#include "chartdata/ChartScene.h"

#include <boost/container/small_vector.hpp>

namespace TC {

/// Where the newest points stand on the screen, series by series, so that those of one that has moved are measured alone.
/// Series are told apart by their order among those that are shown, which stays while single points change.
class TailOnScreen {
public:
    /// The newest points of a series, or of any of them, have moved since they were measured.
    void noteMoved(int order);
    /// The same when all that is new is a point behind them: where they stand is known as before.
    void noteLonger(int order);
    /// Every series stands at its place and nowhere else.
    void noteMeasured() { mIsMeasured = true; }
    bool isMeasured() const { return mIsMeasured; }
    bool hasMoved() const { return mMoved != kNone; }
    /// The only series that has moved since the last call and has a place; kEverySeries when it is not that simple.
    int takeMoved();

    /// Forgets the place of a series, or of all of them: what it was.
    Touched take(int order);
    /// All series stand in the picture alone, which is a place as well.
    void emptyPlaces();
    /// They stand there as well.
    void add(int order, const Touched &where);
    /// All places together.
    Touched all() const;

    /// What is asked to be painted, until something is.
    void noteAsked(const Touched &dirty) { mAsked.add(dirty); }
    void notePainted() { mAsked = Touched(); }
    /// Whether a part is nothing else.
    bool isAsked(const QRegion &part) const;

private:
    static constexpr int kNone = -2;

    int mMoved = kNone;
    bool mIsMeasured = false;
    boost::container::small_vector<Touched, kFewLines> mPlaces; ///< by order
    Touched mAsked;
};

} // namespace TC
