// What is filled by hand is what the painter would have filled, pixel by pixel, whatever it is clipped to.

#include "host/drawing/DirectPixels.h"
#include "host/drawing/DrawStyles.h"

#include "tests/toolkit/DrawStyleDrawing.h"

#include <QPaintEvent>
#include <QWidget>

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
            QRect rect =
                QRect(QPoint(place(random), place(random)), QPoint(place(random), place(random))).normalized();
            rect.setWidth(i % 2 == 0 ? rect.width() : 1 + (round + i) % 24);
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

/// Two painters on two images, one of them drawn by hand, under the same clip and the same move.
struct Pair {
    QImage byHand;
    QImage byPainter;
    QPainter hand;
    QPainter painter;

    explicit Pair(double ratio, const QPoint &moved = {})
        : byHand(canvasOf(ratio)), byPainter(canvasOf(ratio)) {
        hand.begin(&byHand);
        painter.begin(&byPainter);
        for (QPainter *each : {&hand, &painter}) {
            each->translate(moved);
        }
    }
    bool isSame() {
        hand.end();
        painter.end();
        return byHand == byPainter;
    }
};

TEST_P(DirectPixelsRatio, DrawsTheLinesThatThePainterDraws) {
    const int ratio = GetParam();
    std::mt19937 random(23);
    int drawn = 0;
    for (int round = 0; round < 1500; ++round) {
        Pair pair(ratio, QPoint(round % 5, round % 7));
        std::uniform_int_distribution<int> column(-2, pair.byHand.width() + 1);
        std::uniform_int_distribution<int> row(-2, pair.byHand.height() + 1);
        const QRect clip(round % 60, round % 40, 5 + round % 50, 3 + round % 37);
        if (round % 3 != 0) {
            pair.hand.setClipRect(clip);
            pair.painter.setClipRect(clip);
        }
        const QTransform toLogical = pair.painter.deviceTransform().inverted();
        for (int i = 0; i < 6; ++i) {
            const QPointF from(column(random), row(random));
            const QLineF line(from, i % 3 == 0   ? QPointF(column(random), row(random))
                                    : i % 3 == 1 ? from + QPointF(i, row(random) % 9)
                                                 : QPointF(from.x(), row(random)));
            const QRgb color = qRgb(40 * i, 255 - 30 * i, round % 256);
            const TC::DirectPixels pixels(pair.hand);
            pair.painter.setPen(QPen(QColor(color), 0));
            pair.painter.drawLine(toLogical.map(line));
            if (pixels.strokes(&line, 1, 1, color)) {
                ++drawn;
            } else {
                pair.hand.setPen(QPen(QColor(color), 0));
                pair.hand.drawLine(toLogical.map(line));
            }
        }
        ASSERT_TRUE(pair.isSame()) << "round " << round << ", ratio " << ratio;
    }
    if (ratio == 3) { // a third of a pixel is no exact number, and the painter's lines lie as it is rounded
        EXPECT_EQ(drawn, 0);
    } else {
        EXPECT_GT(drawn, 4000);
    }
}

TEST(DirectPixels, ABrushThickensALineToTheRightAndDownward) {
    QImage image = canvasOf(1.0);
    QPainter painter(&image);
    const QLineF line(10, 10, 10, 12);
    ASSERT_TRUE(TC::DirectPixels(painter).strokes(&line, 1, 3, kRed));
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool inside = x >= 10 && x <= 12 && y >= 10 && y <= 14;
            ASSERT_EQ(image.pixel(x, y), inside ? kRed : kBackground) << x << ", " << y;
        }
    }
}

TEST(DirectPixels, LinesThatLeaveTheImageAndTranslucentOnesAreLeftToThePainter) {
    QImage image = canvasOf(1.0);
    QPainter painter(&image);
    const TC::DirectPixels pixels(painter);
    const QLineF inside(0, 0, 96, 60);
    EXPECT_TRUE(pixels.strokes(&inside, 1, 1, kRed));
    EXPECT_FALSE(pixels.strokes(&inside, 1, 2, kRed));
    EXPECT_FALSE(pixels.strokes(&inside, 1, 1, qRgba(1, 1, 1, 200)));
    for (const QLineF &outside :
         {QLineF(-1, 0, 5, 5), QLineF(0, 0, 97, 5), QLineF(0, -1, 5, 5), QLineF(0, 0, 5, 61)}) {
        EXPECT_FALSE(pixels.strokes(&outside, 1, 1, kRed));
    }
}

TEST_P(DirectPixelsRatio, FillsEveryOtherRowOfAColumn) {
    const int ratio = GetParam();
    for (int round = 0; round < 200; ++round) {
        Pair pair(ratio, QPoint(round % 9 - 4, round % 11 - 5));
        if (round % 4 != 0) {
            const QRect clip(round % 50 - 10, round % 33 - 10, 30, 1 + round % 40);
            pair.hand.setClipRect(clip);
            pair.painter.setClipRect(clip);
        }
        const TC::DirectPixels pixels(pair.hand);
        if (pixels.fillDots(round % 70, 50, QColor(kRed))) {
            for (int row = 0; row < 50; row += 2) {
                pair.painter.fillRect(round % 70, row, 1, 1, QColor(kRed));
            }
        }
        ASSERT_TRUE(pair.isSame()) << "round " << round;
        EXPECT_FALSE(pixels.fillDots(5, 50, QColor(1, 1, 1, 100)));
    }
}

TEST_P(DirectPixelsRatio, CopiesThePictureThatThePainterDraws) {
    const int ratio = GetParam();
    QImage picture(50 * ratio, 40 * ratio, QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.setPixel(x, y, qRgb(x, y, x ^ y));
        }
    }
    int copied = 0;
    for (int round = 0; round < 200; ++round) {
        Pair pair(ratio, QPoint(round % 13 - 6, round % 17 - 8));
        if (round % 4 != 0) {
            const QRect clip(round % 80 - 10, round % 50 - 10, 1 + round % 60, 1 + round % 40);
            pair.hand.setClipRect(clip);
            pair.painter.setClipRect(clip);
        }
        const QPoint at(round % 90 - 20, round % 70 - 20);
        copied += TC::DirectPixels(pair.hand).copy(picture, at) ? 1 : 0;
        pair.painter.drawImage(at, picture);
        if (!TC::DirectPixels(pair.hand).isNull()) {
            ASSERT_TRUE(pair.isSame()) << "round " << round;
        }
    }
    EXPECT_GT(copied, 100);
}

TEST(DirectPixels, APictureOfAnotherRatioOrWithAlphaIsLeftToThePainter) {
    QImage image = canvasOf(2.0);
    QPainter painter(&image);
    const TC::DirectPixels pixels(painter);
    QImage picture(10, 10, QImage::Format_RGB32);
    picture.fill(Qt::white);
    EXPECT_FALSE(pixels.copy(picture, QPoint()));
    picture.setDevicePixelRatio(2.0);
    EXPECT_TRUE(pixels.copy(picture, QPoint()));
    QImage translucent(10, 10, QImage::Format_ARGB32_Premultiplied);
    translucent.setDevicePixelRatio(2.0);
    translucent.fill(Qt::transparent);
    EXPECT_FALSE(pixels.copy(translucent, QPoint()));
}

TEST(PixelPart, HoldsThePainterAndItsPixelsToThePart) {
    QImage image = canvasOf(2.0);
    QPainter painter(&image);
    painter.setClipRect(0, 0, 3, 3); // of no account
    {
        const TC::PixelPart part(painter, QRect(10, 5, 4, 3));
        EXPECT_EQ(TC::PixelPart::of(painter), &part);
        EXPECT_TRUE(TC::DirectPixels(painter).fill(0, 0, 97, 61, kRed));
        QImage other = canvasOf(1.0);
        QPainter elsewhere(&other);
        EXPECT_EQ(TC::PixelPart::of(elsewhere), nullptr);
        EXPECT_TRUE(TC::DirectPixels(elsewhere).fill(0, 0, 1, 1, kRed));
        EXPECT_EQ(other.pixel(0, 0), kRed);
    }
    EXPECT_EQ(TC::PixelPart::of(painter), nullptr);
    painter.fillRect(0, 0, 97, 61, Qt::blue);
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool inside = QRect(20, 10, 8, 6).contains(x, y);
            ASSERT_EQ(image.pixel(x, y), inside ? QColor(Qt::blue).rgb() : kBackground) << x << ", " << y;
        }
    }
}

TEST(PixelPart, HoldsThePainterWhenSomebodyAsks) {
    QImage image = canvasOf(1.0);
    QPainter painter(&image);
    {
        const TC::PixelPart part(painter, QRect(10, 5, 4, 3), TC::PixelPart::EClip::WhenAsked);
        EXPECT_FALSE(painter.hasClipping());
        TC::DirectPixels(painter).fill(painter, QRect(0, 0, 97, 61), QColor(kRed)); // by hand
        EXPECT_FALSE(painter.hasClipping());
        TC::DirectPixels(painter).fill(painter, QRect(0, 0, 97, 61), QColor(0, 0, 255, 100)); // by the painter
        EXPECT_EQ(painter.clipBoundingRect(), QRectF(10, 5, 4, 3));
    }
    TC::PixelPart::clip(painter); // of no part any more
    {
        const TC::PixelPart next(painter, QRect(40, 30, 5, 5), TC::PixelPart::EClip::WhenAsked);
        TC::PixelPart::clip(painter);
        EXPECT_EQ(painter.clipBoundingRect(), QRectF(40, 30, 5, 5));
    }
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(image.pixel(x, y) != kBackground, QRect(10, 5, 4, 3).contains(x, y)) << x << ", " << y;
        }
    }
    QImage other = canvasOf(1.0, QImage::Format_RGB16); // of which nothing is drawn by hand
    QPainter plain(&other);
    const TC::PixelPart part(plain, QRect(1, 2, 3, 4), TC::PixelPart::EClip::WhenAsked);
    EXPECT_EQ(plain.clipBoundingRect(), QRectF(1, 2, 3, 4));
}

/// What a drawing draws beyond its part, whichever way each line is drawn.
TEST(PixelPart, NoStyleDrawsBeyondThePart) {
    const std::vector<std::vector<double>> lines(
        4, std::vector<double>{10, 90, 20, 140, kGap, 40, -30, 60, 70, 5});
    for (const double ratio : {1.0, 1.5, 2.0, 3.0}) {
        for (int style = 0; style < 40; ++style) {
            const Series series = seriesOf(style, lines);
            QImage image = canvasOf(ratio);
            QPainter painter(&image);
            const QRect part(30, 12, 25, 30);
            {
                const TC::PixelPart held(painter, part, TC::PixelPart::EClip::WhenAsked);
                const QRect rect(5, 5, 85, 50);
                Draw::drawSimpleLine(&painter, rect, series, kRange, 0, 0, 9, 9, Qt::SolidLine, 1, true, false,
                                     1.0f, style % 2 == 0, true);
                Draw::drawSegmentLine(&painter, rect, series, kRange, 0, 0, 9, 9, 1, false);
                Draw::drawVertLine(&painter, rect, series, kRange, 1, 0, 9, 9, Qt::DotLine, 1);
                Draw::drawCircleDot(&painter, rect, series, kRange, 1, 0, 9, 9, 1, true, true);
                Draw::drawNumber(&painter, rect, series, kRange, 1, 0, 9, 9, 1, false);
                Draw::drawKLine(&painter, rect, series, kRange, 0, 0, 9, 9, 1, 60, false, 1.0f, 2);
                Draw::drawStackVolstick(&painter, rect, series, kRange, 2, 0, 9, 9, 1, true, true);
            }
            painter.end();
            const QRect inside(int(part.x() * ratio), int(part.y() * ratio),
                               int(std::ceil(part.width() * ratio)), int(std::ceil(part.height() * ratio)));
            int seen = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const bool drawn = image.pixel(x, y) != kBackground;
                    seen += drawn ? 1 : 0;
                    ASSERT_TRUE(!drawn || inside.contains(x, y)) << x << ", " << y << ", style " << style;
                }
            }
            EXPECT_GT(seen, 0) << "style " << style << ", ratio " << ratio;
        }
    }
}

/// Paints what it is told to.
class PaintedWidget : public QWidget {
public:
    std::function<void(QPainter &, const QRegion &)> paint;
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override {
        QPainter painter(this);
        paint(painter, event->region());
    }
};

TEST_P(DirectPixelsRatio, OnAWindowNothingIsDrawnBeyondWhatItLeaves) {
    const int ratio = GetParam();
    QWidget window;
    window.resize(90, 60);
    PaintedWidget child(&window);
    child.setGeometry(7, 9, 60, 40);
    QWidget above(&window); // what it covers is not the child's to paint
    above.setGeometry(20, 15, 10, 12);
    above.setAutoFillBackground(true);
    above.setAttribute(Qt::WA_OpaquePaintEvent);
    QImage images[2];
    int filled = 0;
    for (const bool byHand : {true, false}) {
        child.paint = [&](QPainter &painter, const QRegion &region) {
            int color = 40;
            for (const QRect &piece : region) {
                const TC::PixelPart part(painter, piece.adjusted(-2, -2, 2, 2));
                const QRect all(-5, -5, 200, 200);
                const TC::DirectPixels pixels(painter);
                filled += byHand && !pixels.isNull() ? 1 : 0;
                if (byHand) {
                    pixels.fill(painter, all, QColor(color, 10, 10));
                } else {
                    painter.fillRect(all, QColor(color, 10, 10));
                }
                color += 20;
            }
        };
        QImage &image = images[byHand ? 0 : 1];
        image = QImage(90 * ratio, 60 * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::white);
        const QRegion seen = QRegion(0, 0, 40, 25) | QRegion(30, 30, 20, 20) | QRegion(60, 3, 3, 40);
        window.render(&image, QPoint(), seen, QWidget::DrawChildren);
    }
    EXPECT_GT(filled, 0);
    EXPECT_EQ(images[0], images[1]);
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
