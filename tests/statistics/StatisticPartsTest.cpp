// The arithmetic under the dialogs: places, colours, times and texts.

#include "statistics/OrderMoment.h"
#include "statistics/RegionFigure.h"
#include "statistics/StageRequest.h"
#include "statistics/StatisticLayout.h"
#include "statistics/StretchClock.h"

#include <QDateTime>
#include <QStringList>

#include <gtest/gtest.h>

using namespace TC;

namespace {

TEST(StatisticLayout, OrdinaryDialogBeginsWithTheTimes) {
    const StatisticLayout layout(false, 90);
    EXPECT_EQ(layout.startLabel(), QRect(23, 50, 55, 24));
    EXPECT_EQ(layout.startEdit(), QPoint(78, 50));
    EXPECT_EQ(layout.endLabel(), QRect(163, 50, 55, 24)); // 78 + 80 + 5
    EXPECT_EQ(layout.endEdit(), QPoint(218, 50)); // 163 + 55
    EXPECT_EQ(layout.count(), QRect(23, 79, 90, 24));
}

TEST(StatisticLayout, ReplayPutsTabsAboveEverything) {
    const StatisticLayout layout(true, 90);
    EXPECT_EQ(layout.tabs(), QPoint(23, 50));
    EXPECT_EQ(layout.startLabel(), QRect(23, 79, 55, 24));
    EXPECT_EQ(layout.liveCheck(), QPoint(303, 80)); // 218 + 80 + 5, a pixel lower
    EXPECT_EQ(layout.count(), QRect(23, 108, 90, 24));
    EXPECT_EQ(layout.figure(0), QRect(23, 137, 104, 24));
    EXPECT_EQ(layout.plate(), QPoint(23, 238)); // the fourth row at 209
}

TEST(StatisticLayout, ButtonsFollowTheCountAtFivePixels) {
    const StatisticLayout layout(false, 90);
    EXPECT_EQ(layout.button(0), QPoint(118, 80)); // 23 + 90 + 5
    EXPECT_EQ(layout.button(1), QPoint(188, 80)); // 118 + 65 + 5
}

TEST(StatisticLayout, FiguresStandInThreeColumnsAndFourRows) {
    const StatisticLayout layout(false, 90);
    EXPECT_EQ(layout.figure(0), QRect(23, 108, 104, 24));
    EXPECT_EQ(layout.figure(1), QRect(127, 108, 104, 24));
    EXPECT_EQ(layout.figure(2), QRect(231, 108, 104, 24));
    EXPECT_EQ(layout.figure(3), QRect(23, 132, 104, 24));
    EXPECT_EQ(layout.figure(8), QRect(231, 156, 104, 24));
    EXPECT_EQ(layout.figure(9), QRect(23, 180, 104, 24));
    EXPECT_EQ(layout.figure(10), QRect(127, 180, 104, 24));
    EXPECT_EQ(layout.plate(), QPoint(23, 209));
}

TEST(RegionFigure, LabelsStandInTheOrderOfTheFigures) {
    QStringList labels;
    for (int i = 0; i < kRegionFigures; ++i) {
        labels.append(figureLabel(i));
    }
    EXPECT_EQ(
        labels.join(QLatin1Char(' ')),
        QStringLiteral("起始价: 最高价: 最低价: 最终价: 总手: 涨跌幅: 均价: 振幅: 换手率: 金额: 大盘涨跌幅:"));
    EXPECT_EQ(figureLabel(-1), QString());
    EXPECT_EQ(figureLabel(11), QString());
}

TEST(RegionFigure, HighAndLowAreBothInTheColourOfARise) {
    const QString rise = QStringLiteral("ic_clr_index_default_rise");
    EXPECT_EQ(figureColorKey(1, QStringLiteral("10.50")), rise);
    EXPECT_EQ(figureColorKey(2, QStringLiteral("-9.50")), rise);
}

TEST(RegionFigure, ColourOfTheMarketChangeTellsItsSign) {
    EXPECT_EQ(figureColorKey(10, QStringLiteral("-0.01%")), QStringLiteral("ic_clr_index_default_fall"));
    EXPECT_EQ(figureColorKey(10, QStringLiteral("0.00%")), QStringLiteral("clr_text_light_default"));
    EXPECT_EQ(figureColorKey(10, QStringLiteral("0.01%")), QStringLiteral("ic_clr_index_default_rise"));
    EXPECT_EQ(figureColorKey(10, QStringLiteral("非法值")), QStringLiteral("ic_clr_index_default_rise"));
}

TEST(RegionFigure, OtherFiguresHaveTheColourOfText) {
    for (const int position : {0, 3, 4, 5, 6, 7, 8, 9}) {
        EXPECT_EQ(figureColorKey(position, QStringLiteral("-1.00%")), QStringLiteral("clr_text_light_default"));
    }
}

kvservice::COrderDetail orderAt(const std::string &date, const std::string &time) {
    kvservice::COrderDetail order;
    order.mDate = date;
    order.mTime = time;
    return order;
}

qint64 local(int year, int month, int day, int hour, int minute, int second) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second)).toSecsSinceEpoch();
}

TEST(OrderMoment, TimeIsReadWithColonsAndWithout) {
    EXPECT_EQ(orderMoment(orderAt("20240315", "09:31:07")), local(2024, 3, 15, 9, 31, 7));
    EXPECT_EQ(orderMoment(orderAt("20240315", "093107")), local(2024, 3, 15, 9, 31, 7));
    EXPECT_EQ(orderMoment(orderAt("20231229", "00:00:00")), local(2023, 12, 29, 0, 0, 0));
}

TEST(OrderMoment, WhatIsNoDateAndTimeIsNoMoment) {
    for (const auto &[date, time] : std::vector<std::pair<std::string, std::string>>{
             {"", ""},
             {"20240315", ""},
             {"", "09:31:07"},
             {"20240230", "09:31:07"},
             {"240315", "093107"}, // no year of the first century either
             {"20240315", "24:00:00"},
             {"20240315", "9:31"},
             {"2024-03-15", "09:31:07"},
             {"\xff\xfe", "\xff"}}) {
        EXPECT_FALSE(orderMoment(orderAt(date, time))) << date << " " << time;
    }
}

TEST(StretchClock, SecondsAndTimesOfDayMeetAgain) {
    const qint64 second = local(2024, 3, 15, 14, 59, 58);
    EXPECT_EQ(dateOf(second), QDate(2024, 3, 15));
    EXPECT_EQ(clockOf(second), QTime(14, 59, 58));
    EXPECT_EQ(secondOf(dateOf(second), clockOf(second)), second);
    EXPECT_EQ(secondOf(QDate(), QTime(9, 30)), 4294967295LL);
}

TEST(StageRequest, FieldsAreJoinedByCommas) {
    StageRequest request;
    request.start = 1710466200;
    request.end = 1710468000;
    request.type = -3;
    request.param = 18446744073709551615ull;
    request.criterion = 7;
    request.criterionText = QStringLiteral("阶段平均价");
    EXPECT_EQ(request.text(), QStringLiteral("1710466200,1710468000,-3,18446744073709551615,7,阶段平均价"));
}

} // namespace
