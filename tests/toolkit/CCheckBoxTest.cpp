#include "host/toolkit/CCheckBox.h"

#include "host/toolkit/CRadioButton.h"
#include "tests/chartview/ChartFixture.h"

#include <QStyleOptionButton>
#include <QtTest>

using GZ::CCheckBox;
using GZ::CRadioButton;

namespace {

class CCheckBoxTest : public tests::ChartFixture {
protected:
    template <class Control> Control *place(Control *control, int y = 0) {
        control->setParent(mKeeper.get());
        control->setGeometry(0, y, 150, 25);
        control->show();
        return control;
    }
    void showAll() {
        mKeeper->resize(200, 100);
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    }
    static void click(QWidget *on) {
        QTest::mouseClick(on, Qt::LeftButton, Qt::NoModifier, QPoint(6, on->height() / 2));
    }
};

TEST_F(CCheckBoxTest, UsersToggleTravelsUpWithIdStateAndName) {
    CCheckBox *box = place(new CCheckBox(QStringLiteral("委托"), 3));
    box->setObjectName(QStringLiteral("some_table"));
    showAll();
    EXPECT_EQ(box->id(), 3);
    EXPECT_EQ(box->text(), "委托");
    click(box);
    EXPECT_TRUE(box->isChecked());
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_FALSE(box->isChecked());
    ASSERT_EQ(mKeeper->mEvents.size(), 2u);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(mKeeper->mEvents[i].number, 67);
        EXPECT_EQ(mKeeper->mEvents[i].first, 3);
        EXPECT_EQ(mKeeper->mEvents[i].second, 1 - i);
        EXPECT_EQ(mKeeper->mEvents[i].text, "some_table");
        EXPECT_EQ(mKeeper->mEvents[i].data, nullptr);
    }
}

TEST_F(CCheckBoxTest, CheckedByTheProgramItIsSilent) {
    CCheckBox *box = place(new CCheckBox(QString(), 3));
    showAll();
    box->setChecked(true);
    box->setChecked(false);
    EXPECT_TRUE(mKeeper->mEvents.empty());
}

TEST_F(CCheckBoxTest, HintHoldsTheTextAndNoMore) {
    CCheckBox *box = place(new CCheckBox(QStringLiteral("买卖额"), 6));
    box->resize(box->sizeHint());
    QStyleOptionButton option;
    option.initFrom(box);
    option.text = box->text();
    const QRect text = box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box);
    EXPECT_EQ(text.width(), box->fontMetrics().horizontalAdvance(box->text()));
    CCheckBox bare(QString(), 0);
    EXPECT_EQ(bare.sizeHint().width(), bare.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &bare));
}

TEST_F(CCheckBoxTest, PickedRadioButtonTravelsUpAndTheOthersAreSilent) {
    CRadioButton *first = place(new CRadioButton(QStringLiteral("全部"), 18));
    CRadioButton *second = place(new CRadioButton(QStringLiteral("部分"), 19), 30);
    second->setObjectName(QStringLiteral("part"));
    first->setChecked(true);
    showAll();
    EXPECT_TRUE(mKeeper->mEvents.empty());
    click(second);
    EXPECT_TRUE(second->isChecked());
    EXPECT_FALSE(first->isChecked());
    ASSERT_EQ(mKeeper->mEvents.size(), 1u);
    EXPECT_EQ(mKeeper->mEvents[0].number, 93);
    EXPECT_EQ(mKeeper->mEvents[0].first, 19);
    EXPECT_EQ(mKeeper->mEvents[0].second, 1);
    EXPECT_EQ(mKeeper->mEvents[0].text, "part");
}

} // namespace
