// This library as one more participant of the side-by-side benchmark of charting libraries.
//
// One path: the ordinary update is the quick one. A tick is the two realtime callbacks, price with average and
// volume; the first drawing is the two history callbacks of a fresh view; the cross line is a move of the mouse, with
// a box for the price, one for its percentage and one for the time.
#include "chart.hpp"

#include "bench/BenchChart.h"

#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "host/drawing/DrawStyles.h"
#include "host/drawing/LineColor.h"
#include "host/toolkit/CUiResource.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace peers {
namespace {

/// Columns as wide as a minute: the workload asks for bars, where the product draws sticks of one pixel.
constexpr int kColumnStyle = TC::eWideVolStickStyle;

/// The time labels beneath the chart.
class TimeRow : public QWidget {
public:
    TimeRow(const TC::CRealtimeUiParam &param, QWidget *parent) : QWidget(parent), mParam(param) {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent *event) override {
        QPainter painter(this);
        painter.fillRect(event->rect(), colour::background);
        painter.setFont(labelFont());
        painter.setPen(colour::text);
        for (const TimeLabel &label : kTimeLabels) {
            const int x = mParam.mLeftAxisWidth + mParam.getXAxisByIndex(label.index);
            painter.drawText(QRect(x - 60, 2, 120, 20), Qt::AlignHCenter | Qt::AlignTop,
                             QString::fromLatin1(label.text));
        }
    }

private:
    const TC::CRealtimeUiParam &mParam;
};

/// The colours of the workload instead of a theme of ours.
void useWorkloadTheme() {
    static const bool done = [] {
        QString error;
        const bool ok = GZ::CUiResource::instance().setTheme(
            QStringLiteral(TIMESHARE_SOURCE_DIR "/bench/peers_theme.json"), &error);
        if (!ok) {
            qFatal("%s", qPrintable(error));
        }
        return ok;
    }();
    Q_UNUSED(done)
}

class TimeshareChart : public Chart {
public:
    explicit TimeshareChart(Use use) {
        useWorkloadTheme();
        mChart = std::make_unique<bench::BenchChart>(
            kMinutes, use == Use::SixDays ? kDays : 1,
            bench::LineLook{TC::lineColor(colour::price), TC::lineColor(colour::average),
                            TC::lineColor(colour::volume), kColumnStyle});
        mChart->setBottomMargin(kBottom);
        if (use == Use::Cross) {
            mChart->showCrossLine();
        } else {
            mTimes = new TimeRow(mChart->param(), mChart.get());
            mTimes->setGeometry(0, kHeight - kBottom, kWidth, kBottom);
        }
        mChart->drawHidden();
    }

    QWidget *widget() override { return mChart.get(); }

    void setDay(const Day &day, int count) override {
        mDay = toMinutes(day);
        mTop = day.prevClose + day.half;
        mHalf = day.half;
        mChart->setPreviousClose(day.prevClose);
        mChart->clear();
        mChart->deliverHistory(mDay, count);
        mCount = count;
    }
    void setSixDays(const SixDays &six) override {
        mChart->setPreviousClose(six[0].prevClose);
        mChart->clear();
        for (int day = 0; day < kDays; ++day) {
            mChart->deliverHistory(toMinutes(six[static_cast<std::size_t>(kDays - 1 - day)]), kMinutes, day);
        }
    }
    void setFourPanes(const FourPanes &) override {}
    void tick(const Point &point) override { mChart->deliverPoint(mCount - 1, toMinute(point)); }
    void append(const Point &point) override { mChart->deliverPoint(mCount++, toMinute(point)); }
    void crosshair(double index, double price) override {
        const QRect graph = mChart->graph().rect();
        const double share = (mTop - price) / (2.0 * mHalf); // of the price band, two thirds of the graph
        mChart->moveMouse(QPoint(mChart->param().getXAxisByIndex(static_cast<int>(std::lround(index))),
                                 static_cast<int>(std::lround(share * graph.height() * 2.0 / 3.0))));
    }
    void redrawAll() override { mChart->redrawAll(); }

private:
    static bench::Minute toMinute(const Point &point) { return {point.price, point.average, point.volume}; }
    static std::vector<bench::Minute> toMinutes(const Day &day) {
        std::vector<bench::Minute> minutes;
        minutes.reserve(day.points.size());
        for (const Point &point : day.points) {
            minutes.push_back(toMinute(point));
        }
        return minutes;
    }

    std::unique_ptr<bench::BenchChart> mChart;
    TimeRow *mTimes = nullptr;
    std::vector<bench::Minute> mDay;
    int mCount = 0;
    double mTop = 0.0; ///< of the price band
    double mHalf = 1.0; ///< of its height, as a price
};

} // namespace

/// Takes part in the cases of one pane.
std::unique_ptr<Chart> makeTimeshareChart(Use use, Path path) {
    const bool takesPart = path == Path::Plain && use != Use::FourPanes;
    return takesPart ? std::make_unique<TimeshareChart>(use) : nullptr;
}

} // namespace peers
