#pragma once

#include "chartview/CrossLinePlan.h"
#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/ThemeCache.h"

#include <QColor>
#include <QRect>
#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeData;
class CRealtimeUiParam;

/// The transparent overlay of a pane: the cross line and, over the axis strips, its value and percentage. The
/// widgets beneath get all input. Hidden until the pane shows it.
///
/// Each setter asks for a repaint of what it changes on the screen, and of nothing else.
class TIMESHARE_EXPORT CCrossLineWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    /// `source` is the data of the pane's main graph; both may be null, then there is no cross line.
    CCrossLineWidget(boost::shared_ptr<CRealtimeUiParam> uiParam, boost::shared_ptr<CRealtimeData> source,
                     QWidget *parent = nullptr);

    /// Row of the horizontal line in this widget; negative takes it away.
    void setY(int y);
    /// Column of the vertical line, relative to the graphs.
    void setX(int x);
    /// Both at once.
    void setPosition(int x, int y);
    /// The data of the graph that the pointer is over.
    void setData(boost::shared_ptr<CRealtimeData> source);
    const boost::shared_ptr<CRealtimeData> &data() const { return mData; }
    /// The main graph's rectangle, and the height of the title strip above it.
    void setGraphRect(const QRect &rect, int topOffset);
    /// Fixes width and height, in pixels.
    void setFixedExtent(int width, int height);
    /// Asks for a repaint of what members of the view model, or new data, have changed.
    void refresh();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// What is taken from the theme.
    struct Look {
        QColor ground;
        QColor line;
        QColor box;
        QColor text;
        static Look ofTheme();
    };

    CrossLineInput makeInput() const;
    bool isOnLastIndex() const;
    /// Base of the percentage: the close of the day before.
    double percentBase() const;
    int verticalTop() const;
    void drawLine(QPainter &painter, const QRegion &dirty, bool shown, const QLine &line);
    void drawLabel(QPainter &painter, const QRegion &dirty, const QRect &box, const QString &text);

    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    boost::shared_ptr<CRealtimeData> mData;
    int mY = -1;
    int mX = 0;
    QRect mGraphRect{0, 0, 0, 0};
    int mTopOffset = 0;
    CrossLineInput mInput; ///< of the plan
    CrossLinePlan mPlan; ///< on the screen, or asked for
    GZ::ThemeCache<Look> mLook;
};

} // namespace TC
