// How late the points of a light formula are while slow ones run: milliseconds from the tick to the delivery on the
// user-interface thread, beside ten formulas that take 0.9 s of a processor a run, all of them asked for a run by each tick.
//
//     timeshare_slow_formulas [ticks, 200] [slow formulas, 10] [milliseconds a run, 900]

#include "terminal/formula/FormulaService.h"
#include "tests/terminal/PricePrograms.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <vector>

namespace {

using namespace terminal;

constexpr int kDay = 1795104000; // 2026-11-20 at midnight, UTC+8
constexpr qint64 kOpen = kDay * 1000LL + 34200000;
constexpr int kPace = 50; // milliseconds between ticks

/// One instrument whose last minute moves.
class TickFeed : public MarketFeed {
public:
    MinuteBars dayBars(const QString &, int) override {
        std::lock_guard<std::mutex> hold(mLock);
        return {mBar};
    }
    MinuteBars afterHoursBars(const QString &, int) override { return {}; }
    Subscription subscribe(const QString &, int, Listener listener) override {
        std::lock_guard<std::mutex> hold(mLock);
        mListeners[++mLast] = std::move(listener);
        return {mLast, {mBar}};
    }
    void unsubscribe(int id) override {
        std::lock_guard<std::mutex> hold(mLock);
        mListeners.erase(id);
    }
    void tick(double price) {
        std::lock_guard<std::mutex> hold(mLock);
        mBar.price = price;
        for (const auto &[id, listener] : mListeners) {
            listener({QStringLiteral("SH600000"), kDay, mBar});
        }
    }

private:
    std::mutex mLock; ///< guards what follows
    std::map<int, Listener> mListeners;
    int mLast = 0;
    MinuteBar mBar{kOpen, 10.0, 10.0, 10.0, 10.0, 10.0, 100.0, 1000.0};
};

TC::CFormulaParam paramOf(const QString &name, int number) {
    TC::CFormulaParam param;
    param.mRequestId = QStringLiteral("%1%2").arg(name).arg(number).toStdString();
    param.mMarket = QStringLiteral("SH");
    param.mCode = QStringLiteral("600000");
    param.mFormulaName = name;
    param.mDataDemand = 3;
    param.mStart = {kDay * 1000LL, 0};
    return param;
}

double at(const std::vector<double> &sorted, double share) {
    return sorted[std::min(sorted.size() - 1, static_cast<size_t>(share * double(sorted.size())))];
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const int ticks = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;
    const int slow = argc > 2 ? std::atoi(argv[2]) : 10;
    const int run = argc > 3 ? std::atoi(argv[3]) : 900;

    TickFeed feed;
    FormulaService service(
        feed,
        [run](const TC::CFormulaParam &param) {
            return std::make_unique<tests::BurningPriceProgram>(
                "PRICE", param.mFormulaName == QLatin1String("SLOW") ? run : 0);
        },
        [](const TC::CFormulaParam &) { return kDay; }, {}, 2);
    double shown = 0.0;
    bool isOpen = false;
    int slowPoints = 0;
    QVector<TC::CFormulaParam> light{paramOf(QStringLiteral("LIGHT"), 0)};
    service.requestFormulas(
        light,
        [&](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &, const QString &, int, const QString &,
            bool) { isOpen = true; },
        [&](int, const QString &, const TC::FormulaInstantPtr &point) { shown = point->mValues[0]; });
    while (!isOpen) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    for (int i = 0; i < slow; ++i) {
        QVector<TC::CFormulaParam> params{paramOf(QStringLiteral("SLOW"), i)};
        service.requestFormulas(params, {},
                                [&](int, const QString &, const TC::FormulaInstantPtr &) { ++slowPoints; });
    }
    std::vector<double> late;
    QElapsedTimer pace;
    for (int tick = 1; tick <= ticks; ++tick) {
        pace.start();
        const double price = 10.0 + tick;
        feed.tick(price);
        while (shown != price) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        late.push_back(double(pace.nsecsElapsed()) / 1e6);
        while (pace.elapsed() < kPace) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, kPace);
        }
    }
    std::sort(late.begin(), late.end());
    std::printf("%d ticks beside %d formulas of %d ms: light points after %.2f ms (median), %.2f (99 %%), %.2f "
                "(worst); "
                "%d slow points\n",
                ticks, slow, run, at(late, 0.5), at(late, 0.99), late.back(), slowPoints);
    return 0;
}
