#include "terminal/replay/ReplayService.h"

#include "tests/terminal/BuiltInFormulas.h"
#include "tests/terminal/ScriptedFeed.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace terminal;

namespace {

constexpr int kDay = 1763568000; // 2025-11-20 at UTC+8
constexpr qint64 kOpen = kDay * 1000LL + 34200000;
constexpr qint64 kMinute = 60000;

class ReplayServiceTest : public ::testing::Test {
protected:
    ReplayServiceTest() {
        MinuteBars bars(4);
        for (size_t i = 0; i < bars.size(); ++i) {
            bars[i].time = kOpen + static_cast<qint64>(i) * kMinute;
            bars[i].price = 10.0 + static_cast<double>(i);
            bars[i].average = 10.0;
        }
        mFeed.setBars("SH600000", kDay, bars);
        mService.setPace(0);
        QObject::connect(&mService, &ReplayService::finished, [this] { mFinished = true; });
    }
    void request(const QString &id) {
        TC::CFormulaParam param;
        param.mRequestId = id.toStdString();
        param.mMarket = "SH";
        param.mCode = "600000";
        param.mFormulaName = "REALTIME";
        QVector<TC::CFormulaParam> params{param};
        mService.requestFormulas(
            "SH600000", params,
            [this](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &result, const QString &name, int,
                   const QString &,
                   bool) { mLog.append(QStringLiteral("%1 history %2").arg(name).arg(result->mTimes.size())); },
            [this](int, const QString &name, const TC::FormulaInstantPtr &point) {
                mLog.append(QStringLiteral("%1 point %2").arg(name).arg(point->mValues.at(0)));
            });
    }
    bool waitUntilFinished() {
        return QTest::qWaitFor([&] { return mFinished; }, 10000);
    }

    tests::ScriptedFeed mFeed;
    ReplayService mService{mFeed, tests::makeBuiltInFormula, [](const TC::CFormulaParam &) { return kDay; }};
    QStringList mLog;
    bool mFinished = false;
};

} // namespace

TEST_F(ReplayServiceTest, WithoutARangeTheWholeDayIsPlayed) {
    request("a");
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog, QStringList({"a history 0", "a point 10", "a point 11", "a point 12", "a point 13"}));
    EXPECT_EQ(mService.replayTime(), kOpen + 3 * kMinute);
}

TEST_F(ReplayServiceTest, HistoryGoesUpToTheStartOfTheRangeAndPointsToItsEnd) {
    mService.setThousandRange(kOpen + kMinute, kOpen + 2 * kMinute);
    request("a");
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog, QStringList({"a history 2", "a point 12"}));
}

TEST_F(ReplayServiceTest, SettingTheRangeAnewStartsOver) {
    request("a");
    ASSERT_TRUE(waitUntilFinished());
    mLog.clear();
    mFinished = false;
    mService.setThousandRange(kOpen + 2 * kMinute, kOpen + 30 * kMinute);
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog, QStringList({"a history 3", "a point 13"}));
}

TEST_F(ReplayServiceTest, AllRequestsShareOneTime) {
    request("a");
    request("b");
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog.filter("point").mid(0, 4),
              QStringList({"a point 10", "b point 10", "a point 11", "b point 11"}));
}

TEST_F(ReplayServiceTest, AWithdrawnRequestIsNotPlayed) {
    request("a");
    request("b");
    QVector<QString> ids{"a", "unknown"};
    mService.deleteFormulas(ids);
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_TRUE(mLog.filter("a ").isEmpty());
    EXPECT_EQ(mLog.filter("b ").size(), 5);
    EXPECT_EQ(mService.liveRequests(), 1);
}

TEST_F(ReplayServiceTest, PausedItStandsStill) {
    mService.setPaused(true);
    request("a");
    ASSERT_TRUE(QTest::qWaitFor([&] { return mLog.size() == 1; }, 5000));
    for (int i = 0; i < 10; ++i) {
        QCoreApplication::processEvents(); // a running replay would play a minute a turn
    }
    EXPECT_EQ(mLog.size(), 1);
    mService.setPaused(false);
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog.size(), 5);
}
