#include "chartdata/PaneDrawing.h"

#include "chartdata/PanePixmap.h"

#include <QPainter>

namespace TC {

void PaneDrawing::make() {
    mPicture.make(!mIsEnabled);
    mTrades.make(mPicture.rect().size(), mPicture.ratio());
}

void PaneDrawing::setEnabled(bool enabled) {
    mIsEnabled = enabled;
    redraw();
}

void PaneDrawing::setRect(const QRect &rect) {
    mPicture.setRect(rect);
    if (rect.width() > 0 && rect.height() > 0) {
        make();
    }
    redraw();
}

void PaneDrawing::setRatio(double ratio) {
    if (mPicture.setRatio(ratio)) {
        make();
        redraw();
    }
}

void PaneDrawing::redraw() {
    if (mIsEnabled) {
        mPicture.draw(mPicture.rect());
        drawTrades(mPicture.rect());
    }
}

void PaneDrawing::follow() {
    if (mIsEnabled) {
        mPicture.follow();
        drawTrades(mPicture.rect());
    }
}

void PaneDrawing::redrawTrades() {
    if (mIsEnabled) {
        drawTrades(mPicture.rect());
    }
}

void PaneDrawing::drawTrades(const QRect &rect) {
    if (mTrades.draw(rect, mPicture.rect().size(), mPicture.ratio())) {
        mPicture.notePane();
    }
}

void PaneDrawing::refresh(const QPainter &painter) {
    const double ratio = evenRatio(painter);
    if (!mIsEnabled) {
        return;
    }
    if (ratio > 0.0 && ratio != mPicture.ratio()) {
        setRatio(ratio);
    } else if (mPicture.isStale()) {
        redraw();
    }
}

void PaneDrawing::paint(QPainter &painter, const QRect &rect, const QRegion *part) {
    mPicture.paint(painter, rect, part);
    mTrades.paint(painter, mPicture.rect(), part);
}

} // namespace TC
