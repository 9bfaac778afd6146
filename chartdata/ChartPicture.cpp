#include "chartdata/ChartPicture.h"

#include "chartdata/ChartLayout.h"
#include "chartdata/ChartScene.h"
#include "chartdata/PanePixmap.h"
#include "chartdata/SceneSource.h"
#include "chartdata/UiThread.h"
#include "host/drawing/CDrawStyle.h"
#include "host/drawing/DirectPixels.h"
#include "host/drawing/DrawStyles.h"
#include "host/toolkit/VectorPainter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TC {
namespace {

constexpr int kOpaqueBackground = 255;

/// The background in a part, in place of what is there.
void clearPart(QPainter &painter, const QRect &part, const QColor &background) {
    if (background.alpha() == kOpaqueBackground) {
        return DirectPixels(painter).fill(painter, part, background);
    }
    PixelPart::clip(painter);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(part, background);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

} // namespace

void ChartPicture::setRect(const QRect &rect) {
    if (rect.isEmpty()) {
        drawDue(); // it stays as it is
    }
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
    const QColor background = mLook->background;
    mImage.set(QImage()); // its memory may serve the new one
    mImage.set(paneImage(mRect.size(), mRatio, background.alpha() == kOpaqueBackground));
    mPriceBandDigest = 0;
    mIsDue = false;
    mIsWhole = false;
    mIsBare = false;
    mDrawnTheme = mLook.generation();
    if (blank) {
        clear(background);
    }
}

/// One background all over, in an image that can show it: a theme may bring another one.
void ChartPicture::clear(const QColor &background) {
    const bool isOpaque = background.alpha() == kOpaqueBackground;
    if (isOpaque == mImage.image().hasAlphaChannel()) {
        mImage.set(paneImage(mRect.size(), mRatio, isOpaque));
    }
    mImage.fill(background);
}

bool ChartPicture::isStale() const {
    return mIsStale || mDrawnTheme != GZ::CUiResource::instance().generation();
}

void ChartPicture::draw(const QRect &rect) {
    if (rect.width() <= 0 || rect.height() <= 0 || mImage.image().isNull()) {
        return;
    }
    if (mSource.lastStill() >= 0) {
        mBeforeSeries();
    }
    notePane();
    drawWhole(rect);
}

void ChartPicture::follow() {
    if (mRect.isEmpty() || mImage.image().isNull()) {
        return;
    }
    if (mSource.lastStill() >= 0) {
        mBeforeSeries();
    }
    const bool isRight = mIsWhole && !isStale() && !mDrawnPointChanged;
    if (isRight && mSource.lastStill() == mDrawnEnd) {
        return; // it has grown with another series of that minute
    }
    ChartScene scene = stillScene(mRect.size());
    if (!isRight || mIsDue || !hasGrown(mDrawn, scene) || (scene.end > mDrawnEnd && !grow(std::move(scene)))) {
        notePane();
        drawWhole(mRect);
    }
}

ChartScene ChartPicture::stillScene(const QSize &size) {
    ChartScene scene = mSource.still(size, mRatio);
    scene.look = mLook.look();
    scene.theme = mLook.generation();
    return scene;
}

void ChartPicture::drawWhole(const QRect &rect) {
    mIsStale = false;
    mDrawnPointChanged = false;
    ChartScene scene = stillScene(rect.size());
    mDrawnEnd = scene.end;
    if (mIsBare && rect == mRect && scene.lines.empty() && hasGrown(mDrawn, scene)) {
        mDrawn.end = scene.end; // a day that waits for its series while the ranges of others grow
        mIsWhole = mDrawnEnd >= 0;
        return;
    }
    mDrawn = std::move(scene);
    mDrawnTheme = mDrawn.theme;
    mIsBare = mDrawn.lines.empty() && rect == mRect;
    const auto isFilled = [](const SceneSeries &series) { return series.filled != nullptr; };
    mIsWhole =
        mDrawnEnd >= 0 && rect == mRect && std::none_of(mDrawn.lines.begin(), mDrawn.lines.end(), isFilled);
    mIsDue = rect == mRect && isUserInterfaceThread();
    if (!mIsDue) {
        carryOut(rect);
    }
}

void ChartPicture::carryOut(const QRect &rect) {
    mIsDue = false;
    drawScene(rect, mDrawn);
    for (SceneSeries &series : mDrawn.lines) {
        series.filled.reset(); // a copy of its series
    }
}

void ChartPicture::settle(const CFormulaKey &key) {
    const auto isDrawn = [&key](const SceneSeries &series) { return series.key == key; };
    if (mIsDue && std::any_of(mDrawn.lines.begin(), mDrawn.lines.end(), isDrawn)) {
        drawDue();
    }
}

void ChartPicture::settleAll() {
    if (!mDrawn.lines.empty()) {
        drawDue();
    }
}

void ChartPicture::drawDue() {
    if (mIsDue) {
        mSource.findSeries(mDrawn.lines);
        carryOut(mRect);
    }
}

void ChartPicture::drawScene(const QRect &rect, const ChartScene &scene) {
    const quint64 digest = rect.size() == mRect.size() ? priceBandDigest(scene) : 0;
    const bool isVolumeAlone = digest != 0 && digest == mPriceBandDigest;
    mPriceBandDigest = digest;
    if (!isVolumeAlone) {
        clear(scene.look.background);
    }
    QPainter *painter = mImage.painter();
    if (!painter) {
        mDrawnEnd = -1;
        mIsWhole = false;
        return;
    }
    const QRect part = isVolumeAlone ? rect.adjusted(0, volumeBandTop(rect.height()), 0, 0) : rect;
    painter->setClipRect(part);
    if (isVolumeAlone) {
        painter->fillRect(part, scene.look.background);
    }
    drawGrid(*painter, scene, rect);
    drawLines(*painter, scene.lines, scene.look, part);
    painter->setClipping(false);
}

/// What a series can touch in the pane. Its pixels do not begin with those of the device at a ratio that is no whole number.
Touched ChartPicture::touched(const SceneSeries &series) const {
    Touched touched = touchedBy(series);
    if (mRatio != std::floor(mRatio)) {
        touched.widen(mRect);
    }
    return touched;
}

/// Whether points up to an index, behind mDrawnEnd, are where the tail was measured: they stand on the screen already.
bool ChartPicture::wasTail(int end) const {
    return mTail.isMeasured() && mTailCount - 1 == end && mDrawnEnd + 1 == end;
}

/// What lines touch that go on where the picture ends.
Touched ChartPicture::placeOf(const SceneLines &lines) const {
    Touched place;
    for (const SceneSeries &series : lines) {
        place.add(touched(series));
    }
    return place;
}

/// Draws into the picture what the points behind mDrawnEnd add to it; false when that may be all of its pixels.
bool ChartPicture::grow(ChartScene scene) {
    SceneLines &lines = scene.lines;
    beginAt(lines, mDrawnEnd);
    const bool isShown = wasTail(scene.end);
    const Touched added = isShown ? mTail.all() : placeOf(lines);
    if (!added.isEmpty()) {
        if (added.columns.width() >= mRect.width() - 2 || !mImage.painter()) {
            return false; // a text may reach anywhere
        }
        reachInto(lines, added.columns.left() - 1);
        for (const QRect &part : {added.price & mRect, added.volume & mRect}) {
            growIn(*mImage.painter(), part, scene);
        }
        mGrown.add(isShown ? whereLinesMeet(added, lines) : added);
    }
    mPriceBandDigest = 0;
    mDrawnEnd = scene.end;
    beginAt(lines, 0);
    mDrawn = std::move(scene);
    return true;
}

/// Draws the lines of a part of one band over what is there, in their order, which leaves it as it is where they let nothing
/// through; else its pixels are drawn anew.
void ChartPicture::growIn(QPainter &painter, const QRect &part, const ChartScene &scene) {
    if (part.isEmpty()) {
        return;
    }
    const PixelPart held(painter, part, PixelPart::EClip::WhenAsked);
    if (!isOpaque(scene.lines, part)) {
        clearPart(painter, part, scene.look.background);
        drawGrid(painter, scene, part);
    }
    drawLines(painter, scene.lines, scene.look, part);
    painter.setClipping(false);
}

void ChartPicture::paint(QPainter &painter, const QRect &rect, const QRegion *part) {
    if (GZ::drawsVectors(painter)) {
        paintVectors(painter, rect);
        return;
    }
    if (mImage.image().isNull()) {
        return;
    }
    SceneLines tail = mSource.tail(rect.size());
    const bool isPlaced = part && rect == mRect;
    Touched seen = isPlaced ? seenTail(tail, *part) : Touched();
    const auto isSeen = [&](const auto &where) {
        return !isPlaced || where.intersects(seen.price) || where.intersects(seen.volume);
    };
    if (mSource.hasTail() && (!part || isSeen(*part)) && mBeforeSeries()) {
        tail = mSource.tail(rect.size());
        seen = isPlaced ? seenTail(tail, *part) : Touched();
    }
    drawDue();
    if (!part) {
        blitPane(painter, rect, mImage.image(), mRect.size());
        drawTail(painter, rect, tail);
        return;
    }
    const QPen pen = painter.pen();
    const auto paintPart = [&](const QRect &piece) {
        blitPane(painter, rect, mImage.image(), mRect.size());
        if (isSeen(piece)) {
            drawLines(painter, tail, mLook.look(), piece & rect);
        }
    };
    paintByParts(painter, *part, paintPart, PixelPart::EClip::WhenAsked);
    painter.setPen(pen);
    mTail.notePainted();
}

/// Adds where a tail stands to what is on the screen; answers where that is.
Touched ChartPicture::placeTail(const SceneLines &tail) {
    Touched places;
    for (const SceneSeries &series : tail) {
        const Touched where = touched(series);
        mTail.add(series.order, where);
        places.add(where);
    }
    return places;
}

/// Where the tail is or was on the screen. It is measured, unless it was when it was taken and all that is painted is what
/// was taken.
Touched ChartPicture::seenTail(const SceneLines &tail, const QRegion &part) {
    if (mTail.hasMoved() || mView.dataCount() != mTailCount || !mTail.isAsked(part)) {
        placeTail(tail);
    }
    return mTail.all();
}

/// The same without the picture.
void ChartPicture::paintVectors(QPainter &painter, const QRect &rect) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    const ChartScene scene = stillScene(rect.size());
    painter.fillRect(rect, scene.look.background);
    drawGrid(painter, scene, rect);
    drawLines(painter, scene.lines, scene.look, rect);
    drawLines(painter, mSource.tail(rect.size()), scene.look, rect);
    painter.restore();
}

void ChartPicture::drawTail(QPainter &painter, const QRect &rect, const SceneLines &tail) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip); // lines are drawn much faster under a clip
    drawLines(painter, tail, mLook.look(), rect);
    painter.restore();
}

/// Only the newest points may change without a redrawing. The picture holds more than that: points of series that are
/// shorter than the main one, and drawings that always show the whole line. In a theme with translucent lines any may.
void ChartPicture::notePoint(const SeriesPoint &point) {
    if (point.series) {
        const bool isSpread = mSource.isSpread(*point.series);
        // A line ends in the picture with a dot or not, as it goes on behind it: a translucent one shows that.
        const bool mayShow = !CDrawStyle::isOpaque(eLineStyle);
        mDrawnPointChanged |= isSpread || mayShow || static_cast<int>(point.index) <= mDrawnEnd;
        const int order = isSpread ? kEverySeries : mSource.orderOf(*point.series);
        const bool isBehindTail = !isSpread && static_cast<int>(point.index) >= mTailCount;
        isBehindTail ? mTail.noteLonger(order) : mTail.noteMoved(order);
    }
}

void ChartPicture::notePane() {
    mDamage |= eSeriesChanged;
    mTail.noteMoved(kEverySeries);
}

void ChartPicture::noteDamage(int flags) {
    mDamage |= flags;
    if (flags & ~ePointChanged) {
        mIsWhole = false;
        mTail.noteMoved(kEverySeries);
    }
    if (flags == ePointChanged && mDrawnEnd >= 0 && mDrawnPointChanged && !mIsStale) {
        mIsStale = true;
        mDamage |= eSeriesChanged;
    }
}

/// What has changed, in its columns and pixel by pixel.
Touched ChartPicture::takeDirty() {
    const int damage = std::exchange(mDamage, 0);
    const int count = mView.dataCount();
    const int more = count - std::exchange(mTailCount, count);
    const int moved = mTail.takeMoved();
    // Others that end where the picture has just grown to are seen in it, and their pixels are among the grown ones.
    const bool isGrown = more == 1 && mDrawnEnd == count - 2 && !mGrown.isEmpty() && mSource.isAhead(moved);
    const int measured = damage == ePointChanged && (more == 0 || isGrown) ? moved : kEverySeries;
    Touched dirty = mTail.take(measured);
    if (isGrown) {
        mTail.emptyPlaces();
    }
    dirty.add(std::exchange(mGrown, Touched()));
    const Touched tail = placeTail(mSource.tail(mRect.size(), measured));
    mTail.noteMeasured();
    if (damage & ~ePointChanged) {
        return {mRect, mRect, QRect()};
    }
    if (damage == 0 && more == 0 && dirty.columns == tail.columns) {
        return {};
    }
    dirty.add(tail);
    mTail.noteAsked(dirty);
    return dirty;
}

QRect ChartPicture::takeDirtyRect() {
    return takeDirty().columns & mRect;
}

QRegion ChartPicture::takeDirtyRegion() {
    return takeDirty().pixels(mRect);
}

} // namespace TC
