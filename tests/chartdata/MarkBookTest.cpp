#include "chartdata/MarkBook.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

using namespace TC;

namespace {

boost::shared_ptr<kvservice::COrderDetail> order(const std::string &key) {
    auto made = boost::make_shared<kvservice::COrderDetail>();
    made->mOrderKey = key;
    return made;
}

QStringList keysIn(const MarkMap<kvservice::COrderDetail> &marks, const HitBox &box) {
    QList<boost::shared_ptr<kvservice::COrderDetail>> found;
    EXPECT_EQ(marks.list(box, found), !found.isEmpty());
    EXPECT_EQ(marks.any(box), !found.isEmpty());
    QStringList keys;
    for (const auto &one : found) {
        keys.append(QString::fromStdString(one->mOrderKey));
    }
    return keys;
}

TEST(MarkBook, FindsWhatStandsInABoxEdgesIncluded) {
    MarkBook book;
    book.orders.enter({100, 50}, order("a"));
    EXPECT_EQ(keysIn(book.orders, {96, 104, 46, 54}), QStringList{"a"});
    EXPECT_EQ(keysIn(book.orders, {100, 100, 50, 50}), QStringList{"a"});
    EXPECT_EQ(keysIn(book.orders, {101, 109, 46, 54}), QStringList());
    EXPECT_EQ(keysIn(book.orders, {96, 104, 51, 59}), QStringList());
}

TEST(MarkBook, ListsColumnByColumnAndRowByRow) {
    MarkBook book;
    book.orders.enter({102, 50}, order("c"));
    book.orders.enter({100, 52}, order("b"));
    book.orders.enter({100, 50}, order("a"));
    EXPECT_EQ(keysIn(book.orders, {96, 104, 46, 54}), (QStringList{"a", "b", "c"}));
}

TEST(MarkBook, OneKeyAtOnePointIsTheLastEntered) {
    MarkBook book;
    const auto newer = order("a");
    book.orders.enter({100, 50}, order("a"));
    book.orders.enter({100, 50}, newer);
    QList<boost::shared_ptr<kvservice::COrderDetail>> found;
    book.orders.list({100, 100, 50, 50}, found);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0], newer);

    std::map<std::string, boost::shared_ptr<kvservice::COrderDetail>> records;
    records["whatever it was kept by"] = order("a");
    const auto newest = records.begin()->second;
    book.orders.enterNode({100, 50}, records.extract(records.begin()));
    found.clear();
    book.orders.list({100, 100, 50, 50}, found);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0], newest);
}

TEST(MarkBook, ClearedFindsNothing) {
    MarkBook book;
    book.orders.enter({100, 50}, order("a"));
    book.tasks.enter({100, 50}, boost::make_shared<kvservice::CTaskDetail>());
    book.clear();
    EXPECT_FALSE(book.orders.any({0, 1000, 0, 1000}));
    EXPECT_FALSE(book.tasks.any({0, 1000, 0, 1000}));
}

} // namespace
