#pragma once

#include "chartdata/ChangeFlags.h"
#include "chartdata/ChartScene.h"
#include "chartdata/OpenImage.h"
#include "chartdata/PaneSeries.h"
#include "chartdata/TailOnScreen.h"
#include "host/toolkit/ThemeCache.h"

#include <QRect>
#include <QRegion>

#include <functional>

class QPainter;

namespace TC {

class CRealtimeUiParam;
class SceneSource;

/// The chart of a pane as a picture, and what of it is no longer what stands on the screen.
///
/// The picture holds the points from the first to the one that is remembered as drawn; those behind it are the tail,
/// drawn over it at every painting. So a newest point that moves costs no drawing, and any other point that changes
/// makes the picture stale: it is drawn anew before it is shown. Points that come behind those in it are drawn into it,
/// over the pixels that they touch, as long as it shows what it was drawn from; else it is drawn anew, the price band
/// only when its digest differs from that of what it was drawn from. Damage is gathered until it is taken.
///
/// On the user-interface thread a drawing is described at once and carried out when it is painted, or before one of its
/// series changes: of several results of one go the last one draws. So it never shows what is of another moment.
class ChartPicture {
public:
    /// `beforeSeries` is called each time before series are drawn, and before anything is. It may change everything
    /// and have all drawn anew, and answers whether it may have.
    ChartPicture(const SceneSource &source, const CRealtimeUiParam &view, std::function<bool()> beforeSeries)
        : mSource(source), mView(view), mBeforeSeries(std::move(beforeSeries)) {}

    /// The pane, which begins at (0, 0).
    const QRect &rect() const { return mRect; }
    void setRect(const QRect &rect);
    /// Device pixels per pixel of the pane; false when that is none, or was it already.
    bool setRatio(double ratio);
    double ratio() const { return mRatio; }
    /// A new picture of that size and ratio, without content, or `blank`: with the background alone.
    void make(bool blank);
    bool covers(const QSize &size) const { return !mImage.image().isNull() && mRect.size() == size; }
    /// Whether it has to be drawn before it is shown: a point in it or the theme has changed.
    bool isStale() const;

    /// Draws the chart for a pane of that size.
    void draw(const QRect &rect);
    /// Draws what points have changed since, of which it has been told one by one: the pixels are those of a drawing
    /// anew.
    void follow();
    /// Carries out a drawing that is due: to be called before a series, or all of them, change in any way.
    void settle(const CFormulaKey &key);
    void settleAll();
    /// Paints picture and tail to a rectangle. With a part only that is painted, and the painter has no clip
    /// afterwards.
    void paint(QPainter &painter, const QRect &rect, const QRegion *part);

    /// Remembers what EChangeFlag bits changed on the screen. All but ePointChanged stand for changes of which it is not
    /// told one by one.
    void noteDamage(int flags);
    /// The whole pane is to be painted, though the picture may be right: what lies over it has changed.
    void notePane();
    /// Remembers for that that a point of a shown series has other contents now.
    void notePoint(const SeriesPoint &point);
    /// The part of the pane that changed on the screen since the last call: the columns of the newest points when only
    /// they moved, the whole pane otherwise, null when nothing did.
    QRect takeDirtyRect();
    /// The same without the rows of those columns in which nothing changed.
    QRegion takeDirtyRegion();

private:
    ChartScene stillScene(const QSize &size);
    void clear(const QColor &background);
    void drawWhole(const QRect &rect);
    void drawDue();
    void carryOut(const QRect &rect);
    void drawScene(const QRect &rect, const ChartScene &scene);
    bool grow(ChartScene scene);
    static void growIn(QPainter &painter, const QRect &part, const ChartScene &scene);
    Touched touched(const SceneSeries &series) const;
    bool wasTail(int end) const;
    Touched placeOf(const SceneLines &lines) const;
    Touched placeTail(const SceneLines &tail);
    Touched seenTail(const SceneLines &tail, const QRegion &part);
    Touched takeDirty();
    void drawTail(QPainter &painter, const QRect &rect, const SceneLines &tail);
    void paintVectors(QPainter &painter, const QRect &rect);

    const SceneSource &mSource;
    const CRealtimeUiParam &mView;
    const std::function<bool()> mBeforeSeries;
    QRect mRect{0, 0, 0, 0};
    double mRatio = 1.0;
    OpenImage mImage;
    GZ::ThemeCache<ChartLook> mLook;
    int mDrawnTheme = -1; ///< generation of the theme that the picture is in
    quint64 mPriceBandDigest = 0; ///< of what the price band was drawn from; 0 when nothing is known
    ChartScene mDrawn; ///< what it was drawn from; its series only tell themselves apart
    bool mIsDue = false; ///< that is still to be drawn; none of its series has changed since
    bool mIsWhole = false; ///< it shows all of that, and what changed since was told point by point
    bool mIsBare = false; ///< it shows that, and there is no line in it
    int mDrawnEnd = -1; ///< last index in the picture
    bool mDrawnPointChanged = false; ///< a point in it has changed since it was drawn
    bool mIsStale = false;
    int mDamage = 0; ///< EChangeFlag bits since the last takeDirtyRect
    Touched mGrown; ///< drawn into the picture since then
    TailOnScreen mTail; ///< where the newest points were then, and wherever they have been painted since
    int mTailCount = 0; ///< number of points of the view then
};

} // namespace TC
