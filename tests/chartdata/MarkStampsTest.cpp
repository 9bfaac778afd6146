#include "chartdata/MarkStamps.h"

#include "tests/support/Golden.h"

#include <gtest/gtest.h>

namespace TC {
namespace {

void drawMark(QPainter &painter) {
    painter.setPen(QColor(255, 0, 0, 192));
    painter.setBrush(QColor(255, 0, 0, 192));
    painter.drawEllipse(QRect(-3, -3, 6, 6));
    painter.drawText(QRect(4, -6, 12, 12), Qt::AlignCenter, QStringLiteral("B"));
}

const QRect kBounds(-8, -12, 32, 24);
const QPoint kPlaces[] = {{20, 20}, {22, 21}, {50, 33}, {0, 0}, {63, 47}, {-3, 10}, {35, 15}, {13, 38}};

QImage stamped(double ratio) {
    return tests::rendered(QSize(64, 48), ratio, Qt::transparent, [&](QPainter &painter) {
        MarkStamps stamps(painter);
        for (const QPoint &at : kPlaces) {
            stamps.draw({1, 2, 3, 4}, at, kBounds, drawMark);
        }
    });
}

QImage drawnAnew(double ratio) {
    return tests::rendered(QSize(64, 48), ratio, Qt::transparent, [&](QPainter &painter) {
        for (const QPoint &at : kPlaces) {
            painter.save();
            painter.translate(at);
            drawMark(painter);
            painter.restore();
        }
    });
}

TEST(MarkStamps, CopiesLookLikeDrawings) {
    for (const double ratio : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0, 8.0}) {
        const tests::GoldenDifference difference =
            tests::compareImages(stamped(ratio), drawnAnew(ratio), {3, 0.0});
        EXPECT_TRUE(difference.accepted)
            << ratio << ": " << difference.pixels << " pixels, by " << difference.largest;
    }
}

TEST(MarkStamps, LeaveTheirPainterAsItWas) {
    QImage image(64, 48, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(1.5);
    QPainter painter(&image);
    painter.translate(4, 2);
    painter.setPen(Qt::yellow);
    const QTransform before = painter.deviceTransform();
    {
        MarkStamps stamps(painter);
        stamps.draw({0, 0, 0, 0}, QPoint(5, 5), kBounds, drawMark);
    }
    EXPECT_EQ(painter.deviceTransform(), before);
    EXPECT_EQ(painter.pen().color(), QColor(Qt::yellow));
}

TEST(MarkStamps, EachMarkIsDrawnOnceForEveryPlaceWithinAPixel) {
    for (const auto &[ratio, places] :
         {std::make_pair(1.0, 1), std::make_pair(1.5, 4), std::make_pair(1.25, 16)}) {
        QImage image(640, 480, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        MarkStamps stamps(painter);
        int drawings = 0;
        for (int i = 0; i < 400; ++i) {
            stamps.draw({0, 0, 0, 0}, QPoint(i % 20, i / 20), kBounds, [&drawings](QPainter &) { ++drawings; });
        }
        EXPECT_EQ(drawings, places) << ratio;
    }
}

TEST(MarkStamps, EachMarkIsDrawnOnce) {
    QImage image(64, 48, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    MarkStamps stamps(painter);
    int drawings = 0;
    for (int i = 0; i < 30; ++i) {
        stamps.draw({i % 2, 0, 0, 0}, QPoint(i, i), kBounds, [&drawings](QPainter &) { ++drawings; });
    }
    EXPECT_EQ(drawings, 2);
}

TEST(MarkStamps, MarkWithoutPixelsIsNothing) {
    QImage image(64, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QImage before = image;
    int drawings = 0;
    {
        QPainter painter(&image);
        MarkStamps stamps(painter);
        for (int i = 0; i < 3; ++i) {
            stamps.draw({0, 0, 0, 0}, QPoint(20, 20), kBounds, [&drawings](QPainter &) { ++drawings; });
        }
    }
    EXPECT_EQ(image, before);
    EXPECT_EQ(drawings, 1);
}

TEST(MarkStamps, FarAwayMarksDoNoHarm) {
    QImage image(64, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QImage before = image;
    {
        QPainter painter(&image);
        MarkStamps stamps(painter);
        for (const int far : {-1000000000, -100000, 100000, 1000000000}) {
            stamps.draw({0, 0, 0, 0}, QPoint(far, 10), kBounds, drawMark);
            stamps.draw({0, 0, 0, 0}, QPoint(10, far), kBounds, drawMark);
        }
    }
    EXPECT_EQ(image, before);
}

} // namespace
} // namespace TC
