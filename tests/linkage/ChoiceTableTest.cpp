#include "linkage/ChoiceTable.h"
#include "linkage/ChoiceGroup.h"

#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CStandardTable.h"
#include "tests/chartview/ChartFixture.h"

#include <memory>

using namespace TC;

namespace {

using Keys = std::set<std::string>;

class ChoiceTableTest : public tests::ChartFixture {
protected:
    ~ChoiceTableTest() override { delete mTable.widget(); }
    QList<bool> checked() const {
        QList<bool> found;
        for (int row = 0; row < mTable.widget()->rowCount(); ++row) {
            found.append(static_cast<GZ::CCheckBox *>(mTable.widget()->widgetAt(row, 0))->isChecked());
        }
        return found;
    }
    ChoiceTable mTable{5, {30, 60, 60}, QStringLiteral("some_table")};
};

TEST_F(ChoiceTableTest, EachKeyHasOneRowWithItsTextsAndABox) {
    EXPECT_TRUE(mTable.add({{"b", {"B", "bee"}}, {"a", {"A", "ay"}}, {"b", {"again", ""}}}));
    EXPECT_FALSE(mTable.add({{"a", {"A", "ay"}}}));
    EXPECT_FALSE(mTable.add({}));
    EXPECT_TRUE(mTable.add({{"a", {"A", "ay"}}, {"c", {"C"}}}));
    const GZ::CStandardTable &table = *mTable.widget();
    ASSERT_EQ(table.rowCount(), 3);
    EXPECT_EQ(table.textAt(0, 1), QStringLiteral("B"));
    EXPECT_EQ(table.textAt(1, 2), QStringLiteral("ay"));
    EXPECT_EQ(table.textAt(2, 1), QStringLiteral("C"));
    for (int row = 0; row < 3; ++row) {
        const auto *box = static_cast<GZ::CCheckBox *>(table.widgetAt(row, 0));
        EXPECT_EQ(box->id(), row);
        EXPECT_EQ(box->objectName(), QStringLiteral("some_table"));
    }
    EXPECT_TRUE(mTable.has("c"));
    EXPECT_FALSE(mTable.has("d"));
    EXPECT_TRUE(mTable.chosen().empty());
}

TEST_F(ChoiceTableTest, RowsStartChosenAsTold) {
    mTable.add({{"a", {}}});
    mTable.setStartsChosen(true);
    mTable.add({{"a", {}}, {"b", {}}});
    EXPECT_EQ(mTable.chosen(), Keys{"b"}) << "one that was there stays as it is";
    EXPECT_EQ(checked(), (QList<bool>{false, true}));
}

TEST_F(ChoiceTableTest, RowIsChosenAndTakenBackAndNoneBesideThem) {
    mTable.add({{"a", {}}, {"b", {}}});
    mTable.select(1, true);
    EXPECT_EQ(mTable.chosen(), Keys{"b"});
    mTable.select(1, true);
    mTable.select(-1, true);
    mTable.select(2, true);
    EXPECT_EQ(mTable.chosen(), Keys{"b"});
    mTable.select(1, false);
    EXPECT_TRUE(mTable.chosen().empty());
}

TEST_F(ChoiceTableTest, BoxesDecideWhatIsLeftToChooseAndWhatIsTurned) {
    mTable.add({{"a", {}}, {"b", {}}});
    mTable.select(0, true); // its box shows nothing of it
    EXPECT_TRUE(mTable.selectAll());
    EXPECT_EQ(mTable.chosen(), (Keys{"a", "b"}));
    EXPECT_FALSE(mTable.selectAll());
    mTable.select(0, false);
    mTable.revert();
    EXPECT_TRUE(mTable.chosen().empty());
    EXPECT_EQ(checked(), (QList<bool>{false, false}));
    mTable.revert();
    EXPECT_EQ(mTable.chosen(), (Keys{"a", "b"}));
}

TEST_F(ChoiceTableTest, BoxesAreMadeAsTheirRowsComeNear) {
    std::vector<ChoiceTable::Row> rows;
    for (int row = 0; row < 1000; ++row) {
        rows.push_back({std::to_string(row), {}});
    }
    mTable.add(rows);
    EXPECT_LT(mTable.widget()->findChildren<GZ::CCheckBox *>().size(), 200);
    EXPECT_TRUE(mTable.selectAll());
    EXPECT_EQ(mTable.chosen().size(), 1000u);
    auto *late = static_cast<GZ::CCheckBox *>(mTable.widget()->widgetAt(900, 0));
    EXPECT_TRUE(late->isChecked()) << "as it was chosen before it was made";
    late->setChecked(false);
    mTable.select(900, false);
    EXPECT_TRUE(mTable.selectAll());
    EXPECT_TRUE(late->isChecked());
    EXPECT_FALSE(mTable.selectAll());
    mTable.revert();
    EXPECT_TRUE(mTable.chosen().empty());
    EXPECT_FALSE(late->isChecked());
}

TEST_F(ChoiceTableTest, GroupChoosesWhatIsThereAndWhatComes) {
    ChoiceGroup group(QStringLiteral("group"), {1, 2, 3}, 0, {30, 60}, QStringLiteral("some_table"));
    const std::unique_ptr<QWidget> widget(group.widget());
    EXPECT_FALSE(group.setSelectAll(true)) << "there is nothing";
    group.table().add({{"a", {}}});
    EXPECT_EQ(group.table().chosen(), Keys{"a"});
    EXPECT_FALSE(group.setSelectAll(false));
    group.table().add({{"b", {}}});
    EXPECT_EQ(group.table().chosen(), Keys{"a"});
    EXPECT_TRUE(group.setSelectAll(true));
    EXPECT_EQ(group.table().chosen(), (Keys{"a", "b"}));
}

TEST_F(ChoiceTableTest, GroupKeepsWhatItsCheckBoxShows) {
    ChoiceGroup group(QStringLiteral("group"), {1, 2, 3}, 0, {30, 60}, QStringLiteral("some_table"));
    const std::unique_ptr<QWidget> widget(group.widget());
    group.load({{"another", true}}, "name");
    QMap<QString, bool> kept;
    group.store(kept, "name");
    EXPECT_EQ(kept, (QMap<QString, bool>{{"name", false}}));
    group.table().add({{"a", {}}});
    group.load({{"name", true}}, "name");
    group.store(kept, "name");
    EXPECT_TRUE(kept["name"]);
    EXPECT_TRUE(group.table().chosen().empty()) << "only what comes is chosen";
    group.table().add({{"b", {}}});
    EXPECT_EQ(group.table().chosen(), Keys{"b"});
}

} // namespace
