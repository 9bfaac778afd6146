#include "terminal/replay/ReplayService.h"

#include "tests/terminal/BuiltInFormulas.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/ScriptedFeed.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <atomic>

using namespace terminal;
using tests::kMinute;

namespace {

constexpr int kReplayDay = tests::kYesterday;
constexpr qint64 kReplayOpen = kReplayDay * 1000LL + 34200000;

class ReplayServiceTest : public ::testing::Test {
protected:
    ReplayServiceTest() {
        MinuteBars bars(4);
        for (size_t i = 0; i < bars.size(); ++i) {
            bars[i].time = kReplayOpen + static_cast<qint64>(i) * kMinute;
            bars[i].price = 10.0 + static_cast<double>(i);
            bars[i].average = 10.0;
        }
        mFeed.setBars("SH600000", kReplayDay, bars);
        mService.setPace(0);
        QObject::connect(&mService, &ReplayService::finished, [this] { mFinished = true; });
    }
    void request(const QString &id, const QString &script = {}) {
        TC::CFormulaParam param;
        param.mRequestId = id.toStdString();
        param.mMarket = "SH";
        param.mCode = "600000";
        param.mFormulaName = script.isEmpty() ? QStringLiteral("REALTIME") : script;
        param.mLanguage = script.isEmpty() ? 0 : 1;
        QVector<TC::CFormulaParam> params{param};
        mService.requestFormulas(
            "SH600000", params,
            [this](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &result, const QString &name, int,
                   const QString &, bool keepRange) {
                mLog.append(QStringLiteral("%1 history %2").arg(name).arg(result->mTimes.size()));
                mKept.append(keepRange);
                mLast = result;
            },
            [this](int, const QString &name, const TC::FormulaInstantPtr &point) {
                mLog.append(QStringLiteral("%1 point %2").arg(name).arg(point->mValues.at(0)));
            });
    }
    bool waitUntilFinished() {
        return QTest::qWaitFor([&] { return mFinished; }, 10000);
    }

    tests::ScriptedFeed mFeed;
    RequestTools mTools{mFeed, tests::makeBuiltInFormula, [this](const QString &, int) { return mPositions; },
                        ScriptModelRunner(mFeed)};
    std::vector<qint64> mPositions; ///< of the day; none for any
    ReplayService mService{mTools, [](const TC::CFormulaParam &) { return kReplayDay; }};
    QStringList mLog;
    QList<bool> mKept; ///< whether each series kept its range
    TC::FormulaResultPtr mLast; ///< the newest series
    bool mFinished = false;
};

} // namespace

TEST_F(ReplayServiceTest, WithoutARangeTheWholeDayIsPlayed) {
    request("a");
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog, QStringList({"a history 0", "a point 10", "a point 11", "a point 12", "a point 13"}));
    EXPECT_EQ(mService.replayTime(), kReplayOpen + 3 * kMinute);
}

TEST_F(ReplayServiceTest, HistoryGoesUpToTheStartOfTheRangeAndPointsToItsEnd) {
    mService.setThousandRange(kReplayOpen + kMinute, kReplayOpen + 2 * kMinute);
    request("a");
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog, QStringList({"a history 2", "a point 12"}));
}

TEST_F(ReplayServiceTest, SettingTheRangeAnewStartsOver) {
    request("a");
    ASSERT_TRUE(waitUntilFinished());
    mLog.clear();
    mFinished = false;
    mService.setThousandRange(kReplayOpen + 2 * kMinute, kReplayOpen + 30 * kMinute);
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

TEST_F(ReplayServiceTest, WhenAllAreWithdrawnNothingIsPlayed) {
    request("a");
    request("b");
    ASSERT_EQ(mService.liveRequests(), 2);
    mService.withdrawAll();
    EXPECT_EQ(mService.liveRequests(), 0);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(mLog, QStringList());
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

TEST_F(ReplayServiceTest, WhatIsPlayedStandsOnThePositionsOfTheDay) {
    // A position before the first bar, and one after the second bar without a trade.
    for (const int minute : {-1, 0, 1, 2, 3}) {
        mPositions.push_back(kReplayOpen + minute * kMinute);
    }
    MinuteBars bars = mFeed.dayBars("SH600000", kReplayDay);
    bars.erase(bars.begin() + 2);
    mFeed.setBars("SH600000", kReplayDay, bars);
    mService.setThousandRange(kReplayOpen, kReplayOpen + 30 * kMinute);
    request("a");
    ASSERT_TRUE(waitUntilFinished());
    EXPECT_EQ(mLog, QStringList({"a history 2", "a point 11", "a history 5"}))
        << "the minute after a quiet one changes more than its own point";
    EXPECT_EQ(mKept, QList<bool>({false, true}));
    ASSERT_EQ(mLast->mTimes.size(), 5u);
    EXPECT_EQ(mLast->mTimes[3].first, kReplayOpen + 2 * kMinute);
    EXPECT_EQ(mLast->mValues[0][3], 11.0) << "the price before it";
}

class ReplayedModelTest : public ReplayServiceTest {
protected:
    ReplayedModelTest() {
        ScriptModelSettings settings;
        settings.pauseMilliseconds = 1;
        mTools.models.setUp(settings, [this](const FormulaError &) { ++mErrors; });
    }
    QString write(const QByteArray &text) {
        QFile file(mFolder.filePath("MODEL.py"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return mFolder.path() + "\\MODEL.py";
    }

    QTemporaryDir mFolder;
    std::atomic<int> mErrors{0};
};

TEST_F(ReplayedModelTest, ItsSeriesGrowsWithWhatIsPlayed) {
    mService.setThousandRange(kReplayOpen + kMinute, kReplayOpen + 2 * kMinute);
    mService.setPaused(true);
    request("m", write("import json, sys\n"
                       "told = json.loads(sys.stdin.readline())\n"
                       "print(json.dumps({'line': 'p', 'values': told['bars']['price']}))\n"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !mLog.isEmpty(); }, 20000));
    EXPECT_EQ(mLast->mValues, (std::vector<std::vector<double>>{{10.0, 11.0}}))
        << "up to the start of the range";
    mService.setPaused(false);
    ASSERT_TRUE(waitUntilFinished());
    ASSERT_TRUE(QTest::qWaitFor([this] { return mLog.last() == "m history 3"; }, 20000));
    EXPECT_EQ(mLast->mValues, (std::vector<std::vector<double>>{{10.0, 11.0, 12.0}})) << "and to its end";
    EXPECT_FALSE(mKept.first());
    EXPECT_TRUE(mKept.last());
}

TEST_F(ReplayedModelTest, ItsGroupIsNotSeenAheadOfTheReplay) {
    mFeed.setBars("SZ000001", kReplayDay, mFeed.dayBars("SH600000", kReplayDay));
    mService.setThousandRange(kReplayOpen + kMinute, kReplayOpen + kMinute);
    mService.setPaused(true);
    TC::CFormulaParam param;
    param.mRequestId = "m";
    param.mMarket = "SH";
    param.mCode = "600000";
    param.mLanguage = 1;
    param.mArguments.insert("group", "SZ000001");
    param.mFormulaName =
        write("import json, sys\n"
              "told = json.loads(sys.stdin.readline())\n"
              "n = float(len(told['group'][0]['bars']['price']))\n"
              "print(json.dumps({'line': 'n', 'values': [n for _ in told['bars']['price']]}))\n");
    QVector<TC::CFormulaParam> params{param};
    mService.setThousandRange(kReplayOpen + kMinute, kReplayOpen + 2 * kMinute);
    mService.requestFormulas("SH600000", params,
                             [this](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &result,
                                    const QString &, int, const QString &, bool) { mLast = result; },
                             {});
    ASSERT_TRUE(QTest::qWaitFor([this] { return mLast != nullptr; }, 20000));
    EXPECT_EQ(mErrors, 0);
    EXPECT_EQ(mLast->mValues, (std::vector<std::vector<double>>{{2.0, 2.0}}));
}

TEST_F(ReplayedModelTest, AWithdrawnOneIsEnded) {
    mService.setPaused(true);
    request("m", write("import time\nopen('begun', 'w').close()\ntime.sleep(1000)\n"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return QFile::exists(mFolder.filePath("begun")); }, 20000));
    QVector<QString> ids{"m"};
    mService.deleteFormulas(ids);
    request("a"); // runs whatever the model does
    ASSERT_TRUE(QTest::qWaitFor([this] { return !mLog.isEmpty(); }, 20000));
    EXPECT_EQ(mErrors, 0);
}

TEST_F(ReplayServiceTest, WhatItPlaysIsNotGivenToTheMarketsCharts) {
    HistoryCache cache;
    ReplayService service(
        mTools, [](const TC::CFormulaParam &) { return kReplayDay; }, &cache);
    TC::CFormulaParam param;
    param.mRequestId = "a";
    param.mMarket = "SH";
    param.mCode = "600000";
    param.mFormulaName = "REALTIME";
    QVector<TC::CFormulaParam> params{param};
    service.setThousandRange(kReplayOpen + kMinute, kReplayOpen + 2 * kMinute);
    bool called = false;
    service.requestFormulas("SH600000", params,
                            [&](const TC::FormulaMetaPtr &meta, const TC::FormulaResultPtr &result,
                                const QString &, int, const QString &, bool) {
                                called = true;
                                cache.addFormulaHistoryData("SH600000", "REALTIME", meta,
                                                            result); // as a chart does
                            },
                            {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return called; }, 10000));
    EXPECT_EQ(cache.size(), 0);
}
