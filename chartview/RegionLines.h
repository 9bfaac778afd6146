#pragma once

#include "chartview/MinuteSpan.h"

namespace TC {

/// The two lines that mark a region of a graph. They stay on their minutes whatever becomes of the axis, and can be moved
/// while they are not shown.
class RegionLines {
public:
    void moveTo(const MinuteSpan &span) { mSpan = span; }
    const MinuteSpan &span() const { return mSpan; }
    void show() { mVisible = true; }
    void hide() { mVisible = false; }
    bool isVisible() const { return mVisible; }

private:
    MinuteSpan mSpan;
    bool mVisible = false;
};

} // namespace TC
