#include "terminal/formula/ResultDelivery.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <thread>

using namespace terminal;

namespace {

FormulaSeries seriesOf(double value) {
    FormulaSeries series;
    series.result.mTimes.emplace_back(60, 0);
    series.result.mValues = {{value}};
    return series;
}

se::RPCFormulaInstantResult pointOf(double value, qint64 time = 60) {
    se::RPCFormulaInstantResult point;
    point.mTime = {time, 0};
    point.mValues = {value};
    return point;
}

/// Tells on which thread it was released.
struct Witness {
    explicit Witness(QThread *&where) : mWhere(where) {}
    ~Witness() { mWhere = QThread::currentThread(); }
    QThread *&mWhere;
};

class ResultDeliveryTest : public ::testing::Test {
protected:
    std::shared_ptr<ResultDelivery> make(std::shared_ptr<Witness> witness = {}) {
        auto callbacks = std::make_shared<ResultCallbacks>();
        callbacks->onHistory = [this, witness](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &result,
                                               const QString &id, int, const QString &name, bool keepRange) {
            mCalls.append(QStringLiteral("%1 %2 %3 %4")
                              .arg(id, name)
                              .arg(result->mValues[0][0])
                              .arg(keepRange ? "keep" : "new"));
            mResult = result;
        };
        callbacks->onRealtime = [this](int, const QString &id, const TC::FormulaInstantPtr &point) {
            mCalls.append(QStringLiteral("%1 point %2").arg(id).arg(point->mValues[0]));
            mPoints.emplace_back(point, point->mValues[0]);
        };
        return std::make_shared<ResultDelivery>(mQueue, subject(), std::move(callbacks));
    }
    static ResultDelivery::Subject subject() {
        return {QStringLiteral("id"), QStringLiteral("MA"), nullptr, 0};
    }
    bool drained() {
        return QTest::qWaitFor([this] { return mQueue.pending() == 0; });
    }

    DeliveryQueue mQueue;
    QStringList mCalls;
    std::vector<std::pair<TC::FormulaInstantPtr, double>> mPoints; ///< with their values as they came
    std::weak_ptr<se::RPCFormulaResult> mResult; ///< the series that came last
};

} // namespace

TEST_F(ResultDeliveryTest, ResultsComeInTheOrderOfPosting) {
    const auto delivery = make();
    std::thread([&] {
        delivery->postSeries(seriesOf(1), false);
        delivery->postPoint(pointOf(2));
        delivery->postSeries(seriesOf(3), true);
    }).join();
    EXPECT_TRUE(mCalls.isEmpty()) << "the user-interface thread has not turned";
    ASSERT_TRUE(drained());
    EXPECT_EQ(mCalls, QStringList({"id MA 1 new", "id point 2", "id MA 3 keep"}));
}

TEST_F(ResultDeliveryTest, OfPointsOfOneTimeThatWaitTheNewestIsDelivered) {
    const auto delivery = make();
    std::thread([&] {
        for (int tick = 0; tick < 100000; ++tick) {
            delivery->postPoint(pointOf(tick));
        }
        delivery->postPoint(pointOf(-1, 120));
        delivery->postPoint(pointOf(-2, 120));
    }).join();
    EXPECT_EQ(mQueue.pending(), 2) << "nothing grows while the user-interface thread stands still";
    ASSERT_TRUE(drained());
    EXPECT_EQ(mCalls, QStringList({"id point 99999", "id point -2"}));
    delivery->postPoint(pointOf(-3, 120));
    ASSERT_TRUE(drained());
    EXPECT_EQ(mCalls.last(), "id point -3") << "one that was delivered waits no more";
}

TEST_F(ResultDeliveryTest, APointDoesNotGoBeforeASeriesThatWasPostedBeforeIt) {
    const auto delivery = make();
    delivery->postPoint(pointOf(1));
    delivery->postSeries(seriesOf(2), false);
    delivery->postPoint(pointOf(3));
    ASSERT_TRUE(drained());
    EXPECT_EQ(mCalls, QStringList({"id point 1", "id MA 2 new", "id point 3"}));
}

TEST_F(ResultDeliveryTest, WhatWasDeliveredIsNotWrittenAgain) {
    const auto delivery = make();
    std::thread poster([&] {
        for (int tick = 0; tick <= 20000; ++tick) {
            delivery->postPoint(pointOf(tick));
        }
    });
    EXPECT_TRUE(QTest::qWaitFor([this] { return !mPoints.empty() && mPoints.back().second == 20000; }));
    poster.join();
    for (size_t i = 0; i < mPoints.size(); ++i) {
        EXPECT_EQ(mPoints[i].first->mValues[0], mPoints[i].second);
        EXPECT_TRUE(i == 0 || mPoints[i - 1].second < mPoints[i].second) << i;
    }
}

TEST_F(ResultDeliveryTest, NothingIsCalledAfterAWithdrawal) {
    const auto delivery = make();
    delivery->postSeries(seriesOf(1), false);
    delivery->withdraw();
    delivery->postPoint(pointOf(2));
    ASSERT_TRUE(drained());
    EXPECT_TRUE(mCalls.isEmpty());
    EXPECT_TRUE(delivery->isWithdrawn());
}

TEST_F(ResultDeliveryTest, WhatCameLastIsRepeatedAndKeepsItsRange) {
    const auto delivery = make();
    delivery->repeat();
    ASSERT_TRUE(drained());
    EXPECT_TRUE(mCalls.isEmpty()) << "there is nothing to repeat";
    delivery->postSeries(seriesOf(1), false);
    delivery->repeat(); // the series is still on its way
    ASSERT_TRUE(drained());
    EXPECT_EQ(mCalls, QStringList({"id MA 1 new", "id MA 1 keep"}));
    delivery->postPoint(pointOf(2));
    ASSERT_TRUE(drained());
    delivery->repeat();
    delivery->postPoint(pointOf(3));
    ASSERT_TRUE(drained());
    EXPECT_EQ(mCalls.mid(2), QStringList({"id point 2", "id point 2", "id point 3"}));
}

TEST_F(ResultDeliveryTest, NothingIsRepeatedAfterAWithdrawalOrTheEnd) {
    for (const bool isWithdrawn : {true, false}) {
        mCalls.clear();
        const auto delivery = make();
        delivery->postSeries(seriesOf(1), false);
        ASSERT_TRUE(drained());
        EXPECT_FALSE(mResult.expired()) << "it may have to be repeated";
        isWithdrawn ? delivery->withdraw() : delivery->finish();
        delivery->repeat();
        ASSERT_TRUE(drained());
        EXPECT_EQ(mCalls, QStringList("id MA 1 new"));
        EXPECT_TRUE(mResult.expired()) << "nobody keeps what nobody hears again";
    }
}

TEST_F(ResultDeliveryTest, ItIsQuietWhenNothingNewCameSinceTheQuestionBefore) {
    const auto delivery = make();
    EXPECT_FALSE(delivery->wasQuiet()) << "it has just begun";
    delivery->postPoint(pointOf(1));
    ASSERT_TRUE(drained());
    EXPECT_FALSE(delivery->wasQuiet());
    delivery->repeat();
    ASSERT_TRUE(drained());
    EXPECT_TRUE(delivery->wasQuiet()) << "what is repeated is nothing new";
    EXPECT_TRUE(delivery->wasQuiet());
}

TEST_F(ResultDeliveryTest, TheCallbacksAreReleasedOnTheUserInterfaceThreadWhoeverWithdraws) {
    QThread *releasedOn = nullptr;
    const auto delivery = make(std::make_shared<Witness>(releasedOn));
    std::thread([&] { delivery->withdraw(); }).join();
    EXPECT_EQ(releasedOn, nullptr);
    ASSERT_TRUE(drained());
    EXPECT_EQ(releasedOn, qApp->thread());
}

TEST_F(ResultDeliveryTest, AWithdrawalOnTheUserInterfaceThreadReleasesAtOnce) {
    QThread *releasedOn = nullptr;
    const auto delivery = make(std::make_shared<Witness>(releasedOn));
    delivery->withdraw();
    EXPECT_EQ(releasedOn, qApp->thread());
}

TEST_F(ResultDeliveryTest, ACallbackMayWithdrawItsOwnRequest) {
    auto callbacks = std::make_shared<ResultCallbacks>();
    std::shared_ptr<ResultDelivery> delivery;
    int calls = 0;
    callbacks->onRealtime = [&](int, const QString &, const TC::FormulaInstantPtr &) {
        ++calls;
        delivery->withdraw();
    };
    delivery = std::make_shared<ResultDelivery>(mQueue, subject(), callbacks);
    delivery->postPoint(pointOf(1));
    delivery->postPoint(pointOf(2));
    ASSERT_TRUE(drained());
    EXPECT_EQ(calls, 1);
}
