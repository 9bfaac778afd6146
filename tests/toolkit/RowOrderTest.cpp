// How rows of a table move: as a whole, with what belongs to them.

#include "host/toolkit/CStandardTable.h"
#include "tests/chartview/ChartFixture.h"

#include <QItemSelectionModel>
#include <QLabel>

using GZ::CStandardTable;

namespace {

class RowOrderTest : public tests::ChartFixture {
protected:
    RowOrderTest() { mTable.setHeaders({"key", "value"}); }
    void add(const QStringList &keys) {
        int row = mTable.addRows(keys.size());
        for (const QString &key : keys) {
            mTable.setText(row, 0, key);
            mTable.setWidget(row++, 1, new QLabel(key));
        }
    }
    QStringList keys() const {
        QStringList found;
        for (int row = 0; row < mTable.rowCount(); ++row) {
            found.append(mTable.textAt(row, 0));
            EXPECT_EQ(mTable.textAt(row, 1), found.last()) << "the widget of the row";
        }
        return found;
    }
    QStringList selected() const {
        QStringList found;
        for (const QModelIndex &index : mTable.selectionModel()->selectedRows()) {
            found.append(mTable.textAt(index.row(), 0));
        }
        found.sort();
        return found;
    }
    CStandardTable mTable{1, 0};
};

TEST_F(RowOrderTest, WidgetsAndSelectionMoveWithTheirRows) {
    add({"b", "d", "a", "c"});
    mTable.selectRow(1);
    mTable.sortRows(0, Qt::AscendingOrder);
    EXPECT_EQ(keys(), (QStringList{"a", "b", "c", "d"}));
    EXPECT_EQ(selected(), QStringList("d"));
    mTable.sortRows(0, Qt::DescendingOrder);
    EXPECT_EQ(keys(), (QStringList{"d", "c", "b", "a"}));
    EXPECT_EQ(selected(), QStringList("d"));
    mTable.sortRows(-1, Qt::AscendingOrder);
    EXPECT_EQ(keys(), (QStringList{"b", "d", "a", "c"}));
}

TEST_F(RowOrderTest, RearrangedRowsCountAsAddedInThatOrder) {
    add({"a", "b", "c"});
    mTable.rearrangeRows({2, 0, 1});
    EXPECT_EQ(keys(), (QStringList{"c", "a", "b"}));
    add({"d"});
    mTable.sortRows(0, Qt::AscendingOrder);
    mTable.sortRows(-1, Qt::AscendingOrder);
    EXPECT_EQ(keys(), (QStringList{"c", "a", "b", "d"}));
}

TEST_F(RowOrderTest, RearrangedRowsStaySorted) {
    add({"a", "b", "c"});
    mTable.sortRows(0, Qt::DescendingOrder);
    mTable.rearrangeRows({1, 2, 0});
    EXPECT_EQ(keys(), (QStringList{"c", "b", "a"}));
    mTable.sortRows(-1, Qt::AscendingOrder);
    EXPECT_EQ(keys(), (QStringList{"b", "a", "c"}));
}

TEST_F(RowOrderTest, TruncatedRowsGoAndTheOthersStay) {
    add({"a", "b", "c"});
    mTable.selectRow(0);
    mTable.truncateRows(5);
    mTable.truncateRows(2);
    EXPECT_EQ(keys(), (QStringList{"a", "b"}));
    EXPECT_EQ(selected(), QStringList("a"));
    mTable.truncateRows(-1);
    EXPECT_EQ(mTable.rowCount(), 0);
    EXPECT_EQ(mTable.addRows(0), 0);
}

TEST_F(RowOrderTest, TableWithoutColumnsHasRowsAllTheSame) {
    CStandardTable table(1, 0);
    EXPECT_EQ(table.addRows(3), 0);
    EXPECT_EQ(table.rowCount(), 3);
    table.rearrangeRows({2, 1, 0});
    table.sortRows(0, Qt::AscendingOrder);
    EXPECT_EQ(table.saveConfigStr(), QString());
}

} // namespace
