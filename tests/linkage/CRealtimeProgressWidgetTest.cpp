#include "linkage/CRealtimeProgressWidget.h"

#include "tests/chartview/ChartFixture.h"

#include <QtTest>

using TC::CRealtimeProgressWidget;

namespace {

/// A cell of 120 by 32 pixels: its last column is 119, its last row 31.
class CRealtimeProgressWidgetTest : public tests::ChartFixture {
protected:
    CRealtimeProgressWidgetTest() { mProgress.resize(120, 32); }
    /// The first and last column and row of the bar's colour; null when there is none.
    QRect bar() {
        const QImage image = painted(mProgress);
        QRect found;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == color("clr_task_progress_background")) {
                    found |= QRect(x, y, 1, 1);
                }
            }
        }
        return found;
    }
    /// The widget as it has to be, but for its bar.
    QImage textAlone(const QString &text) const {
        QImage image(120, 32, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        const QFont font = QFont(QStringLiteral("宋体"), -1, 75).resolve(mProgress.font());
        painter.setFont(font);
        painter.setPen(color("clr_text_default"));
        painter.drawText((119 - QFontMetrics(font).horizontalAdvance(text)) / 2, 22, text);
        return image;
    }
    CRealtimeProgressWidget mProgress;
};

TEST_F(CRealtimeProgressWidgetTest, BarOfOneOfThreeIsFortyPixelsWide) {
    mProgress.setProgress(3, 1);
    EXPECT_EQ(bar(), QRect(0, 24, 40, 7)); // 119 / 3 = 39.67
}

TEST_F(CRealtimeProgressWidgetTest, WidthIsRoundedToTheNearestPixelOfTheLastColumn) {
    const struct {
        int total;
        int finished;
        int width;
    } cases[] = {{3, 0, 0},   {3, 2, 79},  {3, 3, 119},         {238, 1, 1},
                 {239, 1, 0}, {3, 4, 120}, {1, 2000000000, 120}};
    for (const auto &one : cases) {
        mProgress.setProgress(one.total, one.finished);
        EXPECT_EQ(bar().width(), one.width) << one.finished << " of " << one.total;
    }
}

TEST_F(CRealtimeProgressWidgetTest, NothingOfNothingIsAFullBarWithoutText) {
    mProgress.setProgress(0, 0);
    EXPECT_EQ(bar(), QRect(0, 24, 120, 7));
    EXPECT_EQ(mProgress.text(), QString());
    EXPECT_EQ(painted(mProgress).copy(0, 0, 120, 24), textAlone({}).copy(0, 0, 120, 24));
}

TEST_F(CRealtimeProgressWidgetTest, TextStandsInTheMiddleOverTheBarAndTheRestStaysUnpainted) {
    mProgress.setProgress(300, 100);
    const QImage image = painted(mProgress);
    const QImage text = textAlone(QStringLiteral("100/300"));
    EXPECT_EQ(image.copy(0, 0, 120, 24), text.copy(0, 0, 120, 24));
    EXPECT_NE(text, textAlone({})); // there is a text at all
    EXPECT_EQ(image.copy(40, 24, 80, 8), text.copy(40, 24, 80, 8));
    EXPECT_EQ(image.copy(0, 31, 120, 1), text.copy(0, 31, 120, 1));
}

TEST_F(CRealtimeProgressWidgetTest, TextIsAsFarFromTheLeftAsFromTheRight) {
    mProgress.setProgress(60000, 59600);
    const QImage image = painted(mProgress).copy(0, 0, 120, 23);
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0)) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    EXPECT_GT(ink.width(), 40);
    EXPECT_NEAR(ink.left(), 119 - ink.right(), 4); // glyphs keep some room at either end
}

TEST_F(CRealtimeProgressWidgetTest, IsNamedAndFollowsTheTheme) {
    EXPECT_EQ(mProgress.objectName(), QStringLiteral("realtime_progress_widget"));
    mProgress.setProgress(3, 1);
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    EXPECT_EQ(bar(), QRect(0, 24, 40, 7));
}

TEST_F(CRealtimeProgressWidgetTest, NegativeQuantitiesPaintNoBar) {
    mProgress.setProgress(-5, 3);
    EXPECT_TRUE(bar().isNull());
}

} // namespace
