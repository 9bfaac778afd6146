#include "host/drawing/IGraphWidget.h"

#include "host/toolkit/CUiResource.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using TC::EVmGraphType;

/// Keeps what was finished.
class Layer : public TC::IGraphWidget {
public:
    void onGraphFinished(void *notification) override {
        mFinished.push_back(*static_cast<bson::BSONObj *>(notification));
    }
    std::vector<bson::BSONObj> mFinished;
};

/// A layer over a chart of 200 by 100 pixels: an index is 10 pixels wide, a value 5 pixels high and upwards.
class IGraphWidgetTest : public ::testing::Test {
protected:
    IGraphWidgetTest() {
        mLayer.initConvFunc(
            [](const QPointF &pixel) {
                return QPointF(std::floor(pixel.x() / 10.0), (100.0 - pixel.y()) / 5.0);
            },
            [this](const QPointF &point) {
                return QPointF(point.x() * 10.0 * mStretch, 100.0 - point.y() * 5.0 * mStretch);
            });
        mLayer.setGraphRect(QRect(0, 0, 200, 100));
    }

    static QMouseEvent mouse(QEvent::Type type, int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        return QMouseEvent(type, QPointF(x, y), QPointF(x, y), button, button, Qt::NoModifier);
    }
    bool press(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event = mouse(QEvent::MouseButtonPress, x, y, button);
        return mLayer.onMousePress(&event, &mWidget);
    }
    bool move(int x, int y) {
        QMouseEvent event = mouse(QEvent::MouseMove, x, y);
        return mLayer.onMouseMove(&event, &mWidget);
    }
    bool release(int x, int y) {
        QMouseEvent event = mouse(QEvent::MouseButtonRelease, x, y);
        return mLayer.onMouseRelease(&event);
    }
    void drag(int fromX, int fromY, int toX, int toY) {
        EXPECT_TRUE(press(fromX, fromY));
        EXPECT_TRUE(move(toX, toY));
        EXPECT_TRUE(release(toX, toY));
    }
    void make(EVmGraphType type, int fromX, int fromY, int toX, int toY) {
        mLayer.setGraphType(type);
        drag(fromX, fromY, toX, toY);
    }
    /// The points of a drawing as (index, value), by its place in the document.
    std::vector<QPointF> points(int graph = 0) const {
        const bson::BSONObj list =
            mLayer.getParam().getObject("graphs").getObject(std::to_string(graph)).getObject("points");
        std::vector<QPointF> result;
        for (int i = 0; i < list.nFields(); ++i) {
            const bson::BSONObj point = list.getObject(std::to_string(i));
            result.emplace_back(point.getNumber("index"), point.getNumber("value"));
        }
        return result;
    }
    int count() const { return mLayer.getParam().getObject("graphs").nFields(); }
    QImage image() {
        QImage result(200, 100, QImage::Format_RGB32);
        result.fill(Qt::black);
        QPainter painter(&result);
        mLayer.drawGraph(painter);
        return result;
    }

    double mStretch = 1.0; ///< of the chart's scale
    QWidget mWidget;
    Layer mLayer;
};

using Points = std::vector<QPointF>;

TEST_F(IGraphWidgetTest, WithNoToolAndNoHitEventsAreNotTaken) {
    EXPECT_FALSE(press(50, 50));
    EXPECT_FALSE(move(60, 60));
    EXPECT_FALSE(release(60, 60));
    EXPECT_EQ(count(), 0);
}

TEST_F(IGraphWidgetTest, PressDragReleaseMakesADrawing) {
    mLayer.setGraphType(EVmGraphType::Segment);
    EXPECT_TRUE(press(20, 80));
    EXPECT_TRUE(move(60, 40));
    EXPECT_TRUE(mLayer.mFinished.empty());
    EXPECT_TRUE(release(100, 30));
    EXPECT_EQ(points(), (Points{{2, 4}, {10, 14}}));
    ASSERT_EQ(mLayer.mFinished.size(), 1u);
    EXPECT_EQ(mLayer.mFinished[0].getNumber("type"), 1.0);
    EXPECT_EQ(mLayer.mFinished[0].getObject("points").getObject("1").getNumber("value"), 14.0);
}

TEST_F(IGraphWidgetTest, AToolServesOneDrawing) {
    make(EVmGraphType::Segment, 20, 80, 100, 30);
    EXPECT_FALSE(press(150, 80));
    EXPECT_EQ(count(), 1);
}

TEST_F(IGraphWidgetTest, EveryKindIsMade) {
    for (const EVmGraphType type :
         {EVmGraphType::Segment, EVmGraphType::Line, EVmGraphType::Ray, EVmGraphType::HorizontalLine,
          EVmGraphType::VerticalLine, EVmGraphType::Rectangle}) {
        make(type, 20, 80, 100, 30);
    }
    EXPECT_EQ(mLayer.mFinished.size(), 6u);
    EXPECT_EQ(points(3), (Points{{10, 14}})); // one point, where the mouse was let go
    EXPECT_EQ(points(5), (Points{{2, 4}, {10, 14}}));
}

TEST_F(IGraphWidgetTest, AClickMakesALineOfOnePointButNoneOfTwo) {
    mLayer.setGraphType(EVmGraphType::Segment);
    EXPECT_TRUE(press(50, 50));
    EXPECT_TRUE(release(50, 50));
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(mLayer.mFinished.empty());
    drag(20, 80, 100, 30); // the tool is still there
    EXPECT_EQ(count(), 1);
    mLayer.setGraphType(EVmGraphType::VerticalLine);
    EXPECT_TRUE(press(150, 50));
    EXPECT_TRUE(release(150, 50));
    EXPECT_EQ(points(1), (Points{{15, 10}}));
}

TEST_F(IGraphWidgetTest, OtherButtonsAndOtherPlacesAreNotTaken) {
    mLayer.setGraphRect(QRect(10, 10, 180, 80));
    mLayer.setGraphType(EVmGraphType::Segment);
    EXPECT_FALSE(press(50, 50, Qt::RightButton));
    EXPECT_FALSE(press(5, 50));
    EXPECT_FALSE(press(50, 95));
    EXPECT_TRUE(press(50, 50));
}

TEST_F(IGraphWidgetTest, ADragOutsideEndsAtTheEdge) {
    make(EVmGraphType::Segment, 20, 80, 900, -300);
    EXPECT_EQ(points(), (Points{{2, 4}, {19, 20}}));
}

TEST_F(IGraphWidgetTest, LeavingEndsADrawingWhereItIs) {
    mLayer.setGraphType(EVmGraphType::Segment);
    press(20, 80);
    move(60, 40);
    mLayer.recalcValueByAxis();
    EXPECT_TRUE(mLayer.onMouseRelease(nullptr));
    EXPECT_EQ(points(), (Points{{2, 4}, {6, 12}}));
    EXPECT_EQ(mLayer.mFinished.size(), 1u);
    EXPECT_FALSE(mLayer.onMouseRelease(nullptr));
}

TEST_F(IGraphWidgetTest, AClickNearADrawingSelectsItAndChangesNothing) {
    make(EVmGraphType::Segment, 20, 80, 100, 40);
    EXPECT_FALSE(press(190, 95)); // lets go
    EXPECT_FALSE(mLayer.deleteCurrGraph());
    EXPECT_TRUE(press(60, 63)); // 3 pixels beneath the middle
    EXPECT_TRUE(release(60, 63));
    EXPECT_EQ(points(), (Points{{2, 4}, {10, 12}}));
    EXPECT_TRUE(mLayer.deleteCurrGraph());
    EXPECT_EQ(count(), 0);
    EXPECT_FALSE(mLayer.deleteCurrGraph());
}

TEST_F(IGraphWidgetTest, APressFurtherAwayDoesNotHit) {
    make(EVmGraphType::HorizontalLine, 20, 50, 100, 50);
    EXPECT_TRUE(press(150, 55));
    release(150, 55);
    EXPECT_FALSE(press(150, 56));
}

TEST_F(IGraphWidgetTest, DraggingMovesTheWholeDrawing) {
    make(EVmGraphType::Segment, 20, 80, 100, 40);
    drag(60, 60, 90, 50); // 3 indices to the right, 2 values up
    EXPECT_EQ(points(), (Points{{5, 6}, {13, 14}}));
    EXPECT_EQ(mLayer.mFinished.size(), 1u);
}

TEST_F(IGraphWidgetTest, DraggingAnEndMovesItAlone) {
    make(EVmGraphType::Segment, 20, 80, 100, 40);
    drag(100, 40, 150, 20);
    EXPECT_EQ(points(), (Points{{2, 4}, {15, 16}}));
}

TEST_F(IGraphWidgetTest, TheNewestOfTwoIsGrabbed) {
    make(EVmGraphType::HorizontalLine, 20, 50, 100, 50);
    make(EVmGraphType::HorizontalLine, 20, 55, 100, 52);
    drag(150, 51, 150, 81);
    EXPECT_DOUBLE_EQ(points(0)[0].y(), 10.0);
    EXPECT_LT(points(1)[0].y(), 5.0);
}

TEST_F(IGraphWidgetTest, DrawingsFollowTheScale) {
    make(EVmGraphType::HorizontalLine, 20, 80, 100, 80); // value 4
    const QColor color = GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_graph_drawing"));
    EXPECT_EQ(image().pixelColor(5, 80), color);
    mStretch = 2.0;
    mLayer.recalcAxisByValue();
    EXPECT_EQ(image().pixelColor(5, 60), color);
    EXPECT_EQ(image().pixelColor(5, 80), QColor(Qt::black));
    EXPECT_TRUE(press(5, 60));
}

TEST_F(IGraphWidgetTest, RecalculatingValuesWithoutADragChangesNothing) {
    make(EVmGraphType::Segment, 20, 80, 100, 40);
    mStretch = 1.37;
    mLayer.recalcValueByAxis();
    EXPECT_TRUE(press(70, 51)); // on the drawing: between (27.4, 72.6) and (137, 17.8)
    mLayer.recalcValueByAxis();
    release(70, 51);
    EXPECT_EQ(points(), (Points{{2, 4}, {10, 12}}));
}

TEST_F(IGraphWidgetTest, AChangedScaleDuringADragKeepsTheValues) {
    make(EVmGraphType::HorizontalLine, 20, 80, 100, 80);
    press(150, 80);
    move(150, 60); // value 8
    mStretch = 0.5;
    mLayer.recalcAxisByValue();
    EXPECT_EQ(image().pixelColor(5, 80),
              GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_graph_drawing")));
}

TEST_F(IGraphWidgetTest, IsDrawnInsideItsRectangleOnly) {
    mLayer.setGraphRect(QRect(50, 20, 100, 60));
    make(EVmGraphType::HorizontalLine, 60, 50, 70, 50);
    press(60, 70); // lets go, so that no handle is drawn
    const QImage drawn = image();
    const QColor color = GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_graph_drawing"));
    EXPECT_EQ(drawn.pixelColor(50, 50), color);
    EXPECT_EQ(drawn.pixelColor(149, 50), color);
    EXPECT_EQ(drawn.pixelColor(49, 50), QColor(Qt::black));
    EXPECT_EQ(drawn.pixelColor(150, 50), QColor(Qt::black));
}

TEST_F(IGraphWidgetTest, WhatIsHitIsWhatIsDrawn) {
    make(EVmGraphType::Ray, 50, 50, 80, 40);
    press(20, 95);
    const QImage drawn = image();
    for (int x = 60; x < 200; x += 20) {
        const int y = 50 - (x - 50) / 3;
        bool lit = false;
        for (int near = y - 2; near <= y + 2; ++near) {
            lit = lit || (near >= 0 && drawn.pixelColor(x, near) != QColor(Qt::black));
        }
        EXPECT_TRUE(lit) << x;
        EXPECT_TRUE(press(x, y)) << x;
        mLayer.onMouseRelease(nullptr);
    }
    EXPECT_FALSE(press(20, 60)); // behind the start of the ray
    EXPECT_EQ(drawn.pixelColor(20, 60), QColor(Qt::black));
}

TEST_F(IGraphWidgetTest, TheSelectedDrawingShowsItsPoints) {
    make(EVmGraphType::HorizontalLine, 100, 50, 100, 50);
    EXPECT_NE(image().pixelColor(100, 48), QColor(Qt::black));
    press(20, 95);
    EXPECT_EQ(image().pixelColor(100, 48), QColor(Qt::black));
}

TEST_F(IGraphWidgetTest, TheColourIsThatOfTheSelectedAndTheNext) {
    make(EVmGraphType::HorizontalLine, 20, 80, 30, 80);
    mLayer.setCurrGraphColor(QStringLiteral("#ff8000"));
    EXPECT_EQ(image().pixelColor(5, 80), QColor("#ff8000"));
    make(EVmGraphType::HorizontalLine, 20, 20, 30, 20);
    EXPECT_EQ(image().pixelColor(5, 20), QColor("#ff8000"));
    for (const char *bad : {"", "red", "#12", "#gg0000", "#80ff0000", "ff0000"}) {
        mLayer.setCurrGraphColor(QLatin1String(bad));
    }
    EXPECT_EQ(image().pixelColor(5, 20), QColor("#ff8000"));
}

TEST_F(IGraphWidgetTest, TheDocumentMakesTheSameLayerAgain) {
    make(EVmGraphType::Segment, 20, 80, 100, 40);
    mLayer.setCurrGraphColor(QStringLiteral("#00ff00"));
    make(EVmGraphType::Rectangle, 120, 80, 180, 20);
    press(5, 5);
    const QImage before = image();
    const bson::BSONObj document = bson::BSONObj::fromJson(mLayer.getParam().jsonString());
    mLayer.setParam(bson::BSONObj());
    EXPECT_EQ(image(), before); // no document of a layer
    mLayer.setParam(bson::BSONObj::fromJson("{\"version\":1,\"graphs\":[]}"));
    EXPECT_EQ(count(), 0);
    mLayer.setParam(document);
    EXPECT_EQ(image(), before);
    EXPECT_FALSE(mLayer.deleteCurrGraph()); // nothing is selected
}

TEST_F(IGraphWidgetTest, ADocumentDuringADragEndsIt) {
    mLayer.setGraphType(EVmGraphType::Segment);
    press(20, 80);
    move(60, 40);
    mLayer.setParam(bson::BSONObj::fromJson("{\"version\":1,\"graphs\":[]}"));
    EXPECT_FALSE(move(80, 40));
    EXPECT_FALSE(release(80, 40));
    EXPECT_EQ(count(), 0);
}

TEST_F(IGraphWidgetTest, WithoutConversionsNothingIsTakenOrDrawn) {
    mLayer.setParam(bson::BSONObj::fromJson("{\"version\":1,\"graphs\":[{\"type\":4,\"color\":\"\",\"points\":["
                                            "{\"index\":1,\"value\":10}]}]}"));
    mLayer.initConvFunc({}, {});
    mLayer.setGraphType(EVmGraphType::Segment);
    EXPECT_FALSE(press(50, 50));
    mLayer.setGraphType(EVmGraphType::None);
    EXPECT_FALSE(press(50, 50));
    mLayer.recalcAxisByValue();
    mLayer.recalcValueByAxis();
    EXPECT_EQ(image().pixelColor(5, 50), QColor(Qt::black));
    EXPECT_EQ(count(), 1);
}

TEST_F(IGraphWidgetTest, PlacesWithoutAValueAreNoPlaces) {
    double value = TC::kUnsetValue;
    mLayer.initConvFunc([&](const QPointF &pixel) { return QPointF(pixel.x(), value); },
                        [](const QPointF &point) { return QPointF(point.x(), std::nan("")); });
    mLayer.setGraphType(EVmGraphType::Segment);
    EXPECT_FALSE(press(50, 50));
    value = 3.0;
    EXPECT_TRUE(press(50, 50));
    value = std::nan("");
    EXPECT_TRUE(move(80, 60));
    EXPECT_TRUE(release(90, 60)); // never got a second point
    EXPECT_EQ(count(), 0);
    image();
}

TEST_F(IGraphWidgetTest, ARectangleOfNoSizeTakesAndDrawsNothing) {
    make(EVmGraphType::HorizontalLine, 20, 80, 30, 80);
    for (const QRect &rect : {QRect(), QRect(10, 10, 0, 50), QRect(10, 10, -20, -20)}) {
        mLayer.setGraphRect(rect);
        mLayer.setGraphType(EVmGraphType::Segment);
        EXPECT_FALSE(press(10, 10));
        QImage black(200, 100, QImage::Format_RGB32);
        black.fill(Qt::black);
        EXPECT_EQ(image(), black);
    }
}

TEST_F(IGraphWidgetTest, AnUnknownToolIsNone) {
    mLayer.setGraphType(static_cast<EVmGraphType>(77));
    EXPECT_FALSE(press(50, 50));
}

TEST_F(IGraphWidgetTest, DeletingDuringADragEndsIt) {
    make(EVmGraphType::Segment, 20, 80, 100, 40);
    press(60, 60);
    move(70, 60);
    EXPECT_TRUE(mLayer.deleteCurrGraph());
    EXPECT_FALSE(move(80, 60));
    EXPECT_EQ(count(), 0);
}

TEST_F(IGraphWidgetTest, NullEventsAndWidgetsAreHarmless) {
    EXPECT_FALSE(mLayer.onMousePress(nullptr, nullptr));
    EXPECT_FALSE(mLayer.onMouseMove(nullptr, nullptr));
    mLayer.setGraphType(EVmGraphType::Segment);
    QMouseEvent event = mouse(QEvent::MouseButtonPress, 20, 20);
    EXPECT_TRUE(mLayer.onMousePress(&event, nullptr));
    QMouseEvent moved = mouse(QEvent::MouseMove, 40, 40);
    EXPECT_TRUE(mLayer.onMouseMove(&moved, nullptr));
    EXPECT_TRUE(mLayer.onMouseRelease(nullptr));
    EXPECT_EQ(count(), 1);
}

} // namespace
