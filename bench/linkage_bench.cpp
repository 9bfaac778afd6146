// What the user's own trading costs on a chart: 10 000 orders, deals and tasks each on one day. Offscreen.
#include "bench/BenchChart.h"

#include "chartdata/CRealtimeData.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QImage>
#include <QPainter>

#include <boost/make_shared.hpp>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

constexpr int kRecords = 10000;
const QSize kPane(1100, 460);

double priceOf(int record) {
    return std::round((10.0 + 0.5 * std::sin(record * 0.37)) * 100.0) / 100.0;
}

/// Spread over the morning.
std::string timeOf(int record) {
    const int second = 34200 + record * 7200 / kRecords;
    char text[16];
    std::snprintf(text, sizeof text, "%02d%02d%02d", second / 3600, second / 60 % 60, second % 60);
    return text;
}

template <class Record> boost::shared_ptr<Record> makeTrade(int record) {
    auto trade = boost::make_shared<Record>();
    trade->mDirection = record % 2 ? 48 : 49;
    trade->mPrice = priceOf(record);
    trade->mVolume = 100;
    trade->mTime = timeOf(record);
    return trade;
}

/// A chart of a whole day with the records of one account.
class TradedDay {
public:
    explicit TradedDay(int flags) {
        mChart.resize(kPane.width() + 100, 700);
        std::vector<bench::Minute> day;
        for (int minute = 0; minute < 241; ++minute) {
            day.push_back({10.0 + 0.6 * std::sin(minute * 0.05), 10.0, 1000.0});
        }
        mChart.deliverHistory(day, 241);
        auto &linkage = mChart.host().mLinkage;
        const std::string stock = mChart.param().getStock().toStdString();
        for (int i = 0; i < kRecords; ++i) {
            const std::string key = "K" + std::to_string(i);
            auto order = makeTrade<kvservice::COrderDetail>(i);
            order->mOrderKey = key;
            linkage.mOrders[stock]["A"][key] = order;
            auto deal = makeTrade<kvservice::CDealDetail>(i);
            deal->mDealKey = key;
            deal->mAmount = deal->mPrice * deal->mVolume;
            linkage.mDeals[stock]["A"][key] = deal;
            linkage.mTasks[stock]["A"][key] = makeTask(i);
            linkage.mFinished[i] = i % 100;
        }
        auto &param = mChart.param();
        param.mLinkageFlags = flags;
        param.mLinkageShow = {true, true, true};
        param.mLinkageAccounts = {"A"};
        param.mLinkageStocks = {stock};
        param.mStockAccounts = {QStringLiteral("A")};
    }
    void draw(QPainter &painter) { mChart.data().drawLinkageMarks(&painter, QRect(QPoint(1, 3), kPane)); }
    void fetch() {
        TC::CLinkageManager &linkage = mChart.host().mLinkage;
        const std::string stock = mChart.param().getStock().toStdString();
        benchmark::DoNotOptimize(linkage.getOrderDetails(0, stock, {"A"}));
        benchmark::DoNotOptimize(linkage.getDealDetails(0, stock, {"A"}));
        const auto accounts = linkage.getTaskDetails(stock, {"A"});
        for (const auto &task : accounts.at("A")) {
            benchmark::DoNotOptimize(linkage.getTaskItemFinishNumber(task.second, stock));
        }
    }
    TC::CRealtimeData &data() { return mChart.data(); }
    /// Where a record's mark is.
    QPoint markOf(int record) {
        const QTime time = QTime::fromString(QString::fromStdString(timeOf(record)), QStringLiteral("hhmmss"));
        auto &param = mChart.param();
        return QPoint(param.getXAxisByIndex(param.getIndexByTime(time)),
                      data().yOfValue(priceOf(record), QRect(QPoint(1, 3), kPane)));
    }

private:
    boost::shared_ptr<kvservice::CTaskDetail> makeTask(int record) {
        auto task = boost::make_shared<kvservice::CTaskDetail>();
        task->mTaskId = record;
        task->mStartTime = mChart.host().mStocks.mLastTradingDay + 34200 + record * 7200 / kRecords;
        auto item = boost::make_shared<kvservice::CTaskItem>();
        item->mMarket = mChart.param().getStockDetail()->mMarket;
        item->mCode = mChart.param().getStockDetail()->mCode;
        item->mPrice = priceOf(record);
        item->mQuantity = 100;
        task->mItems = {item};
        return task;
    }

    bench::BenchChart mChart;
};

/// All three kinds, by the view that shows them and the device pixels per hundred pixels.
void drawTrades(benchmark::State &state) {
    TradedDay day(static_cast<int>(state.range(0)));
    const double ratio = static_cast<double>(state.range(1)) / 100.0;
    QImage image(kPane * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    for (auto _ : state) {
        day.draw(painter);
    }
    if (!day.data().hitDeal(day.markOf(kRecords / 2).x(), day.markOf(kRecords / 2).y())) {
        state.SkipWithError("no deal was drawn where it belongs");
    }
}
BENCHMARK(drawTrades)
    ->ArgsProduct({{2, 4}, {100, 150, 200}})
    ->ArgNames({"view", "percent"})
    ->Unit(benchmark::kMillisecond);

/// What of that the records cost that come from the host: three lists, and the progress of every task.
void fetchTrades(benchmark::State &state) {
    TradedDay day(4);
    for (auto _ : state) {
        day.fetch();
    }
}
BENCHMARK(fetchTrades)->Unit(benchmark::kMillisecond);

void hitTrade(benchmark::State &state) {
    TradedDay day(4);
    QImage image(kPane, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    day.draw(painter);
    const QPoint at = day.markOf(kRecords / 2);
    if (!day.data().hitOrder(at.x(), at.y()) || !day.data().hitTask(at.x(), at.y())) {
        state.SkipWithError("no mark was drawn where it belongs");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(day.data().hitOrder(at.x(), at.y()));
        benchmark::DoNotOptimize(day.data().hitDeal(at.x(), at.y()));
        benchmark::DoNotOptimize(day.data().hitTask(at.x(), at.y()));
    }
}
BENCHMARK(hitTrade)->Unit(benchmark::kMicrosecond);

void listTrades(benchmark::State &state) {
    TradedDay day(4);
    QImage image(kPane, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    day.draw(painter);
    const QPoint at = day.markOf(kRecords / 2);
    QList<boost::shared_ptr<kvservice::CDealDetail>> deals;
    for (auto _ : state) {
        day.data().getDealsAt(at.x(), at.y(), deals);
    }
    state.counters["found"] = deals.size();
}
BENCHMARK(listTrades)->Unit(benchmark::kMicrosecond);

} // namespace
