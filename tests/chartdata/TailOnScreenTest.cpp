#include "chartdata/TailOnScreen.h"

#include <gtest/gtest.h>

using namespace TC;

namespace tests {
namespace {

Touched at(int column) {
    return {QRect(column, 0, 2, 100), QRect(column, 40, 2, 10), QRect()};
}

TEST(TailOnScreen, OneSeriesMovesAloneUntilAnotherDoes) {
    TailOnScreen tail;
    tail.add(0, at(5));
    tail.add(1, at(5));
    EXPECT_FALSE(tail.hasMoved());
    EXPECT_EQ(tail.takeMoved(), kEverySeries) << "nobody has told which";
    tail.noteMoved(1);
    tail.noteMoved(1);
    EXPECT_TRUE(tail.hasMoved());
    EXPECT_EQ(tail.takeMoved(), 1);
    EXPECT_FALSE(tail.hasMoved());
    tail.noteMoved(1);
    tail.noteMoved(0);
    EXPECT_EQ(tail.takeMoved(), kEverySeries);
    tail.noteMoved(kEverySeries);
    tail.noteMoved(1);
    EXPECT_EQ(tail.takeMoved(), kEverySeries);
}

TEST(TailOnScreen, PlacesAreKnownUntilAPointInThemMoves) {
    TailOnScreen tail;
    EXPECT_FALSE(tail.isMeasured());
    tail.add(0, at(5));
    tail.noteMeasured();
    tail.noteLonger(0);
    EXPECT_TRUE(tail.isMeasured());
    EXPECT_TRUE(tail.hasMoved());
    EXPECT_EQ(tail.takeMoved(), 0);
    tail.noteMoved(0);
    EXPECT_FALSE(tail.isMeasured());
}

TEST(TailOnScreen, ASeriesWithoutAPlaceDoesNotMoveAlone) {
    TailOnScreen tail;
    tail.add(0, at(5));
    tail.noteMoved(1);
    EXPECT_EQ(tail.takeMoved(), kEverySeries);
}

TEST(TailOnScreen, PlacesAreTakenOneByOneOrTogether) {
    TailOnScreen tail;
    tail.add(0, at(5));
    tail.add(2, at(30));
    tail.add(2, at(31));
    EXPECT_EQ(tail.all().price, QRect(5, 40, 28, 10));
    EXPECT_EQ(tail.take(2).price, QRect(30, 40, 3, 10));
    EXPECT_EQ(tail.all().columns, QRect(5, 0, 2, 100));
    EXPECT_EQ(tail.take(kEverySeries).price, QRect(5, 40, 2, 10));
    EXPECT_TRUE(tail.all().isEmpty());
    tail.add(1, at(5));
    tail.emptyPlaces();
    EXPECT_TRUE(tail.all().isEmpty());
    tail.noteMoved(1);
    EXPECT_EQ(tail.takeMoved(), 1) << "its place is known: it is empty";
}

TEST(TailOnScreen, KnowsWhatIsAskedUntilSomethingIsPainted) {
    TailOnScreen tail;
    tail.noteAsked({QRect(5, 0, 4, 100), QRect(5, 40, 4, 10), QRect(5, 90, 4, 10)});
    EXPECT_TRUE(tail.isAsked(QRegion(5, 40, 4, 10) + QRect(6, 91, 2, 9)));
    EXPECT_FALSE(tail.isAsked(QRegion(5, 40, 4, 10) + QRect(6, 60, 1, 1)));
    tail.noteAsked({QRect(5, 0, 4, 100), QRect(5, 50, 4, 20), QRect()});
    EXPECT_TRUE(tail.isAsked(QRect(6, 45, 1, 20)));
    tail.notePainted();
    EXPECT_FALSE(tail.isAsked(QRect(6, 45, 1, 1)));
}

} // namespace
} // namespace tests
