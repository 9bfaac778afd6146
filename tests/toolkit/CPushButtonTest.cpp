#include "host/toolkit/CPushButton.h"

#include "host/toolkit/CFrameSplitterLine.h"
#include "host/toolkit/CHighlightWidget.h"
#include "tests/chartview/ChartFixture.h"

#include <QtTest>

using GZ::CPushButton;

namespace {

class CPushButtonTest : public tests::ChartFixture {
protected:
    /// The button that runs a model.
    CPushButton *makeRunButton() {
        auto *button = new CPushButton(QStringLiteral("img_btn_ok"), 1024, 3, 64, 3, 18, mKeeper.get());
        button->setText(QStringLiteral("运行模型"));
        button->setFontKey(QStringLiteral("fnt_default_small_heavy"));
        button->setFixedSize(50, 20);
        mKeeper->resize(200, 100);
        mKeeper->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        return button;
    }
};

TEST_F(CPushButtonTest, ClickTravelsUpAsEventFiveWithTheId) {
    CPushButton *button = makeRunButton();
    EXPECT_EQ(button->id(), 1024);
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_EQ(mKeeper->mEvents.size(), 1u);
    const tests::Event event = mKeeper->mEvents[0];
    EXPECT_EQ(event.number, 5);
    EXPECT_EQ(event.first, 1024);
    EXPECT_EQ(event.second, 0);
    EXPECT_EQ(event.text, QString());
    EXPECT_EQ(event.data, nullptr);
}

TEST_F(CPushButtonTest, CheckedStateIsTheValue) {
    CPushButton *button = makeRunButton();
    button->setCheckable(true);
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_EQ(mKeeper->of(5).size(), 2u);
    EXPECT_EQ(mKeeper->of(5)[0].second, 1);
    EXPECT_EQ(mKeeper->of(5)[1].second, 0);
}

TEST_F(CPushButtonTest, DisabledButtonDeliversNothing) {
    CPushButton *button = makeRunButton();
    button->setEnabled(false);
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mousePress(button, Qt::LeftButton);
    QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, QPoint(-5, -5));
    EXPECT_TRUE(mKeeper->mEvents.empty());
}

TEST_F(CPushButtonTest, ImageIsStretchedBetweenItsBorders) {
    CPushButton *button = makeRunButton();
    button->setText(QString());
    for (const QSize size : {QSize(50, 20), QSize(200, 60)}) {
        button->setFixedSize(size);
        const QImage drawn = painted(*button);
        QImage image(67, 21, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        QPainter(&image).drawPixmap(0, 0, GZ::CUiResource::instance().getPixmap(QStringLiteral("img_btn_ok")));
        // The borders keep their pixels: the edge of the frame, a corner, the middle of the right edge.
        EXPECT_EQ(drawn.pixelColor(size.width() / 2, 0), image.pixelColor(33, 0));
        EXPECT_EQ(drawn.pixelColor(1, 1), image.pixelColor(1, 1));
        EXPECT_EQ(drawn.pixelColor(size.width() - 2, 1), image.pixelColor(65, 1));
        EXPECT_EQ(drawn.pixelColor(size.width() - 2, size.height() - 2), image.pixelColor(65, 19));
    }
}

TEST_F(CPushButtonTest, SmallImageStandsInTheMiddleAndGivesTheSize) {
    CPushButton button(QStringLiteral("img_sys_btn_min"), 20);
    EXPECT_EQ(button.sizeHint(), QSize(16, 16));
    EXPECT_EQ(button.size(), QSize(16, 16));
    button.setAutoRaise(true);
    button.resize(26, 26);
    const QImage drawn = painted(button);
    // The bar of the image, at (3, 11) of 10 by 2, moved by 5; around it there is no ground.
    EXPECT_EQ(drawn.pixelColor(5 + 4, 5 + 11), QColor("#c8ccd4"));
    EXPECT_EQ(drawn.pixelColor(5 + 4, 5 + 9), QColor(Qt::magenta));
    EXPECT_EQ(drawn.pixelColor(1, 1), QColor(Qt::magenta));
}

TEST_F(CPushButtonTest, FollowsTheTheme) {
    CPushButton button(QStringLiteral("img_title_close"), 100);
    button.setAutoRaise(true);
    const QImage dark = painted(button);
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    EXPECT_NE(painted(button), dark);
}

TEST_F(CPushButtonTest, HighlightFrameLeavesTheAxisStripsAndTheMouseAlone) {
    mKeeper->resize(200, 100);
    auto *pane = new QWidget(mKeeper.get());
    pane->resize(200, 100);
    auto *frame = new GZ::CHighlightWidget(mKeeper.get());
    frame->setGeometry(pane->geometry());
    frame->setLRMargin(50, 40);
    frame->raise();
    mKeeper->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    const QImage seen = mKeeper->grab().toImage();
    const QColor line = color("ic_clr_highlight_widget_frame");
    EXPECT_EQ(seen.pixelColor(50, 50), line);
    EXPECT_EQ(seen.pixelColor(159, 50), line);
    EXPECT_EQ(seen.pixelColor(100, 0), line);
    EXPECT_EQ(seen.pixelColor(100, 99), line);
    for (const QPoint outside :
         {QPoint(49, 50), QPoint(160, 50), QPoint(100, 50), QPoint(51, 1), QPoint(20, 0)}) {
        EXPECT_NE(seen.pixelColor(outside), line) << outside.x() << ' ' << outside.y();
    }
    EXPECT_EQ(mKeeper->childAt(100, 0), pane);
    EXPECT_EQ(mKeeper->childAt(50, 50), pane);
}

TEST_F(CPushButtonTest, HighlightFrameLeavesTheTitleAlone) {
    mKeeper->resize(200, 100);
    auto *frame = new GZ::CHighlightWidget(mKeeper.get());
    frame->setGeometry(0, 0, 200, 100);
    frame->setLRMargin(50, 40);
    frame->setTopMargin(16);
    mKeeper->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    const QImage seen = mKeeper->grab().toImage();
    const QColor line = color("ic_clr_highlight_widget_frame");
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 200; ++x) {
            ASSERT_NE(seen.pixelColor(x, y), line) << x << ' ' << y;
        }
    }
    EXPECT_EQ(seen.pixelColor(100, 16), line);
    EXPECT_EQ(seen.pixelColor(50, 17), line);
    EXPECT_EQ(seen.pixelColor(159, 99), line);
}

TEST_F(CPushButtonTest, HighlightFrameWithoutRoomShowsNothing) {
    GZ::CHighlightWidget frame;
    frame.setLRMargin(50, 50);
    frame.resize(60, 30);
    const QImage seen = painted(frame);
    const QColor line = color("ic_clr_highlight_widget_frame");
    for (int x = 0; x < 60; ++x) {
        EXPECT_NE(seen.pixelColor(x, 0), line);
        EXPECT_NE(seen.pixelColor(x, 15), line);
    }
    frame.setLRMargin(-5, -5);
    EXPECT_EQ(painted(frame).pixelColor(0, 15), line);
}

TEST_F(CPushButtonTest, SplitterLineHasOneColourAndAFixedThickness) {
    GZ::CFrameSplitterLine line(QStringLiteral("ic_clr_concise_mainwindow_split_background"), 1);
    line.resize(100, 40);
    EXPECT_EQ(line.height(), 1);
    EXPECT_EQ(line.width(), 100);
    EXPECT_EQ(painted(line).pixelColor(50, 0), color("ic_clr_concise_mainwindow_split_background"));
    GZ::CFrameSplitterLine upright(QStringLiteral("ic_clr_concise_mainwindow_split_background"), 2, nullptr,
                                   Qt::Vertical);
    upright.resize(100, 40);
    EXPECT_EQ(upright.width(), 2);
    EXPECT_EQ(upright.height(), 40);
}

} // namespace
