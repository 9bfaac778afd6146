// How long requests stay with the service, whether or not somebody withdraws them.

#include "tests/terminal/FormulaServiceFixture.h"
#include "tests/terminal/PricePrograms.h"

#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

using namespace terminal;
using namespace tests;

namespace {

class RequestsThatStay : public tests::FormulaServiceFixture {};

} // namespace

TEST_F(RequestsThatStay, ARequestThatGoesOnNoLongerLetsItsCallbacksGoWhenItsSeriesHasCome) {
    constexpr int kWithStream = 3; // of a day that does not run
    for (const int demand : {1, kWithStream}) {
        const auto held = std::make_shared<int>(0);
        QVector<TC::CFormulaParam> params{param(QString::number(demand), "REALTIME", demand, kYesterday)};
        bool hasCome = false;
        mService->requestFormulas(params,
                                  [&hasCome, held](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &,
                                                   const QString &, int, const QString &,
                                                   bool) { hasCome = true; },
                                  {});
        EXPECT_TRUE(QTest::qWaitFor([&] { return hasCome && held.use_count() == 1; }, 10000))
            << demand << ": " << held.use_count();
    }
}

TEST_F(RequestsThatStay, RequestsOfHistoryThatNobodyWithdrawsDoNotAddUp) {
    constexpr int kRequests = 5 * RequestBook::kMost;
    for (int first = 0; first < kRequests; first += RequestBook::kMost) {
        const int before = mReceived.size();
        QVector<TC::CFormulaParam> params;
        for (int i = 0; i < RequestBook::kMost; ++i) {
            params.append(param(QString::number(first + i), "REALTIME", 1, kYesterday));
        }
        request(params);
        ASSERT_TRUE(waitForResults(before + RequestBook::kMost));
    }
    EXPECT_LE(mService->liveRequests(), RequestBook::kMost + RequestBook::kLook);
    QVector<TC::CFormulaParam> params;
    for (int i = 0; i < 2 * RequestBook::kLook; ++i) {
        params.append(param(QStringLiteral("live%1").arg(i)));
    }
    request(params);
    ASSERT_TRUE(waitForResults(kRequests + params.size()));
    EXPECT_LE(mService->liveRequests(), params.size() + RequestBook::kLook)
        << "of those that have no hidden lines nothing can be asked";
    EXPECT_GE(mService->liveRequests(), params.size());
    mService->unrequestFormula(QStringLiteral("0")); // which is gone
}

TEST_F(RequestsThatStay, AStreamThatWasQuietSaysItsLastResultAgainWhenManyRequestsHaveCome) {
    request({param("series"), param("point")});
    ASSERT_TRUE(waitForResults(2));
    const auto requestMany = [this](const char *prefix) {
        const int before = mReceived.size();
        QVector<TC::CFormulaParam> params;
        for (int i = 0; i < RequestBook::kLook; ++i) {
            params.append(param(prefix + QString::number(i), "REALTIME", 1, kYesterday));
        }
        request(params);
        return waitForResults(before + RequestBook::kLook);
    };
    const auto received = [this](const char *id) {
        return std::count_if(mReceived.begin(), mReceived.end(),
                             [id](const Received &one) { return one.id == id; });
    };
    ASSERT_TRUE(requestMany("a"));
    EXPECT_EQ(received("series"), 1) << "it is not quiet yet: its series has come since it began";
    mService->unrequestFormula("point");
    request({param("point")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return received("point") == 2; }, 10000));
    ASSERT_TRUE(requestMany("b"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return received("series") == 2; }, 10000));
    EXPECT_EQ(received("point"), 2);
    const auto last = [this] {
        return *std::find_if(mReceived.rbegin(), mReceived.rend(),
                             [](const Received &one) { return one.id == "series"; });
    };
    ASSERT_EQ(last().kind, Received::History);
    EXPECT_TRUE(last().keepRange);
    EXPECT_EQ(last().result->mValues[0], (std::vector<double>{10.0, 10.2}));

    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.2, 20));
    ASSERT_TRUE(QTest::qWaitFor([&] { return received("series") == 3 && received("point") == 3; }, 10000));
    ASSERT_TRUE(requestMany("c"));
    ASSERT_TRUE(requestMany("d"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return received("series") == 4 && received("point") == 4; }, 10000));
    ASSERT_EQ(last().kind, Received::Point) << "what it said last was a point";
    EXPECT_EQ(last().point->mValues[0], 10.4);
}

TEST_F(RequestsThatStay, StreamsOfAQuietMarketThatTheirPaneHasForgottenDoNotAddUp) {
    QString known;
    int withdrawn = 0;
    for (int i = 0; i < 10 * RequestBook::kLook; ++i) {
        known = QString::number(i);
        QVector<TC::CFormulaParam> params{param(known)};
        bool hasCome = false;
        mService->requestFormulas(params,
                                  [&](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &,
                                      const QString &id, int, const QString &, bool) {
                                      hasCome = hasCome || id == known;
                                      if (id != known) {
                                          ++withdrawn;
                                          mService->unrequestFormula(id);
                                      }
                                  },
                                  {});
        ASSERT_TRUE(QTest::qWaitFor([&] { return hasCome; }, 10000));
    }
    EXPECT_GT(withdrawn, 6 * RequestBook::kLook);
    EXPECT_LE(mService->liveRequests(), 3 * RequestBook::kLook);
    ASSERT_TRUE(QTest::qWaitFor([&] { return mFeed.listeners() == mService->liveRequests(); }, 10000))
        << "those that are gone do not listen";
}

TEST_F(RequestsThatStay, HiddenLinesOfFinishedRequestsAreKeptAsLongAsThereIsRoom) {
    constexpr int kBars = 10000;
    constexpr int kRequests = 2 * RequestBook::kLook;
    const size_t bytes = kBars * (sizeof(double) + sizeof(se::TimePosition)); // at least, of one request
    ASSERT_GT(kRequests * bytes, 2 * RequestBook::kMostBytes);
    ASSERT_LT(bytes, RequestBook::kMostBytes / 4);
    MinuteBars bars;
    for (int i = 0; i < kBars; ++i) {
        bars.push_back(bar(kOpen - 86400000 + i, 9.0, 9.0, 50));
    }
    mFeed.setBars("SH600000", kYesterday, bars);
    mService = std::make_unique<FormulaService>(
        mFeed,
        [](const TC::CFormulaParam &) { return std::make_unique<PriceProgram>("price", se::eLineHidden); },
        [](const TC::CFormulaParam &) { return kYesterday; });
    for (int i = 0; i < kRequests; ++i) {
        request({param(QString::number(i), "HIDDEN", 1, kYesterday)});
        ASSERT_TRUE(waitForResults(i + 1));
    }
    EXPECT_EQ(mService->lookHideVar(QString::number(kRequests - 1), 0), "price:9");
    EXPECT_EQ(mService->lookHideVar(QString::number(kRequests - 4), 0), "price:9");
    EXPECT_EQ(mService->lookHideVar("0", 0), "");
    EXPECT_LE(mService->liveRequests(), static_cast<int>(RequestBook::kMostBytes / bytes) + RequestBook::kLook);
}
