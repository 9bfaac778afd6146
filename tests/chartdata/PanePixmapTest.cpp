#include "chartdata/PanePixmap.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

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

} // namespace
} // namespace TC
