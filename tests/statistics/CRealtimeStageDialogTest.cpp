#include "tests/statistics/StatisticFixture.h"

#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CSimpleTextWidget.h"

using namespace TC;

namespace {

class StageDialog : public tests::StatisticFixture {
protected:
    StageDialog() : mStage(std::make_unique<CRealtimeStageDialog>(mBus.get())) {
        mStage->setRange(static_cast<quint64>(at(9, 30)), static_cast<quint64>(at(10, 0)), 0, 0);
    }
    ~StageDialog() override { mStage.reset(); }

    QTimeEdit *edit(int number) const { return mStage->findChildren<QTimeEdit *>().value(number); }
    GZ::CRadioButton *radio(int id) const {
        for (GZ::CRadioButton *found : mStage->findChildren<GZ::CRadioButton *>()) {
            if (found->id() == id) {
                return found;
            }
        }
        return nullptr;
    }
    GZ::CPushButton *pushButton(int id) const {
        for (GZ::CPushButton *found : mStage->findChildren<GZ::CPushButton *>()) {
            if (found->id() == id) {
                return found;
            }
        }
        return nullptr;
    }
    /// Runs the dialog; `act` works on it when it is open.
    int run(const std::function<void()> &act) {
        QTimer::singleShot(0, mStage.get(), act);
        return mStage->exec();
    }
    QString lastText() const {
        return mBus->mEvents.empty() ? QStringLiteral("none") : mBus->mEvents.back().text;
    }
    /// The text of 09:30 to 10:00 with these last fields.
    static QString textOf(const QString &rest) {
        return QStringLiteral("%1,%2,%3").arg(at(9, 30)).arg(at(10, 0)).arg(rest);
    }
    QRect placeOf(const QWidget *widget) const {
        return {widget->mapTo(mStage.get(), QPoint()), widget->size()};
    }

    std::unique_ptr<CRealtimeStageDialog> mStage;
};

TEST_F(StageDialog, ConfirmedUnchangedItSendsCriterionFour) {
    EXPECT_EQ(run([&] { QTest::mouseClick(pushButton(702), Qt::LeftButton); }), 0);
    ASSERT_EQ(numbers(), std::vector<int>{3180});
    EXPECT_EQ(lastText(), textOf(QStringLiteral("0,0,4,阶段涨幅")));
    EXPECT_EQ(mBus->mEvents[0].first, 0);
    EXPECT_EQ(mBus->mEvents[0].second, 0);
    EXPECT_EQ(mBus->mEvents[0].data, nullptr);
}

TEST_F(StageDialog, EveryCriterionIsSentWithItsNumberAndItsWords) {
    const QStringList words = {QStringLiteral("阶段最高"),   QStringLiteral("阶段最低"),
                               QStringLiteral("阶段成交量"), QStringLiteral("阶段涨跌"),
                               QStringLiteral("阶段涨幅"),   QStringLiteral("阶段成交额"),
                               QStringLiteral("阶段振幅"),   QStringLiteral("阶段平均价")};
    for (int id = 0; id < words.size(); ++id) {
        ASSERT_TRUE(radio(id));
        QTest::mouseClick(radio(id), Qt::LeftButton, Qt::NoModifier, QPoint(8, radio(id)->height() / 2));
        mStage->handleEvent(5, 702, 0, QString(), nullptr);
        EXPECT_EQ(lastText(), textOf(QStringLiteral("0,0,%1,%2").arg(id).arg(words[id])));
    }
}

TEST_F(StageDialog, TypeAndParameterAreHandedOn) {
    mStage->setRange(static_cast<quint64>(at(9, 30)), static_cast<quint64>(at(10, 0)), 7,
                     18446744073709551615ull);
    mStage->handleEvent(5, 702, 0, QString(), nullptr);
    EXPECT_EQ(lastText(), textOf(QStringLiteral("7,18446744073709551615,4,阶段涨幅")));
}

TEST_F(StageDialog, EditsMeanTheDateOfTheStart) {
    mStage->setRange(static_cast<quint64>(at(9, 30, 0, 14)), static_cast<quint64>(at(10, 0)), 0, 0);
    EXPECT_EQ(edit(0)->time(), QTime(9, 30));
    EXPECT_EQ(edit(1)->time(), QTime(10, 0));
    mStage->handleEvent(5, 702, 0, QString(), nullptr);
    EXPECT_EQ(lastText().section(QLatin1Char(','), 0, 1),
              QStringLiteral("%1,%2").arg(at(9, 30, 0, 14)).arg(at(10, 0, 0, 14)));
}

TEST_F(StageDialog, StartAfterTheEndIsTheHostsToJudge) {
    edit(0)->setTime(QTime(14, 0));
    edit(1)->setTime(QTime(13, 0));
    mStage->handleEvent(5, 702, 0, QString(), nullptr);
    EXPECT_EQ(lastText().section(QLatin1Char(','), 0, 1),
              QStringLiteral("%1,%2").arg(at(14, 0)).arg(at(13, 0)));
}

TEST_F(StageDialog, NoCheckedCriterionIsTheFirstWithoutWords) {
    radio(4)->setAutoExclusive(false);
    radio(4)->setChecked(false);
    mStage->handleEvent(5, 702, 0, QString(), nullptr);
    EXPECT_EQ(lastText(), textOf(QStringLiteral("0,0,0,")));
}

TEST_F(StageDialog, LastOfSeveralCheckedCriteriaWins) {
    for (const int id : {1, 4, 6}) {
        radio(id)->setAutoExclusive(false);
    }
    for (const int id : {1, 4, 6}) {
        radio(id)->setChecked(true);
    }
    mStage->handleEvent(5, 702, 0, QString(), nullptr);
    EXPECT_EQ(lastText(), textOf(QStringLiteral("0,0,6,阶段振幅")));
}

TEST_F(StageDialog, ChosenCriterionStaysAndTimesAreRenewed) {
    radio(1)->setChecked(true);
    edit(0)->setTime(QTime(11, 0));
    mStage->setRange(static_cast<quint64>(at(9, 30)), static_cast<quint64>(at(10, 0)), 0, 0);
    mStage->handleEvent(5, 702, 0, QString(), nullptr);
    EXPECT_EQ(lastText(), textOf(QStringLiteral("0,0,1,阶段最低")));
}

TEST_F(StageDialog, CloseDeliversNothingAndIsNoConfirmation) {
    EXPECT_EQ(run([&] { QTest::mouseClick(pushButton(703), Qt::LeftButton); }), 101);
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StageDialog, EscapeAndTheTitleButtonAreNoConfirmation) {
    EXPECT_NE(run([&] { QTest::keyClick(mStage.get(), Qt::Key_Escape); }), 0);
    EXPECT_NE(run([&] { QTest::mouseClick(mStage->titleButton(), Qt::LeftButton); }), 0);
    EXPECT_NE(run([&] { mStage->close(); }), 0);
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StageDialog, OtherEventsGoUp) {
    mStage->handleEvent(5, 704, 1, QStringLiteral("x"), nullptr);
    mStage->handleEvent(93, 2, 1, QString(), nullptr);
    EXPECT_EQ(numbers(), (std::vector<int>{5, 93}));
}

TEST_F(StageDialog, HostMayEndTheDialogWithWhatItHears) {
    mBus->mOnPayload = [this](int) { mStage.reset(); };
    EXPECT_TRUE(mStage->handleEvent(5, 702, 0, QString(), nullptr));
    EXPECT_FALSE(mStage);
}

TEST_F(StageDialog, CriteriaStandInThreeRows) {
    EXPECT_EQ(mStage->size(), QSize(380, 302));
    EXPECT_EQ(mStage->minimumSize(), QSize(380, 302));
    EXPECT_EQ(mStage->windowTitle(), QStringLiteral("阶段排序"));
    mStage->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(mStage.get()));
    const auto *box = mStage->findChild<GZ::CGroupBox *>();
    EXPECT_EQ(box->title(), QStringLiteral("阶段排序"));
    EXPECT_EQ(box->focusPolicy(), Qt::NoFocus);
    for (const auto &row : std::vector<std::vector<int>>{{0, 1, 2}, {3, 4, 5}, {6, 7}}) {
        for (size_t i = 1; i < row.size(); ++i) {
            EXPECT_EQ(placeOf(radio(row[i])).y(), placeOf(radio(row[0])).y());
            EXPECT_GT(placeOf(radio(row[i])).x(), placeOf(radio(row[i - 1])).right());
        }
    }
    EXPECT_GT(placeOf(radio(3)).y(), placeOf(radio(0)).bottom());
    EXPECT_GT(placeOf(radio(6)).y(), placeOf(radio(3)).bottom());
    EXPECT_FALSE(radio(7)->visibleRegion().isEmpty());
}

TEST_F(StageDialog, ButtonsStandAtTheRightBelow) {
    mStage->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(mStage.get()));
    const QRect ok = placeOf(pushButton(702));
    const QRect close = placeOf(pushButton(703));
    EXPECT_EQ(pushButton(702)->text(), QStringLiteral("确定"));
    EXPECT_EQ(pushButton(703)->text(), QStringLiteral("关闭"));
    EXPECT_EQ(ok.size(), QSize(65, 21));
    EXPECT_EQ(close.size(), QSize(65, 21));
    EXPECT_EQ(close.x() - (ok.x() + 65), 10);
    const QRect inner = placeOf(mStage->innerWidget());
    EXPECT_EQ(inner.x() + inner.width() - (close.x() + 65), 10);
    EXPECT_EQ(inner.y() + inner.height(), close.y() + 21);
}

TEST_F(StageDialog, TimesShareTheWidthAroundADash) {
    mStage->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(mStage.get()));
    EXPECT_LE(qAbs(edit(0)->width() - edit(1)->width()), 1);
    const auto *dash = mStage->findChild<GZ::CSimpleTextWidget *>();
    EXPECT_EQ(dash->text(), QStringLiteral("-"));
    const QRect inner = placeOf(mStage->innerWidget());
    EXPECT_EQ(placeOf(edit(0)).left(), inner.left());
    EXPECT_EQ(placeOf(edit(1)).right(), inner.right());
    EXPECT_EQ(placeOf(edit(0)).top(), inner.top());
}

} // namespace
