#include "chartdata/PanePixmap.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <random>

namespace TC {
namespace {

TEST(PanePixmap, HasTheDevicePixelsOfThePane) {
    const QPixmap pixmap = panePixmap(QSize(101, 50), 1.5);
    EXPECT_EQ(pixmap.size(), QSize(152, 75)); // 151.5 rounds up
    EXPECT_EQ(pixmap.devicePixelRatio(), 1.5);
}

TEST(PanePixmap, IsNullWithoutRoomAndBeyondAllReason) {
    EXPECT_TRUE(panePixmap(QSize(0, 50), 1.0).isNull());
    EXPECT_TRUE(panePixmap(QSize(50, -1), 1.0).isNull());
    EXPECT_TRUE(panePixmap(QSize(9000, 10), 2.0).isNull());
    EXPECT_TRUE(panePixmap(QSize(16000, 16000), 1.0).isNull());
    EXPECT_FALSE(panePixmap(QSize(16000, 4000), 1.0).isNull());
}

TEST(PanePixmap, RatioIsThatOfTheDevice) {
    QImage image(100, 100, QImage::Format_RGB32);
    image.setDevicePixelRatio(2.0);
    QPainter painter(&image);
    EXPECT_EQ(evenRatio(painter), 2.0);
    painter.scale(2.0, 1.0);
    EXPECT_EQ(evenRatio(painter), 0.0);
}

QRegion together(const QVector<QRect> &parts) {
    QRegion region;
    for (const QRect &part : parts) {
        region |= part;
    }
    return region;
}

TEST(PartsOf, CrossingLinesStayWhole) {
    const QRect rows[] = {QRect(0, 40, 200, 1), QRect(0, 70, 200, 1)};
    const QRect columns[] = {QRect(30, 0, 1, 100), QRect(90, 0, 1, 100)};
    const QRegion cross = QRegion(rows[0]) | rows[1] | columns[0] | columns[1];
    ASSERT_EQ(8, cross.rectCount());
    const QVector<QRect> parts = partsOf(cross);
    EXPECT_EQ(4, parts.size());
    for (const QRect &line : {rows[0], rows[1], columns[0], columns[1]}) {
        EXPECT_TRUE(parts.contains(line)) << line.x() << ' ' << line.y();
    }
}

TEST(PartsOf, ColumnsWithAHoleStayApart) {
    const QRegion apart = QRegion(30, 0, 1, 40) | QRegion(30, 41, 1, 40);
    EXPECT_EQ(2, partsOf(apart).size());
    const QRegion beside = apart | QRegion(31, 40, 50, 1) | QRegion(0, 40, 30, 1); // around the hole
    EXPECT_EQ(beside, together(partsOf(beside)));
    EXPECT_FALSE(together(partsOf(beside)).contains(QPoint(30, 40)));
    EXPECT_TRUE(partsOf(QRegion()).isEmpty());
}

TEST(PartsOf, AreTheRegionAndNeverMoreThanItsRectangles) {
    std::mt19937 random(3);
    for (int i = 0; i < 500; ++i) {
        QRegion region;
        for (int k = int(random() % 12); k >= 0; --k) {
            const QRect rect(int(random() % 40), int(random() % 40), 1 + int(random() % 30),
                             1 + int(random() % 30));
            region = random() % 4 ? region | rect : region - rect;
        }
        const QVector<QRect> parts = partsOf(region);
        EXPECT_EQ(region, together(parts)) << i;
        EXPECT_LE(parts.size(), region.rectCount());
    }
}

TEST(PartsOf, OfManyRectanglesAreThoseOfTheRegion) {
    QRegion region;
    for (int i = 0; i < 40; ++i) {
        region |= QRect(3 * i, 3 * i, 2, 2);
    }
    EXPECT_EQ(region.rectCount(), partsOf(region).size());
    EXPECT_EQ(region, together(partsOf(region)));
}

} // namespace
} // namespace TC
