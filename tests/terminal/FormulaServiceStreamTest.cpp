#include "tests/terminal/FormulaServiceFixture.h"

using namespace terminal;
using namespace tests;

namespace {

constexpr qint64 kEver = 1000000000; // milliseconds

class FormulaServiceStreamTest : public FormulaServiceFixture {
protected:
    TC::CFormulaParam every(const QString &id, qint64 interval) {
        TC::CFormulaParam made = param(id);
        made.mInterval = interval;
        return made;
    }
    QList<Received> of(const QString &id) const {
        QList<Received> found;
        for (const Received &received : mReceived) {
            if (received.id == id) {
                found.append(received);
            }
        }
        return found;
    }
    /// Waits until the worker has handled all changes so far: it tells another request of them later.
    bool waitForWorker(double price) {
        return QTest::qWaitFor(
            [&] {
                const QList<Received> points = of("fast");
                return !points.isEmpty() && points.last().point && points.last().point->mValues[0] == price;
            },
            10000);
    }
};

} // namespace

TEST_F(FormulaServiceStreamTest, WithinTheRefreshIntervalNothingIsSent) {
    request({every("slow", kEver), param("fast")});
    ASSERT_TRUE(waitForResults(2));
    for (int i = 0; i < 5; ++i) {
        mFeed.change("SH600000", bar(kOpen + kMinute, 11.0 + i, 10.1, 300));
    }
    ASSERT_TRUE(waitForWorker(15.0));
    EXPECT_EQ(of("slow").size(), 1) << "the history alone";
    EXPECT_GE(of("fast").size(), 2);
}

TEST_F(FormulaServiceStreamTest, AfterTheRefreshIntervalTheLastStateIsSent) {
    request({every("slow", 30), param("fast")});
    ASSERT_TRUE(waitForResults(2));
    for (int i = 0; i < 50; ++i) {
        mFeed.change("SH600000", bar(kOpen + kMinute, 11.0 + i, 10.1, 300));
    }
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const QList<Received> slow = of("slow");
            return slow.last().point && slow.last().point->mValues[0] == 60.0;
        },
        10000));
    for (const Received &received : of("slow").mid(1)) {
        EXPECT_EQ(received.kind, Received::Point) << "one minute changed, however often";
    }
}

TEST_F(FormulaServiceStreamTest, MinutesThatCameWithinTheIntervalGoOutTogether) {
    request({every("slow", 100)});
    ASSERT_TRUE(waitForResults(1));
    for (int i = 2; i < 40; ++i) {
        mFeed.change("SH600000", bar(kOpen + i * kMinute, 10.0 + i, 10.1, 300));
    }
    // In which results they come is up to the time it takes; together they make the whole series.
    QMap<qint64, double> shown;
    int seen = 0;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            for (; seen < mReceived.size(); ++seen) {
                const Received &received = mReceived[seen];
                if (received.kind == Received::Point) {
                    shown[received.point->mTime.first] = received.point->mValues[0];
                    continue;
                }
                shown.clear();
                for (size_t i = 0; i < received.result->mTimes.size(); ++i) {
                    shown[received.result->mTimes[i].first] = received.result->mValues[0][i];
                }
            }
            return shown.size() == 40 && shown.last() == 49.0;
        },
        10000));
    EXPECT_EQ(shown.value(kOpen + 20 * kMinute), 30.0);
}

TEST_F(FormulaServiceStreamTest, ARevisedMinuteIsNotLostWhenTheLastOneChangesBehindIt) {
    request({every("slow", 300)});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH600000", bar(kOpen, 9.5, 9.5, 100));
    mFeed.change("SH600000", bar(kOpen + kMinute, 11.0, 10.1, 300));
    double first = 0.0;
    double last = 0.0;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            const Received &received = mReceived.last();
            if (received.kind == Received::History) {
                first = received.result->mValues[0].front();
                last = received.result->mValues[0].back();
            } else {
                last = received.point->mValues[0];
            }
            return first == 9.5 && last == 11.0;
        },
        10000))
        << first << " " << last;
}

TEST_F(FormulaServiceStreamTest, ARequestMayGoWhileAResultWaitsForItsInterval) {
    request({every("slow", kEver), param("fast")});
    ASSERT_TRUE(waitForResults(2));
    mFeed.change("SH600000", bar(kOpen + kMinute, 11.0, 10.1, 300));
    ASSERT_TRUE(waitForWorker(11.0));
    mService->unrequestFormula("slow");
    mService.reset();
    EXPECT_EQ(of("slow").size(), 1);
}

TEST_F(FormulaServiceStreamTest, TheMinutesAfterHoursAreStreamed) {
    const qint64 close = kOpen + 335 * kMinute; // 15:05
    mFeed.setAfterHours("SH600000", kToday, {bar(close, 10.5, 10.2, 7)});
    TC::CFormulaParam fixed = param("f");
    fixed.mDataMode = 3;
    request({fixed});
    ASSERT_TRUE(waitForResults(1));
    mFeed.setAfterHours("SH600000", kToday, {bar(close, 10.5, 10.2, 9), bar(close + kMinute, 10.5, 10.2, 3)});
    ASSERT_TRUE(waitForResults(2));
    ASSERT_EQ(mReceived[1].kind, Received::History) << "two minutes at one look";
    EXPECT_EQ(mReceived[1].result->mTimes.back().first, close + kMinute);
    mFeed.setAfterHours("SH600000", kToday, {bar(close, 10.5, 10.2, 9), bar(close + kMinute, 10.5, 10.2, 4)});
    ASSERT_TRUE(waitForResults(3));
    ASSERT_EQ(mReceived[2].kind, Received::Point);
    EXPECT_EQ(mReceived[2].point->mTime.first, close + kMinute);
}

TEST_F(FormulaServiceStreamTest, AFixedPriceRequestOfHistoryIsNotStreamed) {
    const qint64 close = kOpen + 335 * kMinute;
    mFeed.setAfterHours("SH600000", kToday, {bar(close, 10.5, 10.2, 7)});
    TC::CFormulaParam past = param("past", "REALTIME", 1);
    past.mDataMode = 3;
    TC::CFormulaParam fixed = param("f");
    fixed.mDataMode = 3;
    request({past, fixed});
    ASSERT_TRUE(waitForResults(2));
    mFeed.setAfterHours("SH600000", kToday, {bar(close, 10.6, 10.2, 9)});
    ASSERT_TRUE(waitForResults(3));
    EXPECT_EQ(mReceived[2].id, "f");
    EXPECT_EQ(of("past").size(), 1);
}
