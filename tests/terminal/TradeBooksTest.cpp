#include "terminal/trade/TradeBooks.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

constexpr int kSomeDay = 1774195200;
constexpr int kOtherDay = kSomeDay + 86400;

TradeBook bookWithAnOrder() {
    TradeOrder order;
    order.account = "a1";
    order.key = "1";
    order.instrument = "SH600000";
    TradeBook book;
    book.put(order);
    return book;
}

} // namespace

TEST(TradeBooks, AWritingMakesOldWhatWasReadOfTheDaysThatItChanged) {
    TradeBooks books;
    books.add(kSomeDay, {});
    books.add(kOtherDay, {});
    const quint64 some = books.version(kSomeDay);
    const quint64 other = books.version(kOtherDay);
    books.noteChange(kSomeDay);
    books.beginWriting();
    EXPECT_EQ(books.version(kSomeDay), some) << "not before its end";
    books.endWriting(true, false);
    EXPECT_NE(books.version(kSomeDay), some);
    EXPECT_EQ(books.version(kOtherDay), other);
}

TEST(TradeBooks, AWritingThatChangedAllDaysMakesOldWhatWasReadOfAnyOfThem) {
    TradeBooks books;
    const quint64 before = books.version(kSomeDay);
    books.beginWriting();
    books.endWriting(true, true);
    EXPECT_NE(books.version(kSomeDay), before);
}

TEST(TradeBooks, APartOfADayGoesWhenItsChangesAreWritten) {
    TradeBooks books;
    books.addPart(kSomeDay);
    books.noteChange(kSomeDay);
    books.beginWriting();
    books.endWriting(false, false);
    EXPECT_NE(books.find(kSomeDay), nullptr) << "its changes are nowhere else";
    books.beginWriting();
    books.noteChange(kSomeDay);
    books.endWriting(true, false);
    EXPECT_NE(books.find(kSomeDay), nullptr) << "it has changed since";
    books.beginWriting();
    books.endWriting(true, false);
    EXPECT_EQ(books.find(kSomeDay), nullptr);
}

TEST(TradeBooks, AnEmptyDayIsInMemoryAndNotToldAsOneWithRecords) {
    TradeBooks books;
    books.add(kSomeDay, {});
    EXPECT_NE(books.find(kSomeDay), nullptr);
    EXPECT_TRUE(books.daysFrom(0).empty());
    books.noteChange(kSomeDay);
    EXPECT_EQ(books.daysFrom(0), std::set<int>({kSomeDay})) << "it lost records that the store has yet";
}

TEST(TradeBooks, WhatIsDroppedIsKeptUntilItIsTaken) {
    TradeBooks books;
    books.add(kSomeDay, bookWithAnOrder());
    for (size_t i = 1; i <= TradeBooks::kMost; ++i) {
        books.add(kSomeDay + static_cast<int>(i) * 86400, {});
    }
    EXPECT_EQ(books.find(kSomeDay), nullptr) << "it was not used for longest";
    EXPECT_EQ(books.size(), TradeBooks::kMost);
    const std::vector<TradeBook> dropped = books.takeDropped();
    ASSERT_EQ(dropped.size(), 1u);
    EXPECT_EQ(dropped.front().instruments(), TradeBook::Keys({"SH600000"}));
    EXPECT_TRUE(books.takeDropped().empty());
}

TEST(TradeBooks, ABookOfADayThatIsThereAlreadyIsDropped) {
    TradeBooks books;
    TradeBook &known = books.add(kSomeDay, {});
    EXPECT_EQ(&books.add(kSomeDay, bookWithAnOrder()), &known);
    EXPECT_TRUE(known.isEmpty());
    ASSERT_EQ(books.takeDropped().size(), 1u);
}
