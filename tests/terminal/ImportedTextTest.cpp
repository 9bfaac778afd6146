// What an import says of itself in the status line, however many instruments a file has.

#include "terminal/app/ImportJob.h"
#include "terminal/market/MarketDate.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

ImportOutcome outcomeOf(int instruments) {
    ImportOutcome outcome;
    for (int i = 0; i < instruments; ++i) {
        ImportedBars imported;
        imported.key = QStringLiteral("SH%1").arg(600000 + i);
        imported.firstDay = dayOf(QDate(2026, 11, 18));
        imported.lastDay = dayOf(QDate(2026, 11, 19));
        imported.bars = 5;
        outcome.instruments.push_back(imported);
    }
    return outcome;
}

} // namespace

TEST(ImportedText, TellsEachOfAFewInstruments) {
    EXPECT_EQ(importedText(outcomeOf(1)),
              QStringLiteral("已导入 SH600000 2026-11-18 至 2026-11-19，5 根分钟线"));
    const QString ten = importedText(outcomeOf(10));
    EXPECT_TRUE(ten.contains("SH600009")) << qPrintable(ten);
    EXPECT_FALSE(ten.contains(QStringLiteral("另有"))) << qPrintable(ten);
}

TEST(ImportedText, OfManyTellsTheFirstAndHowManyMore) {
    const QString text = importedText(outcomeOf(20000));
    EXPECT_TRUE(text.endsWith(QStringLiteral("；另有 19990 个证券，99950 根分钟线")))
        << qPrintable(text.right(80));
    EXPECT_LT(text.size(), 1000);
}
