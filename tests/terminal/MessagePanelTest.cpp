#include "terminal/app/MessagePanel.h"

#include "host/services/CHostClock.h"
#include "terminal/formula/ShortText.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace terminal;

namespace {

class MarketClock : public TC::CHostClock {
public:
    QDateTime currentDateTime() const override { return mNow; }
    QDateTime mNow{QDate(2026, 11, 20), QTime(10, 30), Qt::OffsetFromUTC, 28800};
};

class MessagePanelTest : public ::testing::Test {
protected:
    MessagePanelTest() : mBefore(TC::CSingletonT<TC::CHostClock>::install(&mClock)) { mWindow.show(); }
    ~MessagePanelTest() override { TC::CSingletonT<TC::CHostClock>::install(mBefore); }

    void tell(const QString &formula, int line, const QString &text) {
        mMessages.sink()({formula, line, text});
        QCoreApplication::processEvents();
    }
    QString row(int index) const {
        QStringList texts;
        for (int column = 0; column < 5; ++column) {
            texts << mPanel->rows()->topLevelItem(index)->text(column);
        }
        return texts.join('|');
    }
    void click(const char *name) {
        QTest::mouseClick(mPanel->findChild<QPushButton *>(QString::fromLatin1(name)), Qt::LeftButton);
    }
    int count() const { return mPanel->rows()->topLevelItemCount(); }

    MarketClock mClock;
    TC::CHostClock *mBefore;
    QWidget mWindow;
    FormulaMessages mMessages;
    MessagePanel *mPanel = new MessagePanel(mMessages, &mWindow);
};

} // namespace

TEST_F(MessagePanelTest, ItComesUpWithTheFirstError) {
    EXPECT_FALSE(mPanel->isVisible());
    tell("MACD", 7, "没有函数 EMAA");
    EXPECT_TRUE(mPanel->isVisible());
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(row(0), "11-20 10:30:00|MACD|7|没有函数 EMAA|");
}

TEST_F(MessagePanelTest, TheNewestStandsFirstAndAnErrorWithoutAPlaceHasNoLine) {
    tell("A", 1, "x");
    mClock.mNow = mClock.mNow.addSecs(5);
    tell("B", 0, "y");
    EXPECT_EQ(row(0), "11-20 10:30:05|B||y|");
    EXPECT_EQ(row(1), "11-20 10:30:00|A|1|x|");
}

TEST_F(MessagePanelTest, TheSameErrorCountsUpInOneRowAndComesToTheFront) {
    tell("A", 1, "x");
    tell("B", 2, "y");
    mClock.mNow = mClock.mNow.addSecs(60);
    tell("A", 1, "x");
    tell("A", 1, "x");
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(row(0), "11-20 10:31:00|A|1|x|×3");
    tell("A", 3, "x");
    EXPECT_EQ(count(), 3) << "another line is another error";
}

TEST_F(MessagePanelTest, AClosedPanelStaysClosedUntilAnErrorComesThatIsNotInIt) {
    tell("A", 1, "x");
    click("message_close");
    EXPECT_FALSE(mPanel->isVisible());
    tell("A", 1, "x");
    EXPECT_FALSE(mPanel->isVisible());
    tell("A", 2, "x");
    EXPECT_TRUE(mPanel->isVisible());
}

TEST_F(MessagePanelTest, ClearingEmptiesAndClosesIt) {
    tell("A", 1, "x");
    click("message_clear");
    EXPECT_FALSE(mPanel->isVisible());
    EXPECT_EQ(count(), 0);
    tell("A", 1, "x");
    EXPECT_TRUE(mPanel->isVisible());
    EXPECT_EQ(row(0), "11-20 10:30:00|A|1|x|") << "counts anew";
}

TEST_F(MessagePanelTest, OnlySoManyAreKeptTheOldestGo) {
    for (int i = 0; i <= FormulaMessages::kMost; ++i) {
        mMessages.sink()({"A", i, "x"});
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(count(), FormulaMessages::kMost);
    EXPECT_EQ(mMessages.messages().first().error.line, FormulaMessages::kMost);
    EXPECT_EQ(mMessages.messages().last().error.line, 1);
}

TEST_F(MessagePanelTest, ErrorsOfManyThreadsAreCountedAll) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this] {
            const FormulaErrorSink sink = mMessages.sink();
            for (int i = 0; i < 1000; ++i) {
                sink({"A", i % 2, "x"});
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    QCoreApplication::processEvents();
    ASSERT_EQ(count(), 2);
    EXPECT_EQ(mMessages.messages()[0].count + mMessages.messages()[1].count, 4000);
}

TEST_F(MessagePanelTest, ADoubleClickChoosesTheFormulaAndItsLine) {
    mWindow.resize(800, 300);
    mPanel->resize(800, mPanel->height());
    tell("A", 3, "x");
    QSignalSpy chosen(mPanel, &MessagePanel::formulaChosen);
    const QRect place = mPanel->rows()->visualItemRect(mPanel->rows()->topLevelItem(0));
    QTest::mouseClick(mPanel->rows()->viewport(), Qt::LeftButton, {}, place.center());
    QTest::mouseDClick(mPanel->rows()->viewport(), Qt::LeftButton, {}, place.center());
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0], (QVariantList{"A", 3}));
}

TEST_F(MessagePanelTest, AnErrorMayComeBeforeThereIsAClock) {
    TC::CSingletonT<TC::CHostClock>::install(nullptr);
    mMessages.sink()({"A", 1, "x"});
    TC::CSingletonT<TC::CHostClock>::install(&mClock);
    QCoreApplication::processEvents();
    EXPECT_EQ(row(0), "11-20 10:30:00|A|1|x|");
}

TEST_F(MessagePanelTest, ManyLongMessagesAreCutCountedAndForgotten) {
    const QString large(1 << 16, 'x');
    const FormulaErrorSink sink = mMessages.sink();
    for (int i = 0; i < 1000; ++i) {
        sink({large, 1, large + QString::number(i)});
        sink({"B", 2, QString::number(i) + large});
    }
    QCoreApplication::processEvents();
    ASSERT_EQ(mMessages.messages().size(), FormulaMessages::kMost);
    for (const FormulaMessage &message : mMessages.messages()) {
        EXPECT_EQ(message.error.text.size(), kLongestShortText + 1);
        EXPECT_LE(message.error.formula.size(), kLongestShortText + 1);
        EXPECT_EQ(message.count, message.error.line == 1 ? 1000 : 1) << "alike once they are cut";
    }
}
