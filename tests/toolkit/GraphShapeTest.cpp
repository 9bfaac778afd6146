#include "toolkit/drawing/GraphShape.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using TC::EVmGraphType;
using TC::GraphShape;

const QRectF kRect(0, 0, 100, 50);

QVector<QLineF> outline(EVmGraphType type, const QVector<QPointF> &pixels, const QRectF &rect = kRect) {
    return GraphShape::outline(type, pixels, rect);
}

void expectLine(const QVector<QLineF> &lines, const QPointF &from, const QPointF &to) {
    ASSERT_EQ(lines.size(), 1);
    EXPECT_NEAR(lines[0].x1(), from.x(), 1e-9);
    EXPECT_NEAR(lines[0].y1(), from.y(), 1e-9);
    EXPECT_NEAR(lines[0].x2(), to.x(), 1e-9);
    EXPECT_NEAR(lines[0].y2(), to.y(), 1e-9);
}

TEST(GraphShape, ASegmentIsClippedToTheRectangle) {
    expectLine(outline(EVmGraphType::Segment, {{10, 10}, {20, 30}}), {10, 10}, {20, 30});
    expectLine(outline(EVmGraphType::Segment, {{-10, 10}, {10, 30}}), {0, 20}, {10, 30});
    EXPECT_TRUE(outline(EVmGraphType::Segment, {{-10, 10}, {-5, 30}}).isEmpty());
    EXPECT_TRUE(outline(EVmGraphType::Segment, {{-10, 0}, {0, -10}}).isEmpty());
}

TEST(GraphShape, ALineRunsToBothEdgesAndARayToOne) {
    expectLine(outline(EVmGraphType::Line, {{40, 20}, {50, 25}}), {0, 0}, {100, 50});
    expectLine(outline(EVmGraphType::Ray, {{40, 20}, {50, 25}}), {40, 20}, {100, 50});
    expectLine(outline(EVmGraphType::Ray, {{50, 25}, {40, 20}}), {50, 25}, {0, 0});
    expectLine(outline(EVmGraphType::Line, {{30, 5}, {30, 6}}), {30, 0}, {30, 50});
}

TEST(GraphShape, ARayThatPointsAwayShowsNothing) {
    EXPECT_TRUE(outline(EVmGraphType::Ray, {{110, 20}, {120, 20}}).isEmpty());
    EXPECT_EQ(outline(EVmGraphType::Ray, {{120, 20}, {110, 20}}).size(), 1);
}

TEST(GraphShape, HorizontalAndVerticalLinesSpanTheRectangle) {
    expectLine(outline(EVmGraphType::HorizontalLine, {{500, 20}}), {0, 20}, {100, 20});
    expectLine(outline(EVmGraphType::VerticalLine, {{30, -400}}), {30, 0}, {30, 50});
    EXPECT_TRUE(outline(EVmGraphType::HorizontalLine, {{5, 51}}).isEmpty());
}

TEST(GraphShape, ARectangleShowsTheEdgesThatAreInside) {
    EXPECT_EQ(outline(EVmGraphType::Rectangle, {{10, 10}, {20, 20}}).size(), 4);
    EXPECT_EQ(outline(EVmGraphType::Rectangle, {{10, 10}, {200, 20}}).size(), 3);
    EXPECT_TRUE(outline(EVmGraphType::Rectangle, {{-10, -10}, {200, 200}}).isEmpty());
}

TEST(GraphShape, ALineThroughOnePointShowsNothing) {
    EXPECT_TRUE(outline(EVmGraphType::Line, {{10, 10}, {10, 10}}).isEmpty());
    EXPECT_TRUE(outline(EVmGraphType::Ray, {{10, 10}, {10, 10}}).isEmpty());
}

TEST(GraphShape, WildPointsAndRectanglesShowNothing) {
    const double nan = std::nan("");
    const double inf = std::numeric_limits<double>::infinity();
    for (const double wild : {nan, inf, -inf, TC::kUnsetValue, -TC::kUnsetValue}) {
        EXPECT_TRUE(outline(EVmGraphType::Line, {{wild, 1}, {2, 3}}).isEmpty());
        EXPECT_TRUE(outline(EVmGraphType::HorizontalLine, {{1, wild}}).isEmpty());
    }
    for (const EVmGraphType type : {EVmGraphType::Segment, EVmGraphType::Line, EVmGraphType::Rectangle}) {
        for (const QLineF &line : outline(type, {{-1e308, -1e308}, {1e308, 1e308}})) {
            EXPECT_TRUE(TC::isFinitePoint(line.p1()) && TC::isFinitePoint(line.p2()));
        }
    }
    EXPECT_TRUE(outline(EVmGraphType::Segment, {{1, 1}, {2, 2}}, QRectF()).isEmpty());
    EXPECT_TRUE(outline(EVmGraphType::Segment, {{1, 1}}).isEmpty());
    EXPECT_TRUE(outline(EVmGraphType::None, {}).isEmpty());
    EXPECT_TRUE(outline(static_cast<EVmGraphType>(99), {}).isEmpty());
}

TEST(GraphShape, DistanceIsThatOfTheNearestPlace) {
    const QVector<QLineF> lines{{0, 0, 10, 0}, {0, 20, 0, 20}};
    EXPECT_DOUBLE_EQ(TC::distanceTo(lines, {5, 3}), 3.0);
    EXPECT_DOUBLE_EQ(TC::distanceTo(lines, {13, 4}), 5.0);
    EXPECT_DOUBLE_EQ(TC::distanceTo(lines, {0, 19}), 1.0);
    EXPECT_TRUE(std::isinf(TC::distanceTo({}, {0, 0})));
}

TEST(GraphDocument, DrawingsReadBackAsTheyWere) {
    const QVector<GraphShape> graphs{
        {EVmGraphType::Ray, {{1, 10.25}, {240, 1.0 / 3.0}}, QStringLiteral("#ff8000")},
        {EVmGraphType::HorizontalLine, {{1710432000000.0, -5}}, QString()}};
    const std::string json = TC::graphsToDocument(graphs).jsonString();
    QVector<GraphShape> read;
    ASSERT_TRUE(TC::graphsFromDocument(bson::BSONObj::fromJson(json), read));
    ASSERT_EQ(read.size(), 2);
    EXPECT_EQ(read[0].mType, EVmGraphType::Ray);
    EXPECT_EQ(read[0].mColor, QStringLiteral("#ff8000"));
    EXPECT_EQ(read[0].mPoints[1].x(), 240.0);
    EXPECT_EQ(read[0].mPoints[1].y(), 1.0 / 3.0);
    EXPECT_EQ(read[1].mType, EVmGraphType::HorizontalLine);
    EXPECT_EQ(read[1].mPoints[0].x(), 1710432000000.0);
    EXPECT_EQ(read[1].mColor, QString());
}

TEST(GraphDocument, NoDrawingsAreADocumentToo) {
    QVector<GraphShape> read{{EVmGraphType::HorizontalLine, {{1, 1}}, QString()}};
    EXPECT_TRUE(TC::graphsFromDocument(TC::graphsToDocument({}), read));
    EXPECT_TRUE(read.isEmpty());
}

TEST(GraphDocument, AnythingElseLeavesWhatIsThere) {
    const QString good = QStringLiteral("{\"type\":1,\"color\":\"\",\"points\":[{\"index\":1,\"value\":2},"
                                        "{\"index\":3,\"value\":4}]}");
    const auto document = [](const QString &graphs) {
        return QStringLiteral("{\"version\":1,\"graphs\":[%1]}").arg(graphs);
    };
    QVector<GraphShape> read;
    ASSERT_TRUE(TC::graphsFromDocument(bson::BSONObj::fromJson(document(good).toStdString()), read));
    const auto changed = [&](const char *from, const char *to) {
        return document(good + QLatin1Char(',') +
                        QString(good).replace(QLatin1String(from), QLatin1String(to)));
    };
    const QStringList bad{
        QStringLiteral("{}"),
        QStringLiteral("{\"version\":2,\"graphs\":[]}"),
        QStringLiteral("{\"version\":1}"),
        QStringLiteral("{\"version\":1,\"graphs\":7}"),
        QStringLiteral("{\"version\":1,\"graphs\":{\"x\":{}}}"),
        document(QStringLiteral("3")),
        changed("\"type\":1", "\"type\":0"),
        changed("\"type\":1", "\"type\":7"),
        changed("\"type\":1", "\"type\":1.5"),
        changed("\"type\":1", "\"type\":4"),
        changed("\"type\":1", "\"type\":\"1\""),
        changed("\"color\":\"\"", "\"color\":\"red\""),
        changed("\"color\":\"\"", "\"color\":\"#12\""),
        changed("\"color\":\"\",", ""),
        changed("\"index\":3,", ""),
        changed("\"value\":4", "\"value\":{\"$numberDouble\":\"NaN\"}"),
        changed("\"value\":4", "\"value\":1.7976931348623157e308"),
    };
    for (const QString &json : bad) {
        EXPECT_FALSE(TC::graphsFromDocument(bson::BSONObj::fromJson(json.toStdString()), read))
            << qPrintable(json);
        EXPECT_EQ(read.size(), 1);
    }
}

TEST(GraphDocument, MoreDrawingsThanALayerHoldsAreRefused) {
    const GraphShape line{EVmGraphType::HorizontalLine, {{1, 1}}, QString()};
    QVector<GraphShape> read;
    EXPECT_TRUE(TC::graphsFromDocument(TC::graphsToDocument(QVector<GraphShape>(TC::kMostGraphs, line)), read));
    EXPECT_FALSE(
        TC::graphsFromDocument(TC::graphsToDocument(QVector<GraphShape>(TC::kMostGraphs + 1, line)), read));
    EXPECT_EQ(read.size(), TC::kMostGraphs);
}

} // namespace
