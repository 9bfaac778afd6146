#include "chartdata/OpenImage.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

QImage filled(const QColor &color) {
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

TEST(OpenImage, PainterStaysOpen) {
    TC::OpenImage image;
    image.set(filled(Qt::white));
    QPainter *painter = image.painter();
    ASSERT_TRUE(painter);
    painter->setPen(Qt::red);
    ASSERT_EQ(image.painter(), painter);
    EXPECT_EQ(painter->pen().color(), QColor(Qt::red)); // one that is begun anew has a black one
    painter->drawPoint(2, 3);
    EXPECT_EQ(image.image().pixelColor(2, 3), QColor(Qt::red));
}

TEST(OpenImage, IsFilledUnderItsPainter) {
    TC::OpenImage image;
    image.set(filled(Qt::white));
    image.painter()->fillRect(0, 0, 2, 2, Qt::red);
    image.fill(Qt::blue);
    image.painter()->fillRect(4, 4, 1, 1, Qt::green);
    EXPECT_EQ(image.image().pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(image.image().pixelColor(4, 4), QColor(Qt::green));
}

TEST(OpenImage, PainterGoesWithItsImage) {
    TC::OpenImage image;
    image.set(filled(Qt::white));
    image.painter()->setPen(Qt::red);
    image.set(filled(Qt::yellow));
    QPainter *painter = image.painter();
    ASSERT_TRUE(painter);
    EXPECT_EQ(painter->pen().color(), QColor(Qt::black));
    painter->fillRect(1, 1, 1, 1, Qt::green);
    EXPECT_EQ(image.image().pixelColor(1, 1), QColor(Qt::green));
    EXPECT_EQ(image.image().pixelColor(0, 0), QColor(Qt::yellow));
}

} // namespace
} // namespace tests
