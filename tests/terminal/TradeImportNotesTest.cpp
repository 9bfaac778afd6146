#include "terminal/trade/TradeImportNotes.h"

#include <gtest/gtest.h>

using terminal::TradeImportNotes;

TEST(TradeImportNotesTest, TellsWhatWasTakenLeftOutAndWhy) {
    TradeImportNotes notes;
    int line = 0;
    notes.setLineSource([&line] { return line; });
    line = 2; // the first one holds headings
    notes.take();
    line = 3;
    notes.refuse("the time cannot be read");
    line = 4;
    notes.take();
    EXPECT_EQ(notes.tell(4), (QStringList{QStringLiteral("文件已读完：导入 2 条，略去 2 行"),
                                          QStringLiteral("第 1 行：没有账号、证券、价格、数量等字段"),
                                          QStringLiteral("第 3 行：the time cannot be read")}));
    EXPECT_EQ(notes.tell(0).size(), 1); // it is forgotten
}

TEST(TradeImportNotesTest, OnlyTheFirstTenLinesAreTold) {
    TradeImportNotes notes;
    EXPECT_EQ(notes.tell(500).size(), 1 + TradeImportNotes::kTold);
}
