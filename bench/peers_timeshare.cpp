// This library as one more participant of the side-by-side benchmark of charting libraries.
//
// One path: the ordinary update is the quick one. A tick is the two realtime callbacks, price with average and
// volume; the first drawing is the two history callbacks of a fresh view; the cross line is a move of the mouse, with
// a box for the price, one for its percentage and one for the time.
#include "chart.hpp"

#include "bench/BenchChart.h"
#include "bench/BenchPane.h"

#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "host/drawing/DrawStyles.h"
#include "host/drawing/LineColor.h"
#include "host/toolkit/CUiResource.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <cmath>

namespace peers {
namespace {

/// Columns as wide as a minute: the workload asks for bars, where the product draws sticks of one pixel.
constexpr int kColumnStyle = TC::eWideVolStickStyle;

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
        const bool hasPanes = use == Use::FourPanes;
        mChart = std::make_unique<bench::BenchChart>(
            kMinutes, use == Use::SixDays ? kDays : 1,
            bench::LineLook{TC::lineColor(colour::price), TC::lineColor(colour::average),
                            TC::lineColor(colour::volume), kColumnStyle, !hasPanes});
        mChart->setBottomMargin(hasPanes ? kHeight - kFour[0].height : kBottom, kBottom);
        if (hasPanes) {
            mChart->resize(kWidth, kHeight); // the panes take the width of a day from it
            addPanes();
        }
        if (use == Use::Cross) {
            mChart->showCrossLine();
        } else {
            mChart->showTimeScale();
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
    void setFourPanes(const FourPanes &four) override {
        setDay(four.day, kMinutes);
        for (std::size_t pane = 0; pane < mPanes.size(); ++pane) {
            mPanes[pane]->clear();
            std::vector<const std::vector<double> *> lines;
            for (const std::vector<double> &line : four.sub[pane]) {
                lines.push_back(&line);
            }
            mPanes[pane]->deliverHistory(lines, mChart->times());
        }
    }
    void tick(const Point &point) override { mChart->deliverPoint(mCount - 1, toMinute(point)); }
    void append(const Point &point) override { mChart->deliverPoint(mCount++, toMinute(point)); }
    void crosshair(double index, double price) override {
        const QRect graph = mChart->graph().rect();
        const double share = (mTop - price) / (2.0 * mHalf); // of the price band, two thirds of the graph
        mChart->moveMouse(QPoint(mChart->param().getXAxisByIndex(static_cast<int>(std::lround(index))),
                                 static_cast<int>(std::lround(share * graph.height() * 2.0 / 3.0))));
    }
    void redrawAll() override {
        mChart->redrawAll();
        for (bench::BenchPane *pane : mPanes) {
            pane->redrawAll();
        }
    }

private:
    void addPanes() {
        std::vector<qint32> colors;
        for (const QColor &color : colour::sub) {
            colors.push_back(TC::lineColor(color));
        }
        for (int i = 0; i < kSubPanes; ++i) {
            const Pane place = kFour[static_cast<std::size_t>(i + 1)];
            const int bottom = i + 1 == kSubPanes ? kBottom : 0;
            bench::BenchPane &pane = mChart->addPane(QStringLiteral("SUB%1").arg(i), colors);
            pane.setGeometry(0, place.top, kWidth, place.height - bottom);
            pane.drawHidden();
            mPanes.push_back(&pane);
        }
    }
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
    std::vector<bench::BenchPane *> mPanes;
    std::vector<bench::Minute> mDay;
    int mCount = 0;
    double mTop = 0.0; ///< of the price band
    double mHalf = 1.0; ///< of its height, as a price
};

} // namespace

/// Has one path: the ordinary one.
std::unique_ptr<Chart> makeTimeshareChart(Use use, Path path) {
    return path == Path::Plain ? std::make_unique<TimeshareChart>(use) : nullptr;
}

} // namespace peers
