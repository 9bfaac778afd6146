#include "chartdata/ChartPicture.h"

#include "chartdata/ChartLayout.h"
#include "chartdata/ChartScene.h"
#include "chartdata/PanePixmap.h"
#include "chartdata/SceneSource.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>

#include <cmath>
#include <utility>

namespace TC {

void ChartPicture::setRect(const QRect &rect) {
    mRect = rect;
    noteDamage(eSeriesChanged);
}

bool ChartPicture::setRatio(double ratio) {
    if (!std::isfinite(ratio) || ratio <= 0.0 || ratio == mRatio) {
        return false;
    }
    mRatio = ratio;
    return true;
}

void ChartPicture::make(bool blank) {
    mPixmap = panePixmap(mRect.size(), mRatio);
    mPriceBandDigest = 0;
    mIsWhole = false;
    const QColor background = mLook->background;
    mDrawnTheme = mLook.generation();
    if (blank && !mPixmap.isNull()) {
        mPixmap.fill(background);
    }
}

bool ChartPicture::isStale() const {
    return mIsStale || mDrawnTheme != GZ::CUiResource::instance().generation();
}

void ChartPicture::draw(const QRect &rect) {
    if (rect.width() <= 0 || rect.height() <= 0 || mPixmap.isNull()) {
        return;
    }
    if (mSource.lastStill() >= 0) {
        mBeforeSeries();
    }
    drawWhole(rect);
}

void ChartPicture::follow() {
    if (mRect.isEmpty() || mPixmap.isNull()) {
        return;
    }
    if (mSource.lastStill() >= 0) {
        mBeforeSeries();
    }
    ChartScene scene = stillScene(mRect.size());
    if (!mIsWhole || isStale() || mDrawnPointChanged || !hasGrown(mDrawn, scene)) {
        drawWhole(mRect);
    } else if (scene.end > mDrawnEnd) {
        grow(std::move(scene));
    }
}

ChartScene ChartPicture::stillScene(const QSize &size) {
    ChartScene scene = mSource.still(size, mRatio);
    scene.look = mLook.look();
    scene.theme = mLook.generation();
    return scene;
}

void ChartPicture::drawWhole(const QRect &rect) {
    notePane();
    mIsStale = false;
    mDrawnPointChanged = false;
    mDrawnEnd = -1;
    mDrawn = stillScene(rect.size());
    mDrawnTheme = mDrawn.theme;
    drawScene(rect, mDrawn);
    mIsWhole = mDrawnEnd >= 0 && rect == mRect;
    for (SceneSeries &series : mDrawn.lines) {
        mIsWhole = mIsWhole && !series.filled;
        series.filled.reset(); // a copy of its series
    }
}

void ChartPicture::drawScene(const QRect &rect, const ChartScene &scene) {
    const quint64 digest = rect.size() == mRect.size() ? priceBandDigest(scene) : 0;
    const EBand band = digest != 0 && digest == mPriceBandDigest ? EBand::Volume : EBand::Both;
    mPriceBandDigest = digest;
    if (band == EBand::Both) {
        mPixmap.fill(scene.look.background);
    }
    QPainter painter;
    if (!painter.begin(&mPixmap)) {
        return;
    }
    painter.setClipRect(rect);
    if (band == EBand::Volume) {
        painter.setClipRect(rect.adjusted(0, volumeBandTop(rect.height()), 0, 0));
        painter.fillRect(rect, scene.look.background);
    }
    drawGrid(painter, scene, rect);
    drawLines(painter, scene.lines, scene.look, band);
    mDrawnEnd = scene.end;
}

/// What lines can touch in the pane. Its pixels do not begin with those of the device at a ratio that is no whole number.
QRect ChartPicture::touched(const SceneLines &lines) const {
    const QRect rect = touchedRect(lines);
    return rect.isEmpty() || mRatio == std::floor(mRatio) ? rect : rect.adjusted(-1, 0, 1, 0) & mRect;
}

/// Draws the columns anew that the points behind mDrawnEnd touch.
void ChartPicture::grow(ChartScene scene) {
    const QRect part = touched(from(scene.lines, mDrawnEnd));
    if (!part.isEmpty()) {
        QPainter painter;
        if (part.width() >= mRect.width() - 2 || !painter.begin(&mPixmap)) {
            return drawWhole(mRect); // a text may reach anywhere
        }
        painter.setClipRect(part);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(part, scene.look.background);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        drawGrid(painter, scene, part);
        drawLines(painter, reachingInto(scene.lines, part.left() - 1), scene.look, EBand::Both);
        mGrown |= part;
    }
    mPriceBandDigest = 0;
    mDrawnEnd = scene.end;
    mDrawn = std::move(scene);
}

void ChartPicture::paint(QPainter &painter, const QRect &rect, const QRegion *part) {
    if (mPixmap.isNull()) {
        return;
    }
    SceneLines tail = mSource.tail(rect.size());
    const auto seen = [&] { return part->intersected(rect == mRect ? touched(tail) : part->boundingRect()); };
    if (mSource.hasTail() && (!part || !seen().isEmpty()) && mBeforeSeries()) {
        tail = mSource.tail(rect.size());
    }
    if (!part) {
        blitPane(painter, rect, mPixmap, mRect.size());
        drawTail(painter, rect, tail);
        return;
    }
    paintByParts(painter, *part, [&] { blitPane(painter, rect, mPixmap, mRect.size()); });
    paintByPieces(painter, seen(), [&] { drawTail(painter, rect, tail); });
}

void ChartPicture::drawTail(QPainter &painter, const QRect &rect, const SceneLines &tail) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip); // lines are drawn much faster under a clip
    drawLines(painter, tail, mLook.look(), EBand::Both);
    painter.restore();
}

/// Only the newest points may change without a redrawing. The picture holds more than that: points of series that are
/// shorter than the main one, and drawings that always show the whole line.
void ChartPicture::notePoint(const SeriesPoint &point) {
    if (point.series) {
        mDrawnPointChanged |= mSource.isSpread(*point.series) || static_cast<int>(point.index) <= mDrawnEnd;
    }
}

void ChartPicture::noteDamage(int flags) {
    mDamage |= flags;
    mIsWhole = mIsWhole && !(flags & ~ePointChanged);
    if (flags == ePointChanged && mDrawnEnd >= 0 && mDrawnPointChanged && !mIsStale) {
        mIsStale = true;
        mDamage |= eSeriesChanged;
    }
}

QRect ChartPicture::takeDirtyRect() {
    const QRect before = mTailOnScreen | std::exchange(mGrown, QRect());
    const int damage = std::exchange(mDamage, 0);
    const int count = mView.dataCount();
    const bool recounted = std::exchange(mTailCount, count) != count;
    mTailOnScreen = touched(mSource.tail(mRect.size()));
    if (damage & ~ePointChanged) {
        return mRect;
    }
    const bool moved = damage != 0 || recounted || before != mTailOnScreen;
    return moved ? (before | mTailOnScreen) & mRect : QRect();
}

} // namespace TC
