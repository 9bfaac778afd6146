#pragma once

#include "tests/chartdata/ProbeFixture.h"
#include "tests/support/Golden.h"

namespace tests {

/// A price chart of SH600000 without volume: index i is in column 2 i + 1, price p in row 200 - (p - 9) * 100, so
/// 10.00 is in row 100 and 10:00 in column 61. The close of the day before is 10. SZ000001 closes at 20.
class LinkageFixture : public ProbeFixture {
protected:
    static constexpr int kBuy = 48;
    static constexpr int kSell = 49;
    const QSize kSize{482, 205};
    const QRect kGraph{1, 3, 480, 200};

    LinkageFixture() {
        mOther = mHost.mStocks.add("SZ", "000001", 20.0);
        setClose(QStringLiteral("SZ000001"), 20.0);
        mHost.mLinkage.mEnabled = true;
        mUiParam->mShowVolume = false;
        mUiParam->resize(QRect(QPoint(0, 0), kSize));
        mUiParam->mLinkageFlags = 4;
        mUiParam->mLinkageAccounts = {"A"};
        mUiParam->mLinkageStocks = {"SH600000"};
        const TC::CFormulaKey price = putPrice(std::vector<double>(241, 10.0));
        mStrip = std::make_unique<TC::CGraphAxisWidget>(mUiParam, mData, TC::CGraphAxisWidget::eLeft);
        mStrip->resize(50, kSize.height());
        mStrip->setMaxMinMap({{price, {11.0, 9.0}}});
        mData->setAxisWidget(mStrip.get());
    }
    ~LinkageFixture() override { mData->setAxisWidget(nullptr); }

    void show(std::initializer_list<int> kinds) {
        for (const int kind : kinds) {
            mUiParam->mLinkageShow[std::size_t(kind)] = true;
        }
    }
    boost::shared_ptr<kvservice::COrderDetail> addOrder(const std::string &key, int direction, double price,
                                                        const std::string &time,
                                                        const std::string &stock = "SH600000") {
        auto order = boost::make_shared<kvservice::COrderDetail>();
        order->mOrderKey = key;
        order->mDirection = direction;
        order->mPrice = price;
        order->mTime = time;
        mHost.mLinkage.mOrders[stock]["A"][key] = order;
        return order;
    }
    boost::shared_ptr<kvservice::CDealDetail> addDeal(const std::string &key, int direction, double price,
                                                      const std::string &time, int volume = 100,
                                                      const std::string &stock = "SH600000") {
        auto deal = boost::make_shared<kvservice::CDealDetail>();
        deal->mDealKey = key;
        deal->mDirection = direction;
        deal->mPrice = price;
        deal->mVolume = volume;
        deal->mAmount = price * volume;
        deal->mTime = time;
        mHost.mLinkage.mDeals[stock]["A"][key] = deal;
        return deal;
    }
    /// A task of one item that starts at a clock time of the machine's zone.
    boost::shared_ptr<kvservice::CTaskDetail> addTask(int id, bool buy, double price, const QTime &time,
                                                      long long done, long long total,
                                                      const std::string &market = "SH",
                                                      const std::string &code = "600000") {
        auto task = boost::make_shared<kvservice::CTaskDetail>();
        task->mTaskId = id;
        task->mStartTime = int(QDateTime(QDate(2024, 3, 15), time).toSecsSinceEpoch());
        auto item = boost::make_shared<kvservice::CTaskItem>();
        item->mMarket = market;
        item->mCode = code;
        item->mOperation = buy ? kvservice::EOperationType::Buy : kvservice::EOperationType::Sell;
        item->mPrice = price;
        item->mQuantity = total;
        task->mItems = {item};
        mHost.mLinkage.mTasks[market + code]["A"][std::to_string(id)] = task;
        mHost.mLinkage.mFinished[id] = done;
        return task;
    }
    static void setStrategy(boost::shared_ptr<kvservice::CCommandDetail> &command, const std::string &name) {
        command = boost::make_shared<kvservice::CCommandDetail>();
        command->mStrategyName = name;
    }
    static void dot(QPainter &painter, const QRect &circle, const QColor &color, bool filled) {
        painter.setPen(color);
        painter.setBrush(filled ? QBrush(color) : QBrush(Qt::NoBrush));
        painter.drawEllipse(circle);
    }
    static void flag(QPainter &painter, const QPoint &at, int height, const QColor &fill, const QColor &frame,
                     const QColor &letter, const char *text) {
        painter.fillRect(QRect(at.x(), at.y() - height, 8, height), fill);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(frame);
        painter.drawRect(QRect(at.x(), at.y() - 13, 8, 13));
        painter.setPen(letter);
        painter.drawText(QRect(at.x() + 1, at.y() - 13, 8, 13), Qt::AlignCenter, QLatin1String(text));
    }
    void showAccount() {
        mUiParam->mLinkageFlags = 2;
        mUiParam->mStockAccounts = {QStringLiteral("A")};
    }
    /// A replay whose newest point is that many minutes after 09:30, in the morning.
    void replayTo(int minutes) {
        mData->mData.clear();
        std::vector<se::TimePosition> times;
        for (int i = 0; i <= minutes; ++i) {
            times.emplace_back(QDateTime(QDate(2024, 3, 15), QTime(9, 30).addSecs(i * 60)).toMSecsSinceEpoch(),
                               0);
        }
        const std::size_t count = times.size();
        put(*mData, kStock, QStringLiteral("REALTIME"), makeMeta(1),
            makeResult(std::move(times), {std::vector<double>(count, 10.0)}));
        mUiParam->mDataCount = minutes + 1;
        mData->setReplayMode(true);
        mData->setChartRect(QRect(QPoint(0, 0), kSize));
        mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
        mData->setDrawEnabled(true);
        mData->drawChart(QRect(QPoint(0, 0), kSize));
    }
    /// The day before the last trading day.
    void showPastDay() {
        mData->setTradeDate(kDay - 86400);
        mUiParam->mGetTradeDateFunc = [] { return kDay - 86400; };
    }
    int ordersAt(int x, int y) const {
        QList<boost::shared_ptr<kvservice::COrderDetail>> orders;
        mData->getOrdersAt(x, y, orders);
        return orders.size();
    }
    int dealsAt(int x, int y) const {
        QList<boost::shared_ptr<kvservice::CDealDetail>> deals;
        mData->getDealsAt(x, y, deals);
        return deals.size();
    }
    int tasksAt(int x, int y) const {
        QList<boost::shared_ptr<kvservice::CTaskDetail>> tasks;
        mData->getTasksAt(x, y, tasks);
        return tasks.size();
    }
    QImage blank() const {
        QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        return image;
    }
    QImage drawn() {
        QImage image = blank();
        QPainter painter(&image);
        mData->drawLinkageMarks(&painter, kGraph);
        return image;
    }
    /// What a picture has to be, by hand.
    template <class Draw> QImage expected(Draw draw) const {
        QImage image = blank();
        QPainter painter(&image);
        draw(painter);
        return image;
    }
    /// Pixel by pixel, but for the rounding of what is blended twice.
    static ::testing::AssertionResult same(const QImage &actual, const QImage &wanted) {
        const GoldenDifference difference = compareImages(actual, wanted, {3, 0.0});
        return difference.accepted ? ::testing::AssertionSuccess()
                                   : ::testing::AssertionFailure()
                                         << difference.pixels << " pixels differ, by " << difference.largest;
    }

    TC::CInstrumentDetailPtr mOther;
    std::unique_ptr<TC::CGraphAxisWidget> mStrip;
};

} // namespace tests
