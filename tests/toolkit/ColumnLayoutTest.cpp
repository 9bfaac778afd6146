// How the columns of a table lie: what the user chose is told, taken over and taken back.

#include "toolkit/widgets/ColumnLayout.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QMouseEvent>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <memory>

namespace {

/// Columns a, b, c and d of 100 pixels each.
class ColumnLayoutTest : public testing::Test {
protected:
    ColumnLayoutTest() {
        mTable.setColumnCount(4);
        mTable.horizontalHeader()->setMinimumSectionSize(10); // a style has its own
        mTable.setHorizontalHeaderLabels({"a", "b", "c", "d"});
        for (int column = 0; column < 4; ++column) {
            mTable.setColumnWidth(column, 100);
        }
        mLayout = std::make_unique<GZ::ColumnLayout>(mTable);
        mLayout->reset();
    }
    QHeaderView *header() { return mTable.horizontalHeader(); }
    void mouse(QEvent::Type type) {
        QMouseEvent event(type, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(header()->viewport(), &event);
    }
    /// Sets a width with the mouse held on the headings, as a drag of the user's does.
    void drag(int column, int width) {
        mouse(QEvent::MouseButtonPress);
        mTable.setColumnWidth(column, width);
        mouse(QEvent::MouseButtonRelease);
    }
    QStringList seen() {
        QStringList names;
        for (const int column : mLayout->shown()) {
            names.append(mLayout->heading(column));
        }
        return names;
    }

    QTableWidget mTable;
    std::unique_ptr<GZ::ColumnLayout> mLayout;
};

TEST_F(ColumnLayoutTest, ColumnsAreFoundByTheirHeadings) {
    EXPECT_EQ(mLayout->columnOf("c"), 2);
    EXPECT_EQ(mLayout->columnOf("x"), -1);
    EXPECT_EQ(mLayout->heading(3), "d");
    EXPECT_EQ(mLayout->heading(4), "");
    EXPECT_EQ(seen(), (QStringList{"a", "b", "c", "d"}));
}

TEST_F(ColumnLayoutTest, NothingChosenIsNothingKept) {
    EXPECT_TRUE(mLayout->save().isEmpty());
    mTable.setColumnWidth(1, 150);
    EXPECT_FALSE(mLayout->isSized(1)) << "not by the mouse";
    EXPECT_TRUE(mLayout->save().isEmpty());
}

TEST_F(ColumnLayoutTest, OrderWidthsAndHiddenColumnsAreKept) {
    drag(1, 150);
    EXPECT_TRUE(mLayout->isSized(1));
    header()->moveSection(3, 0);
    mTable.hideColumn(2);
    EXPECT_EQ(mLayout->save(), (QJsonObject{{"order", QJsonArray{"d", "a", "b", "c"}},
                                            {"hidden", QJsonArray{"c"}},
                                            {"widths", QJsonObject{{"b", 150}}}}));
    EXPECT_EQ(seen(), (QStringList{"d", "a", "b"}));
}

TEST_F(ColumnLayoutTest, WhatIsKeptComesBackAndGoesAgain) {
    const QJsonObject kept{{"order", QJsonArray{"d", "a", "b", "c"}},
                           {"hidden", QJsonArray{"c"}},
                           {"widths", QJsonObject{{"b", 150}}}};
    mLayout->load(kept);
    EXPECT_EQ(seen(), (QStringList{"d", "a", "b"}));
    EXPECT_EQ(mTable.columnWidth(1), 150);
    EXPECT_EQ(mLayout->save(), kept);
    mLayout->restore();
    EXPECT_EQ(seen(), (QStringList{"a", "b", "c", "d"}));
    EXPECT_EQ(mTable.columnWidth(1), 100);
    EXPECT_TRUE(mLayout->save().isEmpty());
}

TEST_F(ColumnLayoutTest, AnotherLayoutReplacesTheOneBefore) {
    mLayout->load({{"hidden", QJsonArray{"a"}}, {"widths", QJsonObject{{"b", 150}}}});
    mLayout->load({{"hidden", QJsonArray{"d"}}});
    EXPECT_EQ(seen(), (QStringList{"a", "b", "c"}));
    EXPECT_EQ(mTable.columnWidth(1), 100);
}

TEST_F(ColumnLayoutTest, OneColumnStaysToBeSeen) {
    mLayout->load({{"hidden", QJsonArray{"a", "b", "c", "d"}}});
    EXPECT_EQ(seen(), QStringList("d"));
}

TEST_F(ColumnLayoutTest, WhatIsNoLayoutIsPassedOver) {
    mLayout->load({{"order", QJsonArray{"x", 7, "c", "c"}},
                   {"hidden", QJsonArray{"x", QJsonValue(), "b"}},
                   {"widths", QJsonObject{{"x", 50}, {"a", "wide"}, {"c", 5}, {"d", 1e9}}}});
    EXPECT_EQ(seen(), (QStringList{"c", "a", "d"}));
    EXPECT_EQ(mTable.columnWidth(0), 100) << "a text is no width";
    EXPECT_EQ(mTable.columnWidth(2), 20) << "the least";
    EXPECT_FALSE(mLayout->isSized(0));
    mLayout->load({{"order", 5}, {"hidden", "a"}, {"widths", QJsonArray{1}}});
    EXPECT_EQ(seen(), (QStringList{"a", "b", "c", "d"}));
}

TEST_F(ColumnLayoutTest, WidthOfTheLastColumnThatTakesTheRestIsNotTheUsers) {
    header()->setStretchLastSection(true);
    drag(3, 170);
    EXPECT_FALSE(mLayout->isSized(3));
    drag(0, 120);
    EXPECT_TRUE(mLayout->isSized(0));
}

TEST_F(ColumnLayoutTest, WidthUntilTheUserChoosesAnother) {
    mLayout->setDefaultWidth(1, 80);
    mLayout->setDefaultWidth(-1, 80);
    mLayout->setDefaultWidth(4, 80);
    EXPECT_EQ(mTable.columnWidth(1), 80);
    EXPECT_TRUE(mLayout->save().isEmpty());
    drag(1, 150);
    mLayout->restore();
    EXPECT_EQ(mTable.columnWidth(1), 80);
    drag(1, 150);
    mLayout->forgetSized();
    EXPECT_TRUE(mLayout->save().isEmpty());
}

} // namespace
