#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QRect>
#include <QStringList>
#include <QTimer>
#include <QWidget>

namespace TC {

class CRealtimeWidget;
class MainView;

/// What a view asks for, holds and paints, over the view itself, for the developer of a host: requests, points and ranges of
/// each pane, and for a moment the frame of every repaint. There is one in a view that is made while TIMESHARE_OVERLAY is set
/// in the environment; others have none and pay nothing. User-interface thread.
class DebugOverlay : public QWidget {
public:
    /// Whether the environment asks for it.
    static bool isWanted();
    /// Over all of a view, which owns it.
    explicit DebugOverlay(MainView &view);

    /// A line for each series of a pane, days from the newest back: instrument and formula, request, points and their times,
    /// range.
    static QStringList linesOf(const CRealtimeWidget &pane);
    /// Rectangles of the view that were repainted of late, in its pixels.
    QList<QRect> repaints() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Repaint {
        QRect rect;
        qint64 time; ///< of mClock
    };

    void refresh();
    void forgetOld();

    MainView &mView;
    QElapsedTimer mClock;
    QTimer mRefresh;
    QList<Repaint> mRepaints;
    bool mIsPainting = false; ///< repaints beneath this one are its own doing
};

} // namespace TC
