// The dialog of statistics: the user's orders and the transactions of the stretch.

#include "tests/statistics/StatisticFixture.h"

#include <thread>

using namespace TC;

namespace {

class StatisticOrders : public tests::StatisticFixture {
protected:
    StatisticOrders() {
        makeDialog(true);
        addAccount("a1");
        addAccount("a2");
        mHost.mConfig.mUserConfig.mAccounts.append(nullptr);
        addOrder("a1", "C1", "20240315", "09:35:00");
        addOrder("a2", "C2", "20240315", "094130");
    }
    QStringList combo() const {
        QStringList texts;
        for (int i = 0; i < orders()->count(); ++i) {
            texts.append(orders()->itemText(i));
        }
        return texts;
    }
    void choose(const QString &contract) {
        orders()->setCurrentText(contract);
        mDialog->handleEvent(71, 607, orders()->currentIndex(), contract, nullptr);
    }
    /// Bounds that the newest request tells, in seconds.
    QPair<qint64, qint64> asked() const {
        const quoter::TRegionInfo &region = mHost.mFormulas.mQuoteRequests.back().region;
        return {region.mStart / 1000, region.mEnd / 1000};
    }
};

TEST_F(StatisticOrders, OrdersOfTheDayAreThoseOfTheUsersAccounts) {
    mDialog->setStock(QStringLiteral("SH600000"), true);
    setRange(at(9, 30), at(10, 0));
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CLinkageManager::getOrderDetails")),
              QStringList{QStringLiteral("CLinkageManager::getOrderDetails %1 SH600000 a1,a2").arg(at(0, 0))});
    EXPECT_EQ(combo(), (QStringList{QStringLiteral("C1"), QStringLiteral("C2")}));
    EXPECT_EQ(orders()->itemData(0).toInt(), 0);
    EXPECT_EQ(orders()->itemData(1).toInt(), 1);
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StatisticOrders, SameDayIsLoadedOnce) {
    takeStretch();
    setRange(at(10, 0), at(11, 0));
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CLinkageManager::getOrderDetails")).isEmpty());
    EXPECT_EQ(orders()->count(), 2);
}

TEST_F(StatisticOrders, OrdersOfEarlierDaysStay) {
    takeStretch();
    addOrder("a1", "C3", "20240314", "13:00:00");
    mHost.mLinkage.mOrders["SH600000"]["a1"].erase("C1");
    mHost.mLinkage.mOrders["SH600000"]["a2"].clear();
    setRange(at(9, 30, 0, 14), at(10, 0, 0, 14));
    EXPECT_EQ(combo(), (QStringList{QStringLiteral("C1"), QStringLiteral("C2"), QStringLiteral("C3")}));
    choose(QStringLiteral("C1"));
    EXPECT_EQ(asked().first, at(9, 35));
}

TEST_F(StatisticOrders, NullOrdersAreLeftOut) {
    mHost.mLinkage.mOrders["SH600000"]["a1"]["C0"] = nullptr;
    takeStretch();
    EXPECT_EQ(combo(), (QStringList{QStringLiteral("C1"), QStringLiteral("C2")}));
}

TEST_F(StatisticOrders, WithoutAUserNobodysOrdersAreAskedFor) {
    mHost.mConfig.mHasUserConfig = false;
    mDialog->setStock(QStringLiteral("SH600000"), true);
    setRange(at(9, 30), at(10, 0));
    EXPECT_EQ(orders()->count(), 0);
}

TEST_F(StatisticOrders, ChosenOrderBeginsTheStretch) {
    takeStretch();
    choose(QStringLiteral("C2"));
    EXPECT_EQ(asked(), qMakePair(at(9, 41, 30), at(10, 0)));
    EXPECT_EQ(startEdit()->time(), QTime(9, 41, 30));
    choose(QStringLiteral("C1")); // its time has colons
    EXPECT_EQ(asked(), qMakePair(at(9, 35), at(10, 0)));
    EXPECT_EQ(endEdit()->time(), QTime(10, 0));
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StatisticOrders, UserChoosesWithTheKeyboard) {
    takeStretch();
    ASSERT_NO_FATAL_FAILURE(show());
    mDialog->handleEvent(5, 605, 1, QString(), nullptr);
    orders()->setFocus();
    QTest::keyClick(orders(), Qt::Key_Down);
    EXPECT_EQ(asked(), qMakePair(at(9, 41, 30), at(10, 0)));
}

TEST_F(StatisticOrders, UnknownContractNumberEndsTheEvent) {
    takeStretch();
    orders()->addItem(QStringLiteral("other"));
    orders()->setCurrentText(QStringLiteral("other"));
    EXPECT_TRUE(mDialog->handleEvent(71, 607, 2, QStringLiteral("other"), nullptr));
    EXPECT_TRUE(mHost.mFormulas.mQuoteRequests.empty());
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StatisticOrders, OrderWithoutAReadableTimeChangesNothing) {
    mHost.mLinkage.mOrders["SH600000"]["a1"]["C1"]->mTime = "soon";
    takeStretch();
    choose(QStringLiteral("C1"));
    EXPECT_TRUE(mHost.mFormulas.mQuoteRequests.empty());
    EXPECT_EQ(startEdit()->time(), QTime(9, 30));
}

TEST_F(StatisticOrders, OrderOfThePreviousDateLoadsItsDayAndTheEditsMeanIt) {
    addOrder("a1", "C0", "20240314", "14:00:00");
    takeStretch();
    choose(QStringLiteral("C0"));
    EXPECT_EQ(
        mHost.mLog.of(QStringLiteral("CLinkageManager::getOrderDetails")),
        QStringList{QStringLiteral("CLinkageManager::getOrderDetails %1 SH600000 a1,a2").arg(at(0, 0, 0, 14))});
    EXPECT_EQ(asked(), qMakePair(at(14, 0, 0, 14), at(10, 0)));
    EXPECT_TRUE(mBus->mEvents.empty());
    // 14:30 of that date is after its start; 13:00 of that date is not.
    endEdit()->setTime(QTime(14, 30));
    EXPECT_EQ(mBus->mBounds, (QList<QPair<int, QTime>>{{1, QTime(14, 30)}}));
    endEdit()->setTime(QTime(13, 0));
    EXPECT_EQ(endEdit()->time(), QTime(10, 0));
}

TEST_F(StatisticOrders, EventOutsideAReplayEnds) {
    makeDialog(false);
    takeStretch();
    EXPECT_TRUE(mDialog->handleEvent(71, 607, 0, QStringLiteral("C1"), nullptr));
    EXPECT_TRUE(mHost.mFormulas.mQuoteRequests.empty());
}

class StatisticTransactions : public tests::StatisticFixture {
protected:
    StatisticTransactions() {
        mDialog->setStock(QStringLiteral("SH600000"), true);
        setRange(at(9, 30), at(10, 0));
    }
    QStringList times() const {
        QStringList found;
        for (int row = 0; row < plate()->rowCount(); ++row) {
            found.append(plate()->rowTexts(row)[0]);
        }
        return found;
    }
};

TEST_F(StatisticTransactions, AnswerIsListed) {
    answerQuotes({transaction(at(9, 31), 10.01), transaction(at(9, 45, 7), 9.99)});
    EXPECT_EQ(times(), (QStringList{QStringLiteral("09:31:00"), QStringLiteral("09:45:07")}));
}

TEST_F(StatisticTransactions, EmptyAnswerIsDropped) {
    answerQuotes({transaction(at(9, 31), 10.01)});
    answerQuotes({});
    EXPECT_EQ(plate()->rowCount(), 1);
}

TEST_F(StatisticTransactions, AnswerForAStockThatWasLeftChangesNothing) {
    mHost.mStocks.add("SZ", "000001");
    mDialog->setStock(QStringLiteral("SZ000001"), false);
    answerQuotes({transaction(at(9, 31), 10.01)}, 1);
    EXPECT_EQ(plate()->rowCount(), 0);
    answerQuotes({transaction(at(9, 32), 20.01)});
    answerQuotes({transaction(at(9, 31), 10.01), transaction(at(9, 33), 10.01)}, 1);
    EXPECT_EQ(times(), QStringList{QStringLiteral("09:32:00")});
}

TEST_F(StatisticTransactions, AnswerAfterTheDialogHasGoneIsDropped) {
    const auto callback = mHost.mFormulas.mQuoteRequests.back().onQuotes;
    std::thread([&] { callback(0, 0, {transaction(at(9, 31), 10.01)}, QString()); }).join();
    mDialog.reset();
    callback(0, 0, {transaction(at(9, 31), 10.01)}, QString());
    QCoreApplication::processEvents();
}

TEST_F(StatisticTransactions, AnswerOnAThreadOfTheServiceIsListed) {
    const auto callback = mHost.mFormulas.mQuoteRequests.back().onQuotes;
    std::thread([&] { callback(0, 0, {transaction(at(9, 31), 10.01)}, QString()); }).join();
    QTRY_COMPARE(plate()->rowCount(), 1);
}

TEST_F(StatisticTransactions, OtherStretchKeepsNothingThatLiesOutside) {
    answerQuotes({transaction(at(9, 31), 10.01), transaction(at(9, 45), 9.99)});
    setRange(at(9, 40), at(10, 0));
    EXPECT_EQ(times(), QStringList{QStringLiteral("09:45:00")});
    setRange(at(13, 0), at(14, 0)); // perhaps without any transaction, of which no answer would tell
    EXPECT_EQ(plate()->rowCount(), 0);
}

} // namespace
