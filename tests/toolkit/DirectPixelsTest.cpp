// What is filled by hand is what the painter would have filled, pixel by pixel, whatever it is clipped to.

#include "host/drawing/DirectPixels.h"
#include "host/drawing/DrawStyles.h"

#include "tests/toolkit/DrawStyleDrawing.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace tests;

constexpr QRgb kBackground = qRgb(20, 30, 40);

QImage canvasOf(double ratio, QImage::Format format = QImage::Format_RGB32) {
    QImage image(static_cast<int>(std::ceil(97 * ratio)), static_cast<int>(std::ceil(61 * ratio)), format);
    image.setDevicePixelRatio(ratio);
    image.fill(QColor(kBackground));
    return image;
}

class DirectPixelsRatio : public ::testing::TestWithParam<int> {};

TEST_P(DirectPixelsRatio, FillsWhatThePainterFills) {
    const int ratio = GetParam();
    std::mt19937 random(11);
    std::uniform_int_distribution<int> place(-30, 130);
    int filled = 0;
    for (int round = 0; round < 300; ++round) {
        const bool hasAlpha = round % 3 == 0;
        const auto format = hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
        QImage byHand = canvasOf(ratio, format);
        QImage byPainter = canvasOf(ratio, format);
        QPainter hand(&byHand);
        QPainter painter(&byPainter);
        const QPoint moved(place(random) / 4, place(random) / 4);
        for (QPainter *each : {&hand, &painter}) {
            each->translate(moved);
        }
        if (round % 4 != 0) {
            const QRect clip =
                QRect(QPoint(place(random), place(random)), QPoint(place(random), place(random)));
            for (QPainter *each : {&hand, &painter}) {
                each->setClipRect(clip.normalized());
            }
        }
        const TC::DirectPixels pixels(hand);
        const QTransform toLogical = painter.deviceTransform().inverted();
        for (int i = 0; i < 8; ++i) {
            const QRect device =
                QRect(QPoint(place(random), place(random)), QPoint(place(random), place(random))).normalized();
            const QRgb color = qRgb(i * 20, 255 - i, place(random) + 30);
            const QRectF logical = toLogical.mapRect(QRectF(device));
            painter.fillRect(logical, QColor(color));
            if (pixels.fill(device.left(), device.top(), device.right() + 1, device.bottom() + 1, color)) {
                ++filled;
            } else {
                hand.fillRect(logical, QColor(color)); // under a clip that leaves nothing
            }
        }
        for (int i = 0; i < 4; ++i) {
            const QRect rect =
                QRect(QPoint(place(random), place(random)), QPoint(place(random), place(random))).normalized();
            const QColor color(i * 20, 5, 255 - i, i == 0 ? 100 : 255);
            pixels.fill(hand, rect, color);
            painter.fillRect(rect, color);
        }
        hand.end();
        painter.end();
        ASSERT_EQ(byHand, byPainter) << "round " << round << ", ratio " << ratio;
    }
    EXPECT_GT(filled, 1000);
}

INSTANTIATE_TEST_SUITE_P(Ratios, DirectPixelsRatio, ::testing::Values(1, 2, 3));

TEST(DirectPixels, ThePainterDrawsWhatIsNotPlain) {
    QImage image = canvasOf(1.0);
    const auto fills = [&image](const std::function<void(QPainter &)> &prepare, QRgb color = kRed) {
        QPainter painter(&image);
        prepare(painter);
        return TC::DirectPixels(painter).fill(0, 0, 5, 5, color);
    };
    EXPECT_TRUE(fills([](QPainter &) {}));
    EXPECT_FALSE(fills([](QPainter &) {}, qRgba(10, 10, 10, 128)));
    EXPECT_FALSE(fills([](QPainter &painter) { painter.rotate(10.0); }));
    EXPECT_FALSE(fills([](QPainter &painter) { painter.scale(1.5, 1.5); }));
    EXPECT_FALSE(fills([](QPainter &painter) { painter.translate(0.5, 0.0); }));
    EXPECT_FALSE(fills([](QPainter &painter) { painter.setOpacity(0.5); }));
    EXPECT_FALSE(fills([](QPainter &painter) { painter.setCompositionMode(QPainter::CompositionMode_Xor); }));
    EXPECT_FALSE(
        fills([](QPainter &painter) { painter.setClipRegion(QRegion(0, 0, 3, 3) | QRegion(10, 10, 3, 3)); }));
    EXPECT_FALSE(TC::DirectPixels().fill(0, 0, 5, 5, kRed));
    QImage other = canvasOf(1.0, QImage::Format_RGB16);
    QPainter painter(&other);
    EXPECT_FALSE(TC::DirectPixels(painter).fill(0, 0, 5, 5, kRed));
}

/// Sticks, candles and stacked columns of any values, on a device that is filled by hand or on one that is not.
void drawBars(QPaintDevice *device, const QRect &rect, const QRect &clip, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> value(-20.0, 120.0);
    std::uniform_int_distribution<int> share(0, 10);
    const int count = 4 + static_cast<int>(seed % 60);
    std::vector<std::vector<double>> lines(4, std::vector<double>(std::size_t(count)));
    for (auto &line : lines) {
        for (double &each : line) {
            each = share(random) == 0 ? kGap : share(random) == 0 ? 0.0 : value(random);
        }
    }
    const Series columns = seriesOf(10, lines);
    const Series stacked = seriesOf(TC::eStackVolStickStyle, lines);
    QPainter painter(device);
    painter.setClipRect(clip);
    const int last = count - 1;
    const double width = share(random) / 10.0;
    Draw::drawVolStick(&painter, rect, columns, kRange, 0, 0, last, last, 1, false, true, width, seed % 2 == 0);
    Draw::drawColorStick(&painter, rect, columns, kRange, 1, 0, last, last, Qt::SolidLine, 1, true,
                         seed % 3 == 0, true);
    Draw::drawKLine(&painter, rect, columns, kRange, 0, 0, last, last, 1, 60, false, 1.0f, 2);
    Draw::drawStackVolstick(&painter, rect, stacked, kRange, 2, 0, last, last, 1, true, true);
}

TEST(DirectPixels, BarsAreTheSameOnAnImageAndOnAPixmap) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> place(-20, 110);
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (unsigned seed = 0; seed < 60; ++seed) {
            QImage image = canvasOf(ratio);
            QPixmap pixmap(image.size());
            pixmap.setDevicePixelRatio(ratio);
            pixmap.fill(QColor(kBackground));
            const QRect rect(place(random) / 4, place(random) / 4, 10 + int(seed), 8 + int(seed) / 2);
            const QRect clip =
                QRect(QPoint(place(random), place(random)), QPoint(place(random), place(random))).normalized();
            drawBars(&image, rect, clip, seed);
            drawBars(&pixmap, rect, clip, seed);
            ASSERT_EQ(pixmap.toImage().convertToFormat(QImage::Format_RGB32), image)
                << "seed " << seed << ", ratio " << ratio;
        }
    }
}

} // namespace
