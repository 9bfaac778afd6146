#include "host/toolkit/EventPayloads.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

constexpr int kFirstSecond = 1710466260; ///< 2024-03-15 01:31:00 at UTC
constexpr int kLastSecond = 1710469260; ///< 50 minutes later

QDateTime atSecond(int second) {
    return QDateTime::fromSecsSinceEpoch(second);
}

} // namespace

TEST(EventPayloads, ASelectedStretchHasItsTwoIndexes) {
    const auto stretch = SelectedStretch::of(190, 3, 21);
    ASSERT_TRUE(stretch);
    EXPECT_EQ(stretch->start, 3);
    EXPECT_EQ(stretch->end, 21);
    EXPECT_FALSE(SelectedStretch::of(191, 3, 21));
}

TEST(EventPayloads, AStretchOfStatisticsIsReadFromItsText) {
    const auto stretch = StatisticStretch::of(191, 1, 7, QStringLiteral("51,1710466260,1710469260"));
    ASSERT_TRUE(stretch);
    EXPECT_EQ(stretch->graph, 7);
    EXPECT_EQ(stretch->startIndex, 1);
    EXPECT_EQ(stretch->endIndex, 51);
    EXPECT_EQ(stretch->start, atSecond(kFirstSecond));
    EXPECT_EQ(stretch->end, atSecond(kLastSecond));
    EXPECT_FALSE(StatisticStretch::of(191, 1, 7, QStringLiteral("51,1710466260")));
    EXPECT_FALSE(StatisticStretch::of(191, 1, 7, QStringLiteral("51,x,1710469260")));
    EXPECT_FALSE(StatisticStretch::of(191, 1, 7, QString()));
    EXPECT_FALSE(StatisticStretch::of(190, 1, 7, QStringLiteral("51,1710466260,1710469260")));
}

TEST(EventPayloads, TheMidnightThatEndsAnEveningIsNoMoment) {
    const auto stretch = StatisticStretch::of(191, 1, 7, QStringLiteral("51,1710466260,4294967295"));
    ASSERT_TRUE(stretch);
    EXPECT_FALSE(stretch->end.isValid());
}

TEST(EventPayloads, StretchesOfQuotesAndReplayAreMoments) {
    const auto quotes = QuotesStretch::of(219, kFirstSecond, kLastSecond);
    ASSERT_TRUE(quotes);
    EXPECT_EQ(quotes->start, atSecond(kFirstSecond));
    EXPECT_EQ(quotes->end, atSecond(kLastSecond));
    const auto replay = ReplayStretch::of(3268, kFirstSecond, kLastSecond, QStringLiteral("SH600000"));
    ASSERT_TRUE(replay);
    EXPECT_EQ(replay->start, atSecond(kFirstSecond));
    EXPECT_EQ(replay->end, atSecond(kLastSecond));
    EXPECT_EQ(replay->instrument, QStringLiteral("SH600000"));
    EXPECT_FALSE(QuotesStretch::of(3268, kFirstSecond, kLastSecond));
    EXPECT_FALSE(ReplayStretch::of(219, kFirstSecond, kLastSecond, QString()));
}

TEST(EventPayloads, AMovedBoundHasItsTime) {
    const QTime time(10, 30);
    const auto moved = MovedBound::of(3239, 1, &time);
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->bound, eRegionEnd);
    EXPECT_EQ(moved->time, time);
    EXPECT_FALSE(MovedBound::of(3239, 1, nullptr));
    EXPECT_FALSE(MovedBound::of(3240, 1, &time));
}

TEST(EventPayloads, AClosingPaneTellsWhoClosesIt) {
    const auto closing = PaneClosing::of(3020, 4, 1, QStringLiteral("MACD"));
    ASSERT_TRUE(closing);
    EXPECT_EQ(closing->pane, 4);
    EXPECT_EQ(closing->closer, eClosedByHost);
    EXPECT_EQ(closing->formula, QStringLiteral("MACD"));
    EXPECT_FALSE(PaneClosing::of(3023, 4, 1, QString()));
}

TEST(EventPayloads, ValuesChartsAndFiltersAreRead) {
    const auto last = LastValue::of(3072, QStringLiteral("10.25"));
    ASSERT_TRUE(last);
    EXPECT_DOUBLE_EQ(last->value, 10.25);
    EXPECT_FALSE(LastValue::of(3072, QStringLiteral("--")));
    EXPECT_FALSE(LastValue::of(3029, QStringLiteral("10.25")));
    const auto chart = AskedChart::of(3265, QStringLiteral("600000.SH"));
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->code, QStringLiteral("600000"));
    EXPECT_EQ(chart->market, QStringLiteral("SH"));
    EXPECT_FALSE(AskedChart::of(3265, QStringLiteral("600000")));
    EXPECT_FALSE(AskedChart::of(3265, QString()));
    EXPECT_TRUE(ChangedFilter::of(3262, 1)->isOn);
    EXPECT_FALSE(ChangedFilter::of(3262, 0)->isOn);
    EXPECT_FALSE(ChangedFilter::of(3254, 1));
}
