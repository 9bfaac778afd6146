#include "tests/terminal/FormulaServiceFixture.h"

#include <QStringList>

#include <future>

using namespace terminal;
using namespace tests;

namespace {

/// A source whose days the test writes.
class ScriptedHistory : public HistorySource {
public:
    QVector<int> missingDays(const QString &key, qint64, qint64) override { return mMissing.value(key); }
    QString fetchDay(const QString &key, int day) override {
        if (mGate) {
            mReached.set_value();
            mGate->get_future().wait();
            mGate = nullptr;
        }
        std::lock_guard<std::mutex> hold(mLock);
        mFetched << QStringLiteral("%1/%2").arg(key).arg(day);
        return day == mBadDay ? QStringLiteral("没有连接") : QString();
    }
    QStringList fetched() {
        std::lock_guard<std::mutex> hold(mLock);
        return mFetched;
    }

    QMap<QString, QVector<int>> mMissing;
    int mBadDay = -1;
    std::promise<void> *mGate = nullptr; ///< holds the first fetch up
    std::promise<void> mReached;

private:
    std::mutex mLock;
    QStringList mFetched;
};

class FormulaServiceDownloadTest : public FormulaServiceFixture {
protected:
    FormulaServiceDownloadTest() {
        mService->setHistorySource(&mHistory);
        mService->setScriptModels(ScriptModelSettings(), [this](const FormulaError &error) {
            std::lock_guard<std::mutex> hold(mLock);
            mErrors << error.formula + " " + error.text;
        });
        mHistory.mMissing["SH600000"] = {1, 2};
        mHistory.mMissing["SZ000001"] = {3};
    }
    ~FormulaServiceDownloadTest() override { mService.reset(); }

    void download() {
        TC::CHistoryDataParam param;
        param.mMarkets = {"SH", "SZ"};
        param.mCodes = {"600000", "000001"};
        mService->suppleDataFromServer(
            "suppledata", param, [this](int done, int total, const QString &market, const QString &code) {
                EXPECT_EQ(QThread::currentThread(), qApp->thread());
                mSteps << QString("%1/%2 %3%4").arg(done).arg(total).arg(market, code);
            });
    }
    bool waitForSteps(int count) {
        return QTest::qWaitFor([&] { return mSteps.size() >= count; }, 10000);
    }
    QStringList errors() {
        std::lock_guard<std::mutex> hold(mLock);
        return mErrors;
    }

    ScriptedHistory mHistory;
    QStringList mSteps;
    std::mutex mLock;
    QStringList mErrors;
};

} // namespace

TEST_F(FormulaServiceDownloadTest, EveryDayIsAStepAndTheEndOfEveryInstrument) {
    download();
    EXPECT_TRUE(mSteps.isEmpty()) << "not from within the call";
    ASSERT_TRUE(waitForSteps(5));
    EXPECT_EQ(mSteps,
              (QStringList{"1/5 SH600000", "2/5 SH600000", "3/5 SH600000", "4/5 SZ000001", "5/5 SZ000001"}));
    EXPECT_EQ(mHistory.fetched(), (QStringList{"SH600000/1", "SH600000/2", "SZ000001/3"}));
    EXPECT_TRUE(errors().isEmpty());
}

TEST_F(FormulaServiceDownloadTest, AFailureEndsItAndIsTold) {
    mHistory.mBadDay = 2;
    download();
    ASSERT_TRUE(waitForSteps(2));
    ASSERT_TRUE(QTest::qWaitFor([this] { return mService->pendingResults() == 0; }, 10000));
    EXPECT_EQ(mSteps, (QStringList{"1/5 SH600000", "-1/5 SH600000"}));
    EXPECT_EQ(errors(), (QStringList{"SH600000 没有连接"}));
}

TEST_F(FormulaServiceDownloadTest, ItCanBeStoppedBetweenTwoDaysAndBegunAgain) {
    std::promise<void> gate;
    mHistory.mGate = &gate;
    download();
    mHistory.mReached.get_future().wait();
    mService->stopDownloads();
    gate.set_value();
    ASSERT_TRUE(waitForSteps(2));
    EXPECT_EQ(mSteps, (QStringList{"1/5 SH600000", "-1/5 SH600000"}));
    EXPECT_EQ(mHistory.fetched(), (QStringList{"SH600000/1"}));
    download();
    ASSERT_TRUE(waitForSteps(7));
    EXPECT_EQ(mSteps.last(), "5/5 SZ000001");
}

TEST_F(FormulaServiceDownloadTest, TheServiceEndsInTheMiddleOfIt) {
    std::promise<void> gate;
    mHistory.mGate = &gate;
    download();
    mHistory.mReached.get_future().wait();
    std::thread opener([&] { gate.set_value(); });
    mService.reset();
    opener.join();
    EXPECT_LE(mHistory.fetched().size(), 3);
    EXPECT_TRUE(mSteps.isEmpty());
}

TEST_F(FormulaServiceDownloadTest, AListenerHearsOfEveryStepAndHowManyDownloadsAreUnderWay) {
    QStringList heard;
    mService->setDownloadListener([&](const QString &key, int done, int total) {
        heard << QString("%1 %2/%3 %4").arg(key).arg(done).arg(total).arg(mService->downloadsUnderWay());
    });
    mHistory.mBadDay = 2;
    TC::CHistoryDataParam ofNothing;
    EXPECT_EQ(mService->downloadsUnderWay(), 0);
    download();
    mService->suppleDataFromServer("suppledata", ofNothing, {});
    EXPECT_EQ(mService->downloadsUnderWay(), 2);
    ASSERT_TRUE(QTest::qWaitFor([this] { return mService->downloadsUnderWay() == 0; }, 10000));
    EXPECT_EQ(heard, (QStringList{"SH600000 1/5 2", "SH600000 -1/5 1"}));
}
