// The user's orders, deals, tasks and curves on a chart.

#include "tests/chartdata/LinkageFixture.h"

#include <cmath>

using namespace tests;
using namespace TC;

namespace {

class LinkagePicture : public LinkageFixture, public ::testing::WithParamInterface<double> {
protected:
    /// Records of a morning, of the main instrument and of another one.
    void trade() {
        mHost.mClock.mNow.setTime(QTime(14, 0));
        for (int i = 0; i < 12; ++i) {
            const QTime time = QTime(9, 40).addSecs(i * 660);
            const std::string clock = time.toString(QStringLiteral("hh:mm:ss")).toStdString();
            const std::string key = std::to_string(i);
            const double wave = std::sin(i * 0.8);
            addOrder(key, i % 3 ? kBuy : kSell, 10.0 + 0.3 * wave, clock);
            addOrder(key, i % 2 ? kBuy : kSell, 20.0 - 1.2 * wave, clock, "SZ000001");
            addDeal(key, i % 3 ? kBuy : kSell, 9.9 + 0.3 * wave, clock, 100 + 50 * i);
            addDeal(key, i % 2 ? kBuy : kSell, 19.5 - 1.2 * wave, clock, 100, "SZ000001");
        }
        for (int i = 0; i < 6; ++i) {
            const auto task = addTask(i, i % 2 == 0, 10.7 - 0.25 * i, QTime(13, 5).addSecs(i * 900), i, 5);
            task->mStatus = i < 3 ? 5 : 8;
        }
    }
    void compare(const QString &name) {
        const double ratio = GetParam();
        const QImage image = rendered(kSize, ratio, QColor(20, 22, 28),
                                      [this](QPainter &painter) { mData->drawLinkageMarks(&painter, kGraph); });
        EXPECT_TRUE(matchesGolden(image, goldenName(name, ratio)));
    }
};

TEST_P(LinkagePicture, SelectedData) {
    show({0, 1, 2});
    mUiParam->mLinkageStocks = {"SH600000", "SZ000001"};
    trade();
    compare(QStringLiteral("linkage-selected"));
}

TEST_P(LinkagePicture, AccountWithItsAverageCost) {
    mUiParam->mLinkageFlags = 2;
    mUiParam->mStockAccounts = {QStringLiteral("A")};
    trade();
    compare(QStringLiteral("linkage-account"));
}

TEST_P(LinkagePicture, Curves) {
    show({3, 4, 5, 6});
    mHost.mClock.mNow.setTime(QTime(14, 0));
    for (int i = 0; i < 24; ++i) {
        const int minute = 575 + 5 * i;
        mHost.mLinkage.mAmounts[minute] = {1000.0 * i + 500.0, i < 6 ? 0.0 : 90.0 * (i - 5) * (i - 5)};
        mHost.mLinkage.mProfits[minute] = 800.0 * std::sin(i * 0.4);
        mHost.mLinkage.mBalances[minute] = 300.0 + 40.0 * i * std::cos(i * 0.2);
    }
    compare(QStringLiteral("linkage-curves"));
}

TEST_P(LinkagePicture, NightSessionWithMarksAndCurves) {
    mHost.mTimes.mNight.insert("SH600000");
    mUiParam->resetAxis("SH", "600000");
    show({0, 1, 2, 3, 5});
    mHost.mClock.mNow.setTime(QTime(11, 0));
    int minute = 1270; // 21:10
    for (int i = 0; i < 12; ++i, minute = i == 6 ? 545 : minute + 15) {
        const std::string clock = QTime(0, 0).addSecs(minute * 60).toString("hh:mm:ss").toStdString();
        const double wave = std::sin(i * 0.8);
        addOrder(std::to_string(i), i % 3 ? kBuy : kSell, 10.0 + 0.3 * wave, clock);
        addDeal(std::to_string(i), i % 3 ? kBuy : kSell, 9.9 + 0.3 * wave, clock);
        mHost.mLinkage.mAmounts[minute] = {1000.0 * i + 500.0, i < 3 ? 0.0 : 700.0 * (i - 2)};
        mHost.mLinkage.mProfits[minute] = 800.0 * std::sin(i * 0.4);
    }
    addTask(1, true, 10.6, QTime(21, 30), 2, 5);
    addTask(2, false, 9.4, QTime(10, 0), 5, 5)->mStatus = 8;
    compare(QStringLiteral("linkage-night"));
}

INSTANTIATE_TEST_SUITE_P(Ratios, LinkagePicture, ::testing::Values(1.0, 2.0));

} // namespace
