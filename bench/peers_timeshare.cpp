// This library as one more participant of the side-by-side benchmark of charting libraries.
//
// One path: the ordinary update is the quick one. A tick is the two realtime callbacks, price with average and
// volume; the first drawing is the two history callbacks of a fresh view.
#include "chart.hpp"

#include "bench/BenchChart.h"

#include "chartview/CGraphAxisWidget.h"
#include "host/toolkit/CUiResource.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPaintEvent>
#include <QPainter>

namespace peers {
namespace {

/// Columns as wide as a minute: the workload asks for bars, where the product draws sticks of one pixel.
constexpr int kColumnStyle = 40;

int packed(const QColor &color) {
    return color.red() | color.green() << 8 | color.blue() << 16;
}

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
        mChart =
            std::make_unique<bench::BenchChart>(kMinutes, use == Use::SixDays ? kDays : 1,
                                                bench::LineLook{packed(colour::price), packed(colour::average),
                                                                packed(colour::volume), kColumnStyle});
        mTimes = new TimeRow(mChart->param(), mChart.get());
        mTimes->setGeometry(0, kHeight - kBottom, kWidth, kBottom);
        mChart->setBottomMargin(kBottom);
        mChart->drawHidden();
    }

    QWidget *widget() override { return mChart.get(); }

    void setDay(const Day &day, int count) override {
        mDay = toMinutes(day);
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
    void crosshair(double, double) override {}
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
};

} // namespace

/// Takes part in the cases of one pane; panes beneath it and the cross line join when the pane container does.
std::unique_ptr<Chart> makeTimeshareChart(Use use, Path path) {
    const bool takesPart = path == Path::Plain && use != Use::Cross && use != Use::FourPanes;
    return takesPart ? std::make_unique<TimeshareChart>(use) : nullptr;
}

} // namespace peers
