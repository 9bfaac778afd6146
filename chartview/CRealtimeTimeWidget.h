#pragma once

#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/QtCompat.h"
#include "host/toolkit/ThemeCache.h"

#include <QColor>
#include <QHash>
#include <QPair>
#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QVector>
#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeGraphWidget;
class CRealtimeUiParam;
class IDayRows;

/// The time scale beneath the panes: ticks and times of one day, or the dates of several, and over them the flag with
/// the time under the cross line. While the mouse is on it, there is no cross line.
class TIMESHARE_EXPORT CRealtimeTimeWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    /// The graph under the mouse, whose day the flag stands in, is looked for among those of `parent`. Where that is no
    /// IDayRows, or null, the flag stands in the oldest day.
    CRealtimeTimeWidget(boost::shared_ptr<CRealtimeUiParam> uiParam, QWidget *parent);

    /// Takes the axis index of the flag, negative for none, and its column inside a day graph.
    void setCursor(int index, int x);
    /// Asks for a repaint of what of the flag has changed, and of nothing else.
    void refreshFlag();
    /// Draws the scale anew, after the instrument, the days or their width have changed.
    void updateScale();
    /// The time in the flag; empty when there is none.
    QString flagText() const;

    void onUiResourceChanged() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(GZ::EnterEvent *event) override;

private:
    /// What is taken from the theme.
    struct Look {
        QColor box;
        QColor text;
        static Look ofTheme();
    };
    /// The texts of the times that the cursor has been at, by axis index, and what they were made from.
    struct Times {
        QVector<QPair<int, int>> sessions;
        int pointCount = 0;
        QHash<int, QString> texts;
    };
    /// The flag on the screen; null when there is none.
    struct Flag {
        QRect box;
        QString text;
    };

    /// The graph that the mouse moves over, and the days that stand left of it.
    struct Pointed {
        CRealtimeGraphWidget *graph = nullptr; ///< null when it is over none
        int daysBefore = 0;
    };

    bool hasFlag() const;
    Flag makeFlag();
    Pointed pointedGraph() const;
    static Pointed pointedIn(const QList<CRealtimeGraphWidget *> &row);
    /// Follows the graph under the mouse until the mouse leaves it.
    void follow(CRealtimeGraphWidget *graph);
    const QString &timeUnderCursor();
    void drawScale(double ratio);
    void paintScale(QPainter &painter, const QRegion &region);
    QColor ground() const;
    void drawDays(QPainter &painter) const;
    /// Midnight of the newest day shown, in seconds since the epoch.
    int referenceDate() const;

    const IDayRows *mDayRows; ///< the parent, may be null
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    QPixmap mPixmap; ///< the scale without the flag
    int mCursorIndex = -1; ///< axis index of the flag, negative none
    int mCursorX = 0; ///< pixels inside a day graph
    QPointer<CRealtimeGraphWidget> mFollowed; ///< the graph whose leaving is listened to
    Flag mFlag; ///< on the screen, or asked for
    Times mTimes;
    GZ::ThemeCache<Look> mLook;
};

} // namespace TC
