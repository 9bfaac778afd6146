#pragma once

namespace TC {

/// The two lines that mark a region of a graph, in pixels of it. They can be moved while they are not shown.
class RegionLines {
public:
    void moveTo(int left, int right) {
        mLeft = left;
        mRight = right;
    }
    void show() { mVisible = true; }
    void hide() { mVisible = false; }
    bool isVisible() const { return mVisible; }
    int left() const { return mLeft; }
    int right() const { return mRight; }

private:
    int mLeft = 0;
    int mRight = 0;
    bool mVisible = false;
};

} // namespace TC
