// What a mouse move over a whole view costs with the cross line on, from the event to the window, beside the least
// that lines and boxes of the same size over a finished picture cost. Offscreen, 1200x700.
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "tests/fakehost/FakeHost.h"
#include "tests/support/Series.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWidth = 1200;
constexpr int kHeight = 700;
constexpr int kMinutes = 241;
constexpr int kBoxWidth = 48;
constexpr int kBoxHeight = 18;

void show(QWidget &widget) {
    widget.resize(kWidth, kHeight);
    widget.show();
    while (!widget.windowHandle()->isExposed()) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
}

/// Lines, a value box and a time box over a finished picture, in one bare widget.
class Floor : public QWidget {
public:
    explicit Floor(const QPixmap &picture) : mPicture(picture) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        mFont.setPixelSize(12);
    }
    void cross(const QPoint &at) {
        const QRegion before = region();
        mAt = at;
        mPrice = QString::number(20.0 - at.y() * 0.01, 'f', 2);
        mTime = QString::asprintf("%02d:%02d", 9 + at.x() / 300, at.x() % 60);
        update(before + region());
    }

protected:
    void paintEvent(QPaintEvent *event) override {
        QPainter painter(this);
        for (const QRect &rect : event->region()) {
            painter.setClipRect(rect);
            painter.drawPixmap(rect, mPicture, rect);
        }
        fill(painter, row(), Qt::gray);
        fill(painter, column(), Qt::gray);
        painter.setFont(mFont);
        painter.setPen(Qt::white);
        fill(painter, priceBox(), Qt::darkBlue);
        painter.drawText(priceBox(), Qt::AlignCenter, mPrice);
        fill(painter, timeBox(), Qt::darkBlue);
        painter.drawText(timeBox(), Qt::AlignCenter, mTime);
    }

private:
    static void fill(QPainter &painter, const QRect &rect, const QColor &color) {
        painter.setClipRect(rect);
        painter.fillRect(rect, color);
    }
    QRect row() const { return {50, mAt.y(), width() - 100, 1}; }
    QRect column() const { return {mAt.x(), 17, 1, height() - 37}; }
    QRect priceBox() const { return {50, mAt.y() - kBoxHeight / 2, kBoxWidth, kBoxHeight}; }
    QRect timeBox() const { return {mAt.x() - kBoxWidth / 2, height() - kBoxHeight, kBoxWidth, kBoxHeight}; }
    QRegion region() const { return QRegion(row()) + column() + priceBox() + timeBox(); }

    QPixmap mPicture;
    QFont mFont{QStringLiteral("Noto Sans CJK SC")};
    QPoint mAt{100, 100};
    QString mPrice;
    QString mTime;
};

/// A view of a whole trading day, or of several, with formula panes beneath.
class View {
public:
    View(int panes, int days) {
        mHost.mLog.setRecording(false);
        mHost.mCache.setKeeping(false);
        mHost.mStocks.add("SH", "600000", 10.0, 0.01);
        mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), 0)] = 10.0;
        for (const char *name : {"REALTIME", "REALTIMEVOL", "MACD", "KDJ"}) {
            mHost.mCatalogue.add(QString::fromLatin1(name));
        }
        mMain = std::make_unique<TC::CRealtimeMainWidget>(nullptr, TC::EIndexViewType::Ordinary);
        mMain->setStock(QStringLiteral("SH600000"), false);
        for (int i = 0; i < panes; ++i) {
            mMain->addIndexWidget();
            mMain->getSubIndexWidgets()[i]->addIndex(i % 2 ? QStringLiteral("MACD") : QStringLiteral("KDJ"));
        }
        show(*mMain);
        for (int day = 1; day < days; ++day) {
            mMain->scaleView(false);
        }
        mMain->request(false);
        answer();
        settle();
        mMain->getUiParam()->mCrossShown = true;
    }

    QList<TC::CRealtimeGraphWidget *> graphs() const { return mMain->getRealTimeWidget()->getGraphWidgets(); }
    TC::CRealtimeMainWidget &widget() { return *mMain; }
    /// The mouse at a point of the newest day.
    void moveTo(const QPoint &at) {
        TC::CRealtimeGraphWidget *graph = graphs().first();
        QMouseEvent move(QEvent::MouseMove, at, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(graph, &move);
    }

private:
    static void settle() {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
        }
    }
    /// Hands every request a series of the morning and the afternoon.
    void answer() {
        std::vector<int> minutes;
        for (int i = 0; i < kMinutes; ++i) {
            minutes.push_back(i <= 120 ? 570 + i : 660 + i);
        }
        const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
        for (const fakehost::LiveRequest &request : live) {
            const int day = static_cast<int>(request.param.mStart.first / 1000);
            std::vector<se::TimePosition> times;
            std::vector<double> values;
            for (const int minute : minutes) {
                times.push_back(tests::minuteTime(day, minute));
                values.push_back(10.0 + 0.5 * std::sin(minute * 0.02) + 0.05 * std::sin(minute * 1.3));
            }
            const bool volume = request.param.mFormulaName.contains(QLatin1String("VOL"));
            request.onHistory(tests::makeMeta(2, {volume ? 2 : 0}), tests::makeResult(times, values, values),
                              request.id(), 1, QString(), true);
        }
    }

    fakehost::FakeHost mHost;
    std::unique_ptr<TC::CRealtimeMainWidget> mMain;
};

double microseconds(Clock::time_point from) {
    return std::chrono::duration<double, std::micro>(Clock::now() - from).count();
}

double median(std::vector<double> &samples) {
    const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end());
    return *middle;
}

int fold(int value, int bound) {
    value %= 2 * bound;
    return value < bound ? value : 2 * bound - value;
}

/// Moves the mouse over the view and the lines over the bare widget by turns. Counters: medians of both, in
/// microseconds, and their ratio.
void crossLine(benchmark::State &state) {
    View view(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    Floor floor(view.widget().grab());
    show(floor);
    const QSize room = view.graphs().first()->size();
    std::vector<double> ours;
    std::vector<double> least;
    std::vector<double> handed;
    int step = 0;
    for (auto _ : state) {
        ++step;
        const QPoint at(fold(9 * step + 40, room.width() - 1), fold(3 * step + 30, room.height() - 1));
        auto from = Clock::now();
        view.moveTo(at);
        handed.push_back(microseconds(from));
        QCoreApplication::sendPostedEvents();
        ours.push_back(microseconds(from));
        state.SetIterationTime(ours.back() / 1e6);
        from = Clock::now();
        floor.cross(at + QPoint(50, 17));
        QCoreApplication::sendPostedEvents();
        least.push_back(microseconds(from));
    }
    state.counters["view"] = median(ours);
    state.counters["floor"] = median(least);
    state.counters["beforeRepaint"] = median(handed);
    state.counters["ratio"] = median(ours) / median(least);
}

BENCHMARK(crossLine)
    ->ArgNames({"panes", "days"})
    ->Args({0, 1})
    ->Args({2, 1})
    ->Args({0, 5})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace
