#include "statistics/TransactionRequests.h"

#include "tests/fakehost/FakeHost.h"

#include <QCoreApplication>
#include <QtTest>

#include <gtest/gtest.h>

#include <thread>

using TC::TransactionRequests;

namespace {

class TransactionRequestsTest : public ::testing::Test {
protected:
    TransactionRequestsTest() {
        mHost.mStocks.add("SH", "600000");
        mRequests = std::make_unique<TransactionRequests>();
        QObject::connect(mRequests.get(), &TransactionRequests::sigAnswered, mRequests.get(),
                         [this](const QString &stock, const TransactionRequests::Records &records) {
                             EXPECT_EQ(std::this_thread::get_id(), mThread);
                             mAnswers.append({stock, static_cast<int>(records.size())});
                         });
    }
    /// A request, and its callback, which outlives everything.
    TC::HistoryQuoteCallback request(const QString &stock = QStringLiteral("SH600000")) {
        mRequests->request(stock, 100, 200);
        return mHost.mFormulas.mQuoteRequests.back().onQuotes;
    }
    static TransactionRequests::Records records(int count) {
        return TransactionRequests::Records(static_cast<size_t>(count), std::make_shared<quoter::QuoterBase>());
    }
    static void answer(const TC::HistoryQuoteCallback &callback, int count) {
        callback(0, 0, records(count), QString());
    }
    static void answerElsewhere(const TC::HistoryQuoteCallback &callback, int count) {
        std::thread([&] { answer(callback, count); }).join();
    }

    using Answers = QList<QPair<QString, int>>;
    fakehost::FakeHost mHost;
    std::unique_ptr<TransactionRequests> mRequests;
    Answers mAnswers; ///< instrument and count of records
    std::thread::id mThread = std::this_thread::get_id();
};

const QString kStock = QStringLiteral("SH600000");

TEST_F(TransactionRequestsTest, RequestTellsKindPeriodAndRangeInMilliseconds) {
    request();
    const fakehost::QuoteRequest &asked = mHost.mFormulas.mQuoteRequests.back();
    EXPECT_EQ(asked.meta.mMarket, "SH");
    EXPECT_EQ(asked.meta.mCode, "600000");
    EXPECT_EQ(asked.meta.mDataKind, 1806);
    EXPECT_EQ(asked.meta.mPeriod, 0);
    EXPECT_EQ(asked.region.mStart, 100000);
    EXPECT_EQ(asked.region.mEnd, 200000);
    EXPECT_EQ(asked.region.mLimit, 2147483647);
}

TEST_F(TransactionRequestsTest, MillisecondsOfALateYearDoNotWrap) {
    mRequests->request(kStock, 4294967295LL, 4294967295LL);
    EXPECT_EQ(mHost.mFormulas.mQuoteRequests.back().region.mEnd, 4294967295000LL);
}

TEST_F(TransactionRequestsTest, AnswerTellsTheInstrumentThatWasAskedFor) {
    answer(request(), 3);
    EXPECT_EQ(mAnswers, (Answers{{kStock, 3}}));
}

TEST_F(TransactionRequestsTest, AnswerOnAThreadOfTheServiceComesOutOnThisOne) {
    answerElsewhere(request(), 2);
    EXPECT_TRUE(mAnswers.isEmpty()); // this thread has not had its turn
    QTRY_COMPARE(mAnswers.size(), 1);
    EXPECT_EQ(mAnswers, (Answers{{kStock, 2}}));
}

TEST_F(TransactionRequestsTest, LateAnswerOfAnEarlierRequestIsNotTold) {
    const auto first = request();
    const auto second = request();
    answer(second, 2);
    answer(first, 1);
    EXPECT_EQ(mAnswers, (Answers{{kStock, 2}}));
}

TEST_F(TransactionRequestsTest, AnswersInOrderAreAllTold) {
    const auto first = request();
    const auto second = request();
    answer(first, 1);
    answer(second, 2);
    answer(second, 3); // in parts
    EXPECT_EQ(mAnswers, (Answers{{kStock, 1}, {kStock, 2}, {kStock, 3}}));
}

TEST_F(TransactionRequestsTest, AnswersAfterTheEndAreDropped) {
    const auto callback = request();
    answerElsewhere(callback, 1); // under way
    mRequests.reset();
    answer(callback, 1);
    answerElsewhere(callback, 1);
    QCoreApplication::processEvents();
    EXPECT_TRUE(mAnswers.isEmpty());
}

TEST_F(TransactionRequestsTest, ReceiverMayEndTheRequests) {
    const auto first = request();
    answerElsewhere(first, 1);
    answerElsewhere(first, 2);
    QObject::connect(mRequests.get(), &TransactionRequests::sigAnswered, qApp, [this] { mRequests.reset(); });
    QTRY_VERIFY(!mRequests);
    EXPECT_EQ(mAnswers, (Answers{{kStock, 1}}));
}

} // namespace
