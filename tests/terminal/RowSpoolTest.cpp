// Rows that do not fit into memory.

#include "terminal/market/RowSpool.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

using namespace terminal;

namespace {

struct Row {
    int number = 0;
    double value = 0.0;
};

bool operator==(const Row &a, const Row &b) {
    return a.number == b.number && a.value == b.value;
}

} // namespace

TEST(RowSpool, EveryListComesBackInItsOrderHoweverFewFitIntoMemory) {
    const QTemporaryDir folder;
    for (const size_t inMemory : {1, 7, 1000, 100000}) {
        RowSpool<Row> spool(folder.path(), inMemory * sizeof(Row));
        std::vector<std::vector<Row>> expected(5);
        std::mt19937 random(1);
        for (int i = 0; i < 30000; ++i) {
            const size_t list = random() % 10 < 6 ? 0 : random() % 5; // the first has more than the others
            const Row row{i, i * 0.5};
            expected[list].push_back(row);
            ASSERT_TRUE(spool.add(list, row));
        }
        ASSERT_EQ(spool.lists(), 5u);
        for (size_t list = 0; list < 5; ++list) {
            std::vector<Row> rows;
            ASSERT_TRUE(spool.read(list, rows));
            EXPECT_EQ(rows, expected[list]) << inMemory << ' ' << list;
            EXPECT_EQ(spool.count(list), expected[list].size());
            size_t next = 0;
            bool same = true;
            EXPECT_TRUE(spool.each(list, [&](const Row &row) { same = same && row == rows[next++]; }));
            EXPECT_TRUE(same && next == rows.size());
        }
    }
}

TEST(RowSpool, NothingIsLeftInTheFolder) {
    const QTemporaryDir folder;
    {
        RowSpool<Row> spool(folder.path(), sizeof(Row));
        EXPECT_TRUE(spool.add(0, {1, 1.0}));
    }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(RowSpool, WithoutRoomOnTheDiskItTellsSo) {
    RowSpool<Row> spool(QStringLiteral("/no/such/folder"), 2 * sizeof(Row));
    EXPECT_TRUE(spool.add(0, {1, 1.0})) << "it fits into memory";
    EXPECT_FALSE(spool.add(0, {2, 2.0}));
    EXPECT_TRUE(spool.error().startsWith("its rows cannot be kept in /no/such/folder: "))
        << qPrintable(spool.error());
}
