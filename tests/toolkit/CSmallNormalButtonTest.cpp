#include "host/toolkit/CSmallNormalButton.h"

#include "host/toolkit/CSimpleTextWidget.h"
#include "tests/chartview/ChartFixture.h"
#include "tests/support/Golden.h"

#include <QtTest>

using GZ::CSimpleTextWidget;
using GZ::CSmallNormalButton;

namespace {

class CSmallNormalButtonTest : public tests::ChartFixture {
protected:
    CSmallNormalButtonTest() {
        mButton = new CSmallNormalButton(14, 0, 3, mKeeper.get());
        mButton->setText(QStringLiteral("全选"));
        mButton->setGeometry(10, 10, 40, 22);
        mKeeper->resize(100, 60);
    }
    void show() {
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        QCoreApplication::processEvents();
    }
    /// Whether a colour stands on the screen in the middle rows of a widget, where its text is.
    bool hasColor(const QWidget *widget, const QColor &wanted) const {
        const QImage screen = tests::onScreen(*mKeeper);
        for (int x = widget->x() + 3; x < widget->geometry().right() - 3; ++x) {
            for (int y = widget->y() + 4; y < widget->geometry().bottom() - 4; ++y) {
                if (screen.pixelColor(x, y) == wanted) {
                    return true;
                }
            }
        }
        return false;
    }
    CSmallNormalButton *mButton;
};

TEST_F(CSmallNormalButtonTest, ClickTravelsUpAsEventFiveWithTheIdAndWhetherItIsChecked) {
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::mouseClick(mButton, Qt::LeftButton);
    mButton->setCheckable(true);
    QTest::mouseClick(mButton, Qt::LeftButton);
    ASSERT_EQ(mKeeper->of(5).size(), 2u);
    EXPECT_EQ(mKeeper->of(5)[0].first, 14);
    EXPECT_EQ(mKeeper->of(5)[0].second, 0);
    EXPECT_EQ(mKeeper->of(5)[1].second, 1);
    mButton->setEnabled(false);
    QTest::mouseClick(mButton, Qt::LeftButton);
    EXPECT_EQ(mKeeper->of(5).size(), 2u);
}

TEST_F(CSmallNormalButtonTest, TextHasTheColourOfTheStateOnTheScreen) {
    mButton->setTextColorKeys(QStringLiteral("ic_clr_index_line_2"), QStringLiteral("ic_clr_index_line_2"),
                              QStringLiteral("ic_clr_index_line_2"), QStringLiteral("ic_clr_index_line_6"));
    mButton->setText(QStringLiteral("■"));
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_TRUE(hasColor(mButton, color("ic_clr_index_line_2")));
    mButton->setEnabled(false);
    QCoreApplication::processEvents();
    EXPECT_FALSE(hasColor(mButton, color("ic_clr_index_line_2")));
    EXPECT_TRUE(hasColor(mButton, color("ic_clr_index_line_6")));
}

TEST_F(CSmallNormalButtonTest, GroundHasRoundCornersAndALineWhereItIsAskedFor) {
    mButton->setText({});
    const QColor ground = color("tc_clr_conciseStyle_depth_bottom_group_btn_nomal");
    EXPECT_EQ(painted(*mButton).pixelColor(20, 10), ground);
    EXPECT_EQ(painted(*mButton).pixelColor(0, 10), ground);
    EXPECT_GT(painted(*mButton).pixelColor(0, 0).red(), 240); // hardly covered
    CSmallNormalButton lined(1, 1, 0);
    lined.resize(40, 22);
    EXPECT_EQ(painted(lined).pixelColor(0, 10), color("clr_edit_border"));
    EXPECT_EQ(painted(lined).pixelColor(1, 10), ground);
}

TEST_F(CSmallNormalButtonTest, IsNoDefaultButtonOfADialog) {
    EXPECT_FALSE(mButton->autoDefault());
}

TEST_F(CSmallNormalButtonTest, SimpleTextIsAsWideAsItsTextAndFollowsTheTheme) {
    CSimpleTextWidget text(QStringLiteral("以"));
    const int one = text.sizeHint().width();
    text.setText(QStringLiteral("以以"));
    EXPECT_EQ(text.sizeHint().width(), 2 * one);
    EXPECT_EQ(text.property("text").toString(), QStringLiteral("以以"));

    auto *shown = new CSimpleTextWidget(QStringLiteral("■"), mKeeper.get());
    shown->setColorKey(QStringLiteral("ic_clr_index_default_rise"));
    shown->setGeometry(60, 10, 30, 22);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_TRUE(hasColor(shown, color("ic_clr_index_default_rise")));
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(hasColor(shown, color("ic_clr_index_default_rise")));
}

} // namespace
