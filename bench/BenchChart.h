#pragma once

#include "host/drawing/IndexBaseData.h"
#include "host/toolkit/CEventWidgetT.h"
#include "tests/fakehost/FakeHost.h"

#include <QImage>
#include <QWidget>
#include <boost/shared_ptr.hpp>

#include <memory>
#include <vector>

namespace TC {
class CCrossLineWidget;
class CGraphAxisWidget;
class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeTimeWidget;
class CRealtimeUiParam;
} // namespace TC

namespace bench {

class BenchPane;

/// Price, running average and volume of one minute.
struct Minute {
    double price = 0.0;
    double average = 0.0;
    double volume = 0.0;
};

/// Colours of the lines, red | green << 8 | blue << 16, or se::kDefaultColor, and the draw style of the volume.
struct LineLook {
    int price = se::kDefaultColor;
    int average = se::kDefaultColor;
    int volume = se::kDefaultColor;
    int volumeStyle = 2;
    bool hasVolume = true; ///< otherwise there is the price alone
};

/// One view of one or more day graphs side by side between two axis strips, on a host of doubles: the product's
/// own classes, with nothing in between but the merging of ranges that a pane does.
class BenchChart : public GZ::CEventWidgetT<QWidget> {
public:
    /// `points` is the number of positions of a day: 241, or any other for a single session of that length.
    explicit BenchChart(int points = 241, int days = 1, LineLook look = {});
    ~BenchChart() override;

    /// Room that the chart leaves free below, in pixels, and how much of that is the time scale's.
    void setBottomMargin(int pixels, int timeHeight);
    void setPreviousClose(double close);
    /// Withdraws, clears and requests again: the state of a fresh view of another day.
    void restart();
    /// Forgets all series and ranges; the requests stay. The next history is drawn like a first one.
    void clear();
    /// Hands over the history of the first `count` minutes, price and average first, then volume.
    void deliverHistory(const std::vector<Minute> &minutes, int count, int day = 0);
    /// Hands over one point of the newest day: the minute at `index`.
    void deliverPoint(int index, const Minute &minute);
    /// Overlays an instrument, requests everything anew and hands over the overlay's history.
    void addOverlay(const QString &code, const std::vector<Minute> &minutes, int count);
    void deliverOverlayHistory(const QString &code, const std::vector<Minute> &minutes, int count);
    /// A formula pane that stands in the bottom margin, to be placed there; it goes with the chart.
    BenchPane &addPane(const QString &name, const std::vector<qint32> &colors);
    /// Of every minute of the newest day, milliseconds since the epoch.
    const std::vector<qint64> &times() const;
    /// Shows the time scale at the bottom.
    void showTimeScale();
    /// Lays a cross line over the chart and the time scale, which is shown with it, and switches it on.
    void showCrossLine();
    /// Moves the mouse over the newest day, in pixels of its graph.
    void moveMouse(const QPoint &at);
    /// Draws also while it is not shown.
    void drawHidden();
    /// Asks for a repaint of everything, with the caches as they are.
    void updateAll();
    /// Drops every cache: all pixmaps are drawn anew and everything is repainted.
    void redrawAll();
    /// What its window shows, in device pixels.
    QImage screen() const;

    TC::CRealtimeData &data(int day = 0);
    TC::CRealtimeGraphWidget &graph(int day = 0);
    TC::CRealtimeUiParam &param() { return *mParam; }
    fakehost::FakeHost &host() { return mHost; }

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Day;
    qint64 timeOf(int index) const;
    void mergeRanges();
    void placeCrossLine(int index, int x);
    void layOut();

    fakehost::FakeHost mHost;
    int mBottom = 0;
    int mTimeHeight = 0;
    LineLook mLook;
    boost::shared_ptr<TC::CRealtimeUiParam> mParam;
    std::vector<std::unique_ptr<Day>> mDays; ///< newest first
    std::vector<std::unique_ptr<BenchPane>> mPanes;
    TC::CGraphAxisWidget *mLeft = nullptr;
    TC::CGraphAxisWidget *mRight = nullptr;
    TC::CCrossLineWidget *mCrossLine = nullptr; ///< null without one
    TC::CRealtimeTimeWidget *mTimeScale = nullptr; ///< null without one
};

} // namespace bench
