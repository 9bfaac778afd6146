// A whole view: main pane and formula pane with titles, strips and cross line, and the time scale beneath.

#include "tests/containers/MainWidgetFixture.h"

#include <cmath>

using namespace TC;

namespace {

constexpr QSize kViewSize(900, 520);
constexpr int kMinutes = 241;
constexpr int kDayLength = 86400;

/// A day that needs no random numbers; each day has a wave and a level of its own.
double priceOfDay(int day, int minute) {
    return 10.0 + 0.12 * day + 0.2 * std::sin(minute * 0.03 + day) + 0.05 * std::sin(minute * 0.4);
}
double volumeOfDay(int day, int minute) {
    return 3000.0 + 40000.0 * std::exp(-minute / 30.0) + 1200.0 * (1.0 + std::sin(minute * 2.1 + day));
}
double waveOf(int day, int minute) {
    return 50.0 + 30.0 * std::sin(minute * 0.05 + day);
}

class ViewPicture : public tests::MainWidgetFixture {
protected:
    /// The days end on 2024-03-15; the newest one has run until 14:00.
    void showDays(int days) {
        mDetail->mName = "浦发银行";
        mHost.mCatalogue.getFormula("KDJ")->mParamValues = {9, 3, 3};
        showView(1);
        mKeeper->resize(kViewSize);
        mMain->resize(kViewSize);
        for (int day = 1; day < days; ++day) {
            mMain->scaleView(false);
        }
        mMain->request(false);
        for (int back = 0; back < days; ++back) {
            answerDay("REALTIME", back, {"价格", "均价"}, {priceOfDay, averageOf}, {0, 0});
            answerDay("REALTIMEVOL", back, {"量"}, {volumeOfDay}, {2});
            answerDay("KDJ", back, {"K", "D"}, {waveOf, [](int day, int i) { return waveOf(day, i - 8); }},
                      {0, 0});
        }
        settle();
    }
    static double averageOf(int day, int minute) {
        double sum = 0.0;
        for (int i = 0; i <= minute; ++i) {
            sum += priceOfDay(day, i);
        }
        return sum / (minute + 1);
    }
    using Line = std::function<double(int, int)>;
    void answerDay(const char *formula, int back, const std::vector<std::string> &names,
                   const std::vector<Line> &lines, const std::vector<qint32> &styles) {
        const int date = tests::kDay - back * kDayLength;
        const int count = back == 0 ? 181 : kMinutes;
        std::vector<se::TimePosition> times;
        std::vector<std::vector<double>> values(lines.size());
        for (int i = 0; i < count; ++i) {
            times.push_back(tests::minuteTime(date, i <= 120 ? 570 + i : 660 + i));
            for (std::size_t line = 0; line < lines.size(); ++line) {
                values[line].push_back(lines[line](back, i));
            }
        }
        for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
            if (request.param.mFormulaName == QLatin1String(formula) + QLatin1String(".lua") &&
                request.param.mStart.first / 1000 == date) {
                request.onHistory(tests::makeMeta(static_cast<int>(lines.size()), styles, names),
                                  tests::makeResult(times, values), request.id(), 1, QString(), false);
            }
        }
    }
    /// The user's trades of the newest day, in both views at once, with all curves.
    void trade() {
        auto &linkage = mHost.mLinkage;
        linkage.mEnabled = true;
        mHost.mClock.mNow.setTime(QTime(14, 0));
        for (int i = 0; i < 16; ++i) {
            const int minute = i < 11 ? 10 * i + 5 : 10 * i + 15; // of the 181 that have passed
            const int clock = minute <= 120 ? 570 + minute : 660 + minute;
            const QTime time = QTime(0, 0).addSecs(clock * 60);
            const std::string key = std::to_string(i);
            auto order = boost::make_shared<kvservice::COrderDetail>();
            order->mOrderKey = key;
            order->mDirection = i % 3 ? 48 : 49;
            order->mPrice = priceOfDay(0, minute) + (i % 3 ? -0.04 : 0.04);
            order->mTime = time.toString("hh:mm:ss").toStdString();
            linkage.mOrders["SH600000"]["A"][key] = order;
            auto deal = boost::make_shared<kvservice::CDealDetail>();
            deal->mDealKey = key;
            deal->mDirection = i % 4 ? 48 : 49;
            deal->mPrice = priceOfDay(0, minute);
            deal->mVolume = 100 + 20 * i;
            deal->mAmount = deal->mPrice * deal->mVolume;
            deal->mTime = time.toString("hhmmss").toStdString();
            linkage.mDeals["SH600000"]["A"][key] = deal;
            if (i % 5 == 2) {
                linkage.mTasks["SH600000"]["A"][key] = makeTask(i, time, priceOfDay(0, minute) + 0.1);
                linkage.mFinished[i] = i;
            }
            linkage.mAmounts[clock] = {900.0 * i + 400.0, i < 4 ? 0.0 : 50.0 * i * i};
            linkage.mProfits[clock] = 600.0 * std::sin(i * 0.5);
            linkage.mBalances[clock] = 250.0 + 30.0 * i * std::cos(i * 0.3);
        }
    }
    static boost::shared_ptr<kvservice::CTaskDetail> makeTask(int id, const QTime &time, double price) {
        auto task = boost::make_shared<kvservice::CTaskDetail>();
        task->mTaskId = id;
        task->mStatus = id == 7 ? 8 : 4;
        task->mStartTime = int(QDateTime(QDate(2024, 3, 15), time).toSecsSinceEpoch());
        auto item = boost::make_shared<kvservice::CTaskItem>();
        item->mMarket = "SH";
        item->mCode = "600000";
        item->mOperation = id % 2 ? kvservice::EOperationType::Buy : kvservice::EOperationType::Sell;
        item->mPrice = price;
        item->mQuantity = 14;
        task->mItems = {item};
        return task;
    }
    void showTrades() {
        mUi->mLinkageFlags = 6;
        mUi->mLinkageShow = {true, true, true, true, true, true, true, false};
        mUi->mLinkageAccounts = {"A"};
        mUi->mLinkageStocks = {"SH600000"};
        mUi->mStockAccounts = {QStringLiteral("A")};
        event(3163);
        settle();
    }
    void compare(const QString &name) {
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            settle();
            for (const double ratio : {1.0, 2.0}) {
                const QString picture =
                    tests::goldenName(QStringLiteral("view-%1-%2").arg(name, QLatin1String(theme)), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(*mKeeper, ratio), picture));
            }
        }
    }
};

TEST_F(ViewPicture, OneDayWithTheMouseInTheMainPane) {
    showDays(1);
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {300, 120});
    compare("one-day");
}

TEST_F(ViewPicture, FiveDaysWithTheMouseInAnOlderDayOfTheFormulaPane) {
    showDays(5);
    mUi->mCrossShown = true;
    moveTo(graph(sub(0), 2), {60, 60});
    compare("five-days");
}

TEST_F(ViewPicture, OneDayWithTheUsersTrades) {
    trade();
    showDays(1);
    showTrades();
    compare("trades-one-day");
}

TEST_F(ViewPicture, FiveDaysShowNoTrades) {
    trade();
    showDays(5);
    const QImage without = tests::rendered(*mKeeper, 1.0);
    showTrades();
    EXPECT_TRUE(tests::rendered(*mKeeper, 1.0) == without);
    compare("trades-five-days");
}

} // namespace
