#pragma once

#include "tests/containers/MainWidgetFixture.h"

namespace tests {

/// A view of which the cross line is looked at.
class CursorFixture : public MainWidgetFixture {
protected:
    /// The view of a trading client, with prices from 09:30 to 11:30.
    void showTrading(int panes = 0) {
        mHost.mConfig.mClientType = TC::EClientType::Trading;
        showView(panes);
        fill();
    }
    static TC::CCrossLineWidget *line(const TC::CRealtimeWidget *of) { return of->getCrossLineWidget(); }
    QList<TC::CRealtimeWidget *> panes() const {
        return QList<TC::CRealtimeWidget *>{pane()} + mMain->getSubIndexWidgets().toList();
    }
    QImage screen() const { return onScreen(*mKeeper); }
    /// Rows of the overlay in which the horizontal line is drawn, right of the value label.
    QList<int> rows(TC::CCrossLineWidget *overlay) const {
        const QImage image = painted(*overlay);
        QList<int> found;
        for (int y = 0; y < image.height(); ++y) {
            const QColor wanted = color("ic_clr_realtime_cross_line");
            if (image.pixelColor(52, y) == wanted && image.pixelColor(53, y) == wanted) {
                found.append(y);
            }
        }
        return found;
    }
    /// Columns in which the vertical line is drawn.
    QList<int> columns(TC::CCrossLineWidget *overlay) const {
        const QImage image = painted(*overlay);
        QList<int> found;
        const int y = image.height() - 2;
        for (int x = 50; x < image.width() - 50; ++x) {
            if (image.pixelColor(x, y) == color("ic_clr_realtime_cross_line") &&
                image.pixelColor(x, y - 1) == color("ic_clr_realtime_cross_line")) {
                found.append(x);
            }
        }
        return found;
    }
    /// Left end of the time flag, -1 when there is none.
    int flagLeft() const {
        const QImage image = painted(*timeScale());
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, 0) == color("ic_clr_realtime_cross_line_bg")) {
                return x;
            }
        }
        return -1;
    }
    /// Left end of the flag of a time at a column: 5 pixels around the text, held inside the newest of the days.
    int flagAround(int column, const QString &time) const {
        const QFont font = GZ::CUiResource::instance().getFont(QStringLiteral("fnt_timeline_text_default"));
        const int width = QFontMetrics(font).horizontalAdvance(time) + 10;
        return qBound(50, column - width / 2, timeScale()->width() - 50 - width);
    }
};

} // namespace tests
