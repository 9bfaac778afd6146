#include "terminal/config/SavedView.h"
#include "terminal/config/ConfigService.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace terminal;

namespace {

SavedView someView() {
    SavedView view;
    view.document = QStringLiteral("{ \"index\" : [ \"KDJ\", \"MACD\" ] }");
    view.heights = {3, 1, 2};
    view.mainFormula = QStringLiteral("BOLL");
    view.days = 4;
    view.pace = 60.0;
    view.geometry = QByteArray("\x01\x00\xff\x7f", 4);
    return view;
}

class SavedViewTest : public ::testing::Test {
protected:
    QString path() const { return mFolder.filePath(QStringLiteral("config.json")); }
    std::optional<SavedView> readFrom(const QByteArray &text) {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
        file.close();
        return readSavedView(ConfigService(path()));
    }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(SavedViewTest, AStoreWithoutAViewHasNone) {
    EXPECT_FALSE(readSavedView(ConfigService(path())));
}

TEST_F(SavedViewTest, WhatWasWrittenComesBack) {
    {
        ConfigService config(path());
        writeSavedView(config, someView());
    }
    const std::optional<SavedView> read = readSavedView(ConfigService(path()));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, someView());
}

TEST_F(SavedViewTest, OtherPartsOfTheConfigurationStay) {
    ConfigService config(path());
    config.setValue("theme", "light");
    writeSavedView(config, someView());
    EXPECT_EQ(config.value("theme"), "light");
}

TEST_F(SavedViewTest, EveryDifferenceCounts) {
    const SavedView view = someView();
    for (int field = 0; field < 6; ++field) {
        SavedView other = view;
        switch (field) {
        case 0:
            other.document += ' ';
            break;
        case 1:
            other.heights[1] = 2;
            break;
        case 2:
            other.mainFormula.clear();
            break;
        case 3:
            other.days = 1;
            break;
        case 4:
            other.pace = 10.0;
            break;
        default:
            other.geometry.clear();
        }
        EXPECT_NE(view, other) << field;
    }
}

TEST_F(SavedViewTest, WhatCannotBeIsLeftAtItsDefault) {
    const std::optional<SavedView> read =
        readFrom(R"({"view": {"document": 7, "heights": [1, "x"], "mainFormula": [], "days": 99, "pace": -1,
                              "geometry": {}}})");
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->document.isEmpty());
    EXPECT_TRUE(read->heights.isEmpty());
    EXPECT_TRUE(read->mainFormula.isEmpty());
    EXPECT_EQ(read->days, SavedView::kMostDays);
    EXPECT_EQ(read->pace, 1.0);
    EXPECT_TRUE(read->geometry.isEmpty());
}

TEST_F(SavedViewTest, HeightsAreBounded) {
    EXPECT_TRUE(readFrom(R"({"view": {"heights": [2, 1001]}})")->heights.isEmpty());
    EXPECT_TRUE(readFrom(R"({"view": {"heights": [0]}})")->heights.isEmpty());
    QByteArray many = R"({"view": {"heights": [1)";
    for (int i = 0; i < SavedView::kMostPanes; ++i) {
        many += ", 1";
    }
    EXPECT_TRUE(readFrom(many + "]}}")->heights.isEmpty());
}

TEST_F(SavedViewTest, ADocumentWithoutEndIsNoDocument) {
    EXPECT_TRUE(
        readFrom("{\"view\": {\"document\": \"" + QByteArray((1 << 20) + 1, 'x') + "\"}}")->document.isEmpty());
}
