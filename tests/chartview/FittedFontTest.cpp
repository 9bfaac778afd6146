#include "chartview/FittedFont.h"

#include <QFontMetrics>

#include <gtest/gtest.h>

namespace {

QFont fontOf(int pixels) {
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(pixels);
    return font;
}

TEST(FittedFont, TextWithRoomKeepsItsFont) {
    EXPECT_EQ(TC::fittedFont(fontOf(12), {QStringLiteral("9.84"), QStringLiteral("115.74")}, 48), fontOf(12));
    EXPECT_EQ(TC::fittedFont(fontOf(12), {}, 0), fontOf(12));
}

TEST(FittedFont, WidestTextDecides) {
    const QString wide = QStringLiteral("-1234.57万");
    ASSERT_GT(QFontMetrics(fontOf(12)).horizontalAdvance(wide), 48);
    const QFont fitted = TC::fittedFont(fontOf(12), {QStringLiteral("1"), wide}, 48);
    EXPECT_LT(fitted.pixelSize(), 12);
    EXPECT_LE(QFontMetrics(fitted).horizontalAdvance(wide), 48);
    EXPECT_GT(QFontMetrics(fontOf(fitted.pixelSize() + 1)).horizontalAdvance(wide), 48);
}

TEST(FittedFont, NothingIsSmallerThanNinePixels) {
    EXPECT_EQ(TC::fittedFont(fontOf(12), {QString(100, 'x')}, 48).pixelSize(), 9);
    EXPECT_EQ(TC::fittedFont(fontOf(8), {QString(100, 'x')}, 48).pixelSize(), 8);
}

} // namespace
