#include "host/toolkit/CAutoExpandToolBar.h"

#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "tests/chartview/ChartFixture.h"

#include <QPointer>
#include <QtTest>

using namespace GZ;

namespace {

const QString kGroundImage = QStringLiteral("tc_img_op_hedge_type_bg");

class CAutoExpandToolBarTest : public tests::ChartFixture {
protected:
    void showAll() {
        mKeeper->resize(300, 100);
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    }
};

TEST_F(CAutoExpandToolBarTest, ControlsStandFromTheLeftAndGiveTheHeight) {
    auto *bar = new CAutoExpandToolBar(mKeeper.get());
    bar->setBackground(kGroundImage, 2, 8, 2, 8, -1);
    bar->setMargin(2);
    auto *first = new CSmallNoNormalButton(QStringLiteral("全选"), 14);
    auto *second = new CSmallNoNormalButton(QStringLiteral("反选"), 15);
    for (CSmallNoNormalButton *button : {first, second}) {
        button->setFixedSize(40, 22);
        bar->addFixedWidget(button, CWidgetList::eAnchorNone, false);
    }
    EXPECT_EQ(bar->sizeHint(), QSize(84, 26));
    bar->resize(200, 26);
    bar->updateWidgetLength();
    EXPECT_EQ(first->geometry(), QRect(2, 2, 40, 22));
    EXPECT_EQ(second->geometry(), QRect(42, 2, 40, 22));
    bar->setBackground(kGroundImage, 2, 8, 2, 8, 30);
    EXPECT_EQ(bar->minimumHeight(), 30);
    EXPECT_EQ(bar->maximumHeight(), 30);
}

TEST_F(CAutoExpandToolBarTest, GroundKeepsItsBordersAtEverySizeAndFollowsTheTheme) {
    CAutoExpandToolBar bar;
    bar.resize(200, 40);
    EXPECT_EQ(painted(bar).pixelColor(100, 20), QColor(Qt::magenta)) << "no ground";
    bar.setBackground(kGroundImage, 2, 8, 2, 8, -1);
    for (const char *theme : {"dark", "light"}) {
        CUiResource::instance().setTheme(QString::fromLatin1(theme));
        const QImage image = CUiResource::instance().getPixmap(kGroundImage).toImage();
        const QImage drawn = painted(bar);
        EXPECT_EQ(drawn.pixelColor(100, 20), image.pixelColor(5, 5)) << theme;
        EXPECT_EQ(drawn.pixelColor(100, 0), image.pixelColor(5, 0)) << theme << ": the frame";
        EXPECT_EQ(drawn.pixelColor(199, 20), image.pixelColor(9, 5)) << theme;
    }
}

TEST_F(CAutoExpandToolBarTest, SpaceIsFixedAndStretchTakesTheRest) {
    CWidgetList list(Qt::Horizontal);
    auto *first = new CSmallNoNormalButton(QString(), 1);
    auto *last = new CSmallNoNormalButton(QString(), 2);
    first->setFixedSize(30, 20);
    last->setFixedSize(30, 20);
    list.addSpace(10);
    list.addFixedWidget(first, CWidgetList::eAnchorNone, false);
    list.addStretch();
    list.addFixedWidget(last, CWidgetList::eAnchorNone, false);
    list.resize(200, 20);
    list.updateWidgetLength();
    EXPECT_EQ(first->x(), 10);
    EXPECT_EQ(last->x(), 170);
    CWidgetList column(Qt::Vertical);
    auto *row = new CSmallNoNormalButton(QString(), 1);
    row->setFixedSize(30, 20);
    column.addSpace(7);
    column.addFixedWidget(row, CWidgetList::eAnchorNone, false);
    column.resize(50, 100);
    column.updateWidgetLength();
    EXPECT_EQ(row->y(), 7);
}

TEST_F(CAutoExpandToolBarTest, SmallButtonClicksAsEventFive) {
    auto *button = new CSmallNoNormalButton(QStringLiteral("导入委托"), 12, mKeeper.get());
    button->setFixedSize(90, 22);
    showAll();
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_EQ(mKeeper->mEvents.size(), 1u);
    EXPECT_EQ(mKeeper->mEvents[0].number, 5);
    EXPECT_EQ(mKeeper->mEvents[0].first, 12);
    EXPECT_EQ(mKeeper->mEvents[0].second, 0);
    EXPECT_EQ(mKeeper->mEvents[0].text, QString());
    button->setEnabled(false);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(mKeeper->mEvents.size(), 1u);
    EXPECT_FALSE(button->autoDefault()) << "enter in a dialog presses it not";
}

TEST_F(CAutoExpandToolBarTest, SmallButtonHasAGroundOnlyUnderTheMouseAndPressed) {
    CSmallNoNormalButton button(QString(), 12);
    button.setFixedSize(90, 22);
    EXPECT_EQ(painted(button).pixelColor(10, 10), QColor(Qt::magenta));
    EXPECT_EQ(painted(button).pixelColor(0, 10), color("clr_pushbutton_group_border_new"));
    button.setAttribute(Qt::WA_UnderMouse);
    EXPECT_EQ(painted(button).pixelColor(10, 10), color("tc_clr_conciseStyle_depth_bottom_group_btn_hover"));
    button.setDown(true);
    EXPECT_EQ(painted(button).pixelColor(10, 10), color("tc_clr_conciseStyle_depth_bottom_group_btn_press"));
    button.setEnabled(false);
    EXPECT_EQ(painted(button).pixelColor(10, 10), QColor(Qt::magenta));
}

TEST_F(CAutoExpandToolBarTest, GroupBoxIsFilledByItsWidget) {
    CGroupBox group(QStringLiteral("资金账号"));
    EXPECT_EQ(group.title(), "资金账号");
    EXPECT_EQ(group.innerWidget(), nullptr);
    const QPointer<QWidget> first = new QWidget;
    group.setInnerWidget(first);
    group.setInnerWidget(first);
    EXPECT_EQ(group.innerWidget(), first);
    group.resize(230, 110);
    group.ensurePolished();
    group.show();
    EXPECT_GT(first->width(), 210);
    EXPECT_GT(first->height(), 70);
    auto *second = new QWidget;
    group.setInnerWidget(second);
    EXPECT_FALSE(first) << "it has gone";
    EXPECT_EQ(group.innerWidget(), second);
}

} // namespace
