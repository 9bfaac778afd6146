// The least that a tick and a new minute cost: two segments and a stick over a finished picture in one bare widget, at the
// ratio of the screen (QT_SCALE_FACTOR=2 for that of two device pixels a pixel). Offscreen, 1200x700.
#include <QCoreApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QWidget>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kFloorMinutes = 241;
constexpr int kPriceRows = 450;
constexpr int kVolumeTop = 470;
constexpr int kVolumeRows = 220;

/// Segments of a price and of its average, and the stick of a volume.
struct BareMinute {
    int price = 0;
    int average = 0;
    int volume = 0;

    static BareMinute at(int step) {
        return {kPriceRows / 2 + static_cast<int>(90.0 * std::sin(step * 0.3)) + step % 13,
                kPriceRows / 2 + step % 7, kVolumeRows / 3 + step * 17 % 90};
    }
};

class BareDay : public QWidget {
public:
    BareDay() {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(1200, 700);
        show();
        while (!windowHandle()->isExposed()) {
            QCoreApplication::processEvents();
        }
        restart(kFloorMinutes - 1);
    }
    /// A picture of that many minutes.
    void restart(int count) {
        mPicture = QPixmap(size() * devicePixelRatioF());
        mPicture.setDevicePixelRatio(devicePixelRatioF());
        mPicture.fill(Qt::white);
        for (mCount = 0; mCount < count;) {
            draw(BareMinute::at(mCount));
        }
        mHasTail = false;
        update();
        QCoreApplication::sendPostedEvents();
    }
    int count() const { return mCount; }
    void tick(const BareMinute &minute) {
        const QRegion before = regionOf(mTail);
        mTail = minute;
        mHasTail = true;
        update(before + regionOf(mTail));
    }
    void append(const BareMinute &minute) {
        update(regionOf(minute));
        draw(minute);
    }

protected:
    void paintEvent(QPaintEvent *event) override {
        QPainter painter(this);
        const qreal ratio = mPicture.devicePixelRatio();
        for (const QRect &rect : event->region()) {
            painter.setClipRect(rect);
            painter.drawPixmap(rect, mPicture, QRectF(rect.topLeft() * ratio, rect.size() * ratio).toRect());
        }
        if (mHasTail) {
            drawOn(painter, mTail);
        }
    }

private:
    static int columnOf(int index) { return 50 + index * 1100 / kFloorMinutes; }
    QRect segments(const BareMinute &minute) const {
        const auto rows = std::minmax({minute.price, minute.average, mLast.price, mLast.average});
        return {QPoint(columnOf(mCount - 1), rows.first), QPoint(columnOf(mCount), rows.second)};
    }
    QRect stick(const BareMinute &minute) const {
        return {columnOf(mCount) - 1, kVolumeTop + kVolumeRows - minute.volume, 3, minute.volume};
    }
    QRegion regionOf(const BareMinute &minute) const { return QRegion(segments(minute)) + stick(minute); }
    void drawOn(QPainter &painter, const BareMinute &minute) const {
        painter.setClipRect(segments(minute));
        painter.setPen(Qt::blue);
        painter.drawLine(columnOf(mCount - 1), mLast.price, columnOf(mCount), minute.price);
        painter.setPen(Qt::darkYellow);
        painter.drawLine(columnOf(mCount - 1), mLast.average, columnOf(mCount), minute.average);
        painter.setClipRect(stick(minute));
        painter.fillRect(stick(minute), Qt::darkGreen);
    }
    void draw(const BareMinute &minute) {
        QPainter painter(&mPicture);
        drawOn(painter, minute);
        painter.end();
        mLast = minute;
        ++mCount;
    }

    QPixmap mPicture;
    BareMinute mLast; ///< in the picture
    BareMinute mTail; ///< drawn over it
    bool mHasTail = false;
    int mCount = 0;
};

void tickFloor(benchmark::State &state) {
    BareDay day;
    int step = 0;
    for (auto _ : state) {
        day.tick(BareMinute::at(++step));
        QCoreApplication::sendPostedEvents();
    }
}
BENCHMARK(tickFloor)->Unit(benchmark::kMicrosecond);

void newMinuteFloor(benchmark::State &state) {
    BareDay day;
    for (auto _ : state) {
        if (day.count() == kFloorMinutes) {
            state.PauseTiming();
            day.restart(kFloorMinutes / 2);
            state.ResumeTiming();
        }
        day.append(BareMinute::at(day.count()));
        QCoreApplication::sendPostedEvents();
    }
}
BENCHMARK(newMinuteFloor)->Unit(benchmark::kMicrosecond);

} // namespace
