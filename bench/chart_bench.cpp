// What the chart costs by itself: first drawing, ticks, overlays, days side by side, memory. Offscreen, 1200x700.
#include "bench/BenchChart.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <cmath>
#include <malloc.h>
#include <random>

namespace {

constexpr int kWidth = 1200;
constexpr int kHeight = 700;

/// A day of prices that wander around 10.00, with its running average.
std::vector<bench::Minute> makeDay(unsigned seed, int points) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> step(-0.012, 0.012);
    std::vector<bench::Minute> minutes;
    double price = 10.0;
    double turnover = 0.0;
    double volume = 0.0;
    for (int i = 0; i < points; ++i) {
        price = std::min(10.9, std::max(9.1, price + step(random)));
        const double minuteVolume = 1000.0 + 500.0 * std::abs(step(random)) / 0.012;
        turnover += price * minuteVolume;
        volume += minuteVolume;
        minutes.push_back({std::round(price * 100.0) / 100.0, turnover / volume, minuteVolume});
    }
    return minutes;
}

void present() {
    QCoreApplication::sendPostedEvents();
}

void show(QWidget &widget) {
    widget.resize(kWidth, kHeight);
    widget.show();
    while (!widget.windowHandle()->isExposed()) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
}

/// The last price swings inside the range that the day has drawn.
bench::Minute swing(const std::vector<bench::Minute> &day, int index, int step) {
    bench::Minute minute = day[static_cast<std::size_t>(index)];
    minute.price = 10.0 + 0.02 * ((step % 7) - 3);
    minute.volume = 1000.0 + 10.0 * (step % 31);
    return minute;
}

void firstDrawing(benchmark::State &state) {
    bench::BenchChart chart;
    const auto day = makeDay(1, 241);
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    show(chart);
    for (auto _ : state) {
        chart.clear();
        chart.deliverHistory(day, 241);
        chart.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    }
}
BENCHMARK(firstDrawing)->Unit(benchmark::kMicrosecond);

/// The same without the screen: merging, scale and pixmap.
void firstPixmap(benchmark::State &state) {
    bench::BenchChart chart;
    const auto day = makeDay(1, 241);
    show(chart);
    for (auto _ : state) {
        chart.clear();
        chart.deliverHistory(day, 241);
    }
}
BENCHMARK(firstPixmap)->Unit(benchmark::kMicrosecond);

/// What was painted piece by piece has to be what is painted when everything is drawn anew.
void checkPixels(benchmark::State &state, bench::BenchChart &chart) {
    const QImage pieces = chart.screen();
    chart.redrawAll();
    present();
    if (pieces.isNull() || pieces != chart.screen()) {
        state.SkipWithError("differs from a complete drawing");
    }
}

/// A tick inside the range, by the number of points of the day.
void tick(benchmark::State &state) {
    const int points = static_cast<int>(state.range(0));
    bench::BenchChart chart(points);
    const auto day = makeDay(2, points);
    show(chart);
    chart.deliverHistory(day, points);
    present();
    int step = 0;
    for (auto _ : state) {
        chart.deliverPoint(points - 1, swing(day, points - 1, step++));
        present();
    }
    checkPixels(state, chart);
}
BENCHMARK(tick)->Arg(60)->Arg(241)->Arg(976)->Unit(benchmark::kMicrosecond);

/// A tick without the screen: merging alone.
void tickMerge(benchmark::State &state) {
    const int points = static_cast<int>(state.range(0));
    bench::BenchChart chart(points);
    const auto day = makeDay(2, points);
    chart.resize(kWidth, kHeight);
    chart.deliverHistory(day, points);
    int step = 0;
    for (auto _ : state) {
        chart.deliverPoint(points - 1, swing(day, points - 1, step++));
    }
}
BENCHMARK(tickMerge)->Arg(60)->Arg(241)->Arg(976)->Unit(benchmark::kMicrosecond);

void newMinute(benchmark::State &state) {
    bench::BenchChart chart;
    const auto day = makeDay(3, 241);
    show(chart);
    int count = 241;
    for (auto _ : state) {
        if (count == 241) {
            state.PauseTiming();
            chart.restart();
            count = 121;
            chart.deliverHistory(day, count);
            present();
            state.ResumeTiming();
        }
        chart.deliverPoint(count, day[static_cast<std::size_t>(count)]);
        ++count;
        present();
    }
    checkPixels(state, chart);
}
BENCHMARK(newMinute)->Unit(benchmark::kMicrosecond);

/// A tick that leaves the drawn range every time.
void tickWidensRange(benchmark::State &state) {
    bench::BenchChart chart;
    const auto day = makeDay(4, 241);
    show(chart);
    double price = 0.0;
    for (auto _ : state) {
        if (price < 11.0 || price > 1e6) {
            state.PauseTiming();
            chart.restart();
            chart.deliverHistory(day, 241);
            present();
            price = 11.0;
            state.ResumeTiming();
        }
        price += 0.01;
        chart.deliverPoint(240, {price, 10.0, 1000.0});
        present();
    }
}
BENCHMARK(tickWidensRange)->Unit(benchmark::kMicrosecond);

void repaintEverything(benchmark::State &state) {
    bench::BenchChart chart;
    const auto day = makeDay(5, 241);
    show(chart);
    chart.deliverHistory(day, 241);
    present();
    for (auto _ : state) {
        chart.updateAll();
        present();
    }
}
BENCHMARK(repaintEverything)->Unit(benchmark::kMicrosecond);

void threeOverlays(benchmark::State &state) {
    bench::BenchChart chart;
    const auto day = makeDay(6, 241);
    show(chart);
    const QStringList codes = {QStringLiteral("600001"), QStringLiteral("600002"), QStringLiteral("600003")};
    for (const QString &code : codes) {
        chart.addOverlay(code, makeDay(code.toUInt(), 241), 241);
    }
    for (auto _ : state) {
        chart.clear();
        chart.deliverHistory(day, 241);
        for (const QString &code : codes) {
            chart.deliverOverlayHistory(code, day, 241);
        }
        present();
    }
}
BENCHMARK(threeOverlays)->Unit(benchmark::kMicrosecond);

void sixDays(benchmark::State &state) {
    bench::BenchChart chart(241, 6);
    const auto day = makeDay(7, 241);
    show(chart);
    for (auto _ : state) {
        chart.clear();
        for (int i = 0; i < 6; ++i) {
            chart.deliverHistory(day, 241, i);
        }
        present();
    }
}
BENCHMARK(sixDays)->Unit(benchmark::kMicrosecond);

/// Bytes on the heap for one more graph with a full day, its pixmaps left out: counter "KiB".
void memoryOfOneGraph(benchmark::State &state) {
    const auto day = makeDay(8, 241);
    const auto heapOf = [&](int days) {
        bench::BenchChart chart(241, days);
        show(chart);
        for (int i = 0; i < days; ++i) {
            chart.deliverHistory(day, 241, i);
        }
        present();
        double pixmaps = 0.0;
        for (int i = 0; i < days; ++i) {
            pixmaps += 4.0 * chart.graph(i).width() * chart.graph(i).height();
        }
        const struct mallinfo2 info = mallinfo2();
        return double(info.uordblks) + double(info.hblkhd) - pixmaps;
    };
    for (auto _ : state) {
        heapOf(1);
        const double one = heapOf(1);
        const double five = heapOf(5);
        state.counters["KiB"] = (five - one) / 4.0 / 1024.0;
    }
}
BENCHMARK(memoryOfOneGraph)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
