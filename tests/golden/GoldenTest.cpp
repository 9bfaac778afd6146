// The comparison of pictures itself: it has to fail when something is wrong.

#include "tests/support/Golden.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

using tests::compareImages;
using tests::GoldenDifference;
using tests::GoldenTolerance;

QImage plain(int width, int height, QRgb color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

TEST(GoldenTest, EqualPicturesAreAccepted) {
    const QImage image = plain(10, 10, qRgb(1, 2, 3));
    const GoldenDifference difference = compareImages(image, image, GoldenTolerance());
    EXPECT_TRUE(difference.accepted);
    EXPECT_EQ(difference.pixels, 0);
    EXPECT_EQ(difference.largest, 0);
}

TEST(GoldenTest, ADifferenceOfEightInAChannelIsTolerated) {
    EXPECT_TRUE(compareImages(plain(4, 4, qRgb(108, 0, 0)), plain(4, 4, qRgb(100, 0, 0)), {}).accepted);
    const GoldenDifference more = compareImages(plain(4, 4, qRgb(100, 0, 0)), plain(4, 4, qRgb(100, 9, 0)), {});
    EXPECT_FALSE(more.accepted);
    EXPECT_EQ(more.pixels, 16);
    EXPECT_EQ(more.largest, 9);
}

TEST(GoldenTest, OneWrongPixelOfASmallPictureFails) {
    QImage image = plain(40, 40, qRgb(0, 0, 0));
    image.setPixel(7, 9, qRgb(255, 255, 255));
    const GoldenDifference difference = compareImages(image, plain(40, 40, qRgb(0, 0, 0)), {});
    EXPECT_FALSE(difference.accepted);
    EXPECT_EQ(difference.pixels, 1);
    EXPECT_EQ(difference.picture.pixel(7, 9), qRgb(255, 0, 0));
    EXPECT_EQ(difference.picture.pixel(8, 9), qRgb(192, 192, 192));
}

TEST(GoldenTest, TwoPixelsInTenThousandAreTolerated) {
    QImage image = plain(100, 100, qRgb(0, 0, 0));
    image.setPixel(0, 0, qRgb(255, 255, 255));
    image.setPixel(99, 99, qRgb(255, 255, 255));
    EXPECT_TRUE(compareImages(image, plain(100, 100, qRgb(0, 0, 0)), {}).accepted);
    image.setPixel(50, 50, qRgb(255, 255, 255));
    EXPECT_FALSE(compareImages(image, plain(100, 100, qRgb(0, 0, 0)), {}).accepted);
}

TEST(GoldenTest, DifferentSizesAndNullPicturesFail) {
    EXPECT_FALSE(compareImages(plain(4, 4, 0), plain(4, 5, 0), {}).accepted);
    EXPECT_FALSE(compareImages(QImage(), QImage(), {}).accepted);
}

TEST(GoldenTest, AMissingPictureFailsAndKeepsTheActualOne) {
    if (qEnvironmentVariableIntValue("TIMESHARE_ACCEPT_GOLDEN") == 1) {
        GTEST_SKIP() << "every picture is accepted";
    }
    const QString kept = QStringLiteral(TIMESHARE_BINARY_DIR "/golden/never-accepted.actual.png");
    QFile::remove(kept);
    const ::testing::AssertionResult result =
        tests::matchesGolden(plain(3, 2, qRgb(9, 8, 7)), QStringLiteral("never-accepted"));
    EXPECT_FALSE(result);
    EXPECT_NE(std::string(result.message()).find(kept.toStdString()), std::string::npos);
    EXPECT_EQ(QImage(kept).size(), QSize(3, 2));
    EXPECT_EQ(QImage(kept).pixel(1, 1), qRgb(9, 8, 7));
}

TEST(GoldenTest, ADrawingAtRatioTwoHasFourTimesThePixels) {
    const QImage image = tests::rendered(
        QSize(6, 4), 2.0, Qt::black, [](QPainter &painter) { painter.fillRect(QRect(1, 1, 2, 1), Qt::white); });
    EXPECT_EQ(image.size(), QSize(12, 8));
    EXPECT_EQ(image.pixel(1, 2), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(2, 2), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(5, 3), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(6, 3), qRgb(0, 0, 0));
}

TEST(GoldenTest, AWidgetIsRenderedWithItsChildren) {
    QWidget parent;
    parent.resize(8, 8);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::blue);
    QWidget child(&parent);
    child.setAutoFillBackground(true);
    child.setPalette(palette);
    child.setGeometry(2, 2, 3, 3);
    const QImage image = tests::rendered(parent, 2.0);
    EXPECT_EQ(image.size(), QSize(16, 16));
    EXPECT_EQ(image.pixel(4, 4), qRgb(0, 0, 255));
    EXPECT_NE(image.pixel(3, 3), qRgb(0, 0, 255));
}

TEST(GoldenTest, NamesTellTheRatio) {
    EXPECT_EQ(tests::goldenName(QStringLiteral("line"), 1.0), QStringLiteral("line"));
    EXPECT_EQ(tests::goldenName(QStringLiteral("line"), 2.0), QStringLiteral("line@2x"));
}

TEST(GoldenTest, APixelHasALikeWhereItHasMovedByNoMoreThanTheReach) {
    QImage image = plain(40, 40, qRgb(0, 0, 0));
    QImage moved = image;
    image.setPixel(7, 9, qRgb(255, 0, 0));
    moved.setPixel(8, 10, qRgb(255, 0, 0));
    EXPECT_EQ(tests::pixelsWithoutLike(moved, image, 1), 0);
    moved.setPixel(8, 10, qRgb(255, 0, 65));
    EXPECT_EQ(tests::pixelsWithoutLike(moved, image, 1), 1);
    moved.setPixel(8, 10, qRgb(0, 0, 0));
    moved.setPixel(9, 9, qRgb(255, 0, 0));
    EXPECT_EQ(tests::pixelsWithoutLike(moved, image, 1), 1);
    EXPECT_EQ(tests::pixelsWithoutLike(moved, image, 2), 0);
    EXPECT_EQ(tests::pixelsWithoutLike(moved, plain(40, 41, 0), 2), 1600);
}

/// Pictures of Qt 6 on which a font of another height or weight moves more than texts; its README tells which and why.
bool isLaidOutOtherwise(const QString &name) {
    return name.contains(QRegularExpression(QStringLiteral("^(cross-line|dialog-ranking|dialog-tasks)-")));
}

TEST(GoldenTest, WhatQt6DrawsOtherwiseLiesWithinAPixelOfTheSharedPicture) {
    const QDir shared(QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/golden/images"));
    const QDir own(shared.filePath(QStringLiteral("qt6")));
    const QStringList names = own.entryList({QStringLiteral("*.png")});
    EXPECT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        const QImage actual(own.filePath(name));
        const QImage expected(shared.filePath(name));
        EXPECT_EQ(actual.size(), expected.size()) << name.toStdString();
        EXPECT_FALSE(compareImages(actual, expected, {}).accepted) << name.toStdString() << " is not needed";
        if (!isLaidOutOtherwise(name)) {
            const int pixels =
                tests::pixelsWithoutLike(actual, expected, name.contains(QLatin1Char('@')) ? 2 : 1);
            EXPECT_LE(pixels, GoldenTolerance().share * actual.width() * actual.height()) << name.toStdString();
        }
    }
}

} // namespace
