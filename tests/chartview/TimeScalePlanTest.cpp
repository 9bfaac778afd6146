#include "chartview/TimeScalePlan.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace TC {
namespace {

/// The usual stock day in 1102 pixels beside a strip of 50; every label is `textWidth` pixels wide.
TimeScaleInput stockDay(int textWidth) {
    TimeScaleInput input;
    input.sessions = {{570, 690}, {781, 900}};
    input.dayWidth = 1102.0;
    input.leftWidth = 50;
    input.columnOfIndex = [](int index) { return static_cast<int>(1100.0 / 240 * index) + 1; };
    input.timeOfIndex = [](int index) {
        const int minute = index <= 120 ? 570 + index : 781 + index - 121;
        return QStringLiteral("%1:%2")
            .arg(minute / 60, 2, 10, QLatin1Char('0'))
            .arg(minute % 60, 2, 10, QLatin1Char('0'));
    };
    input.dateOfDay = [](int daysAgo) { return QStringLiteral("24-03-%1").arg(15 - daysAgo); };
    input.textWidth = [textWidth](const QString &) { return textWidth; };
    return input;
}

QStringList textsOf(const TimeScaleDay &day) {
    QStringList texts;
    for (const TimeScaleLabel &label : day.labels) {
        texts.append(label.text);
    }
    return texts;
}

TEST(TimeScalePlan, OneDayHasATickEveryThirtyMinutes) {
    const auto days = planTimeScale(stockDay(30));
    ASSERT_EQ(days.size(), 1);
    EXPECT_EQ(days[0].ticks, (QVector<double>{50, 188, 326, 463, 601, 738, 876, 1013, 1151}));
    EXPECT_EQ(textsOf(days[0]),
              (QStringList{"09:30", "10:00", "10:30", "11:00", "11:30", "13:30", "14:00", "14:30", "15:00"}));
    EXPECT_EQ(days[0].clipLeft, 50);
    EXPECT_EQ(days[0].clipWidth, 1102);
}

TEST(TimeScalePlan, LabelsAreCentredAndTheLastEndsTwoPixelsBeforeTheEdge) {
    const auto labels = planTimeScale(stockDay(30))[0].labels;
    EXPECT_TRUE(labels.first().head);
    EXPECT_EQ(labels.first().x, 51);
    EXPECT_EQ(labels[1].x, 188 - 15);
    EXPECT_EQ(labels.last().x, 1151 - 30 - 2);
}

TEST(TimeScalePlan, LabelThatWouldComeTooNearIsDroppedWhileItsTickStands) {
    // Labels are 137 or 138 pixels apart: 100 wide with 48 between them, only every other one has room.
    const auto days = planTimeScale(stockDay(100));
    // Head 50..150 + 48 = 198; 10:00 would start at 138 and is dropped, 10:30 starts at 276.
    EXPECT_EQ(textsOf(days[0]), (QStringList{"09:30", "10:30", "11:30", "14:00", "15:00"}));
    EXPECT_EQ(days[0].ticks.size(), 9);
}

TEST(TimeScalePlan, HeadOfAFiveDayViewIsADateOldestFirst) {
    TimeScaleInput input = stockDay(30);
    input.dayWidth = 220.4;
    input.dayCount = 5;
    input.columnOfIndex = [](int index) { return static_cast<int>(218.4 / 240 * index) + 1; };
    const auto days = planTimeScale(input);
    ASSERT_EQ(days.size(), 5);
    EXPECT_EQ(days[0].labels.first().text, "24-03-11");
    EXPECT_EQ(days[4].labels.first().text, "24-03-15");
    EXPECT_EQ(days[1].clipLeft, 270); // 50 + 220.4
    EXPECT_EQ(days[1].clipWidth, 220);
    EXPECT_EQ(days[2].clipLeft, 490); // 50 + 440.8
}

TEST(TimeScalePlan, RestOfAMiddleSessionThatIsNotThirtyMinutesHasNoTick) {
    // (540, 615), (631, 690), (811, 900): 75, 60 and 90 minutes.
    TimeScaleInput input = stockDay(1);
    input.sessions = {{540, 615}, {631, 690}, {811, 900}};
    input.columnOfIndex = [](int index) { return index * 4; };
    input.timeOfIndex = [](int index) { return QString::number(index); };
    const auto day = planTimeScale(input)[0];
    // 30, 60, then 15 left out; 105, 135 (exactly 30 left); 165, 195, then the end.
    EXPECT_EQ(textsOf(day), (QStringList{"0", "30", "60", "105", "135", "165", "195", "225"}));
    EXPECT_EQ(day.ticks, (QVector<double>{50, 170, 290, 470, 590, 710, 830, 1151}));
}

TEST(TimeScalePlan, NoSessionsAndManyDaysAreHarmless) {
    TimeScaleInput input = stockDay(30);
    input.sessions.clear();
    input.dayCount = 1000000;
    EXPECT_EQ(planTimeScale(input).size(), 6);
    input.dayCount = 0;
    EXPECT_TRUE(planTimeScale(input).isEmpty());
}

/// A flag of 40 pixels in days of 220.4 beside a strip of 50.
QRect flagAt(int cursorX, int daysBefore, double dayWidth = 220.4) {
    TimeFlagInput input;
    input.cursorX = cursorX;
    input.leftWidth = 50;
    input.daysBefore = daysBefore;
    input.dayWidth = dayWidth;
    input.textWidth = 30;
    input.height = 20;
    return planTimeFlag(input);
}

TEST(TimeFlagPlan, FlagIsCentredAtTheCursorAndAsHighAsTheScale) {
    EXPECT_EQ(flagAt(100, 0), QRect(50 + 100 - 20, 0, 40, 20));
}

TEST(TimeFlagPlan, FlagStaysInsideTheDayUnderThePointerAtBothEnds) {
    EXPECT_EQ(flagAt(0, 0).x(), 50);
    EXPECT_EQ(flagAt(20, 0).x(), 50);
    EXPECT_EQ(flagAt(21, 0).x(), 51);
    EXPECT_EQ(flagAt(219, 0).x(), 270 - 40); // the day ends at 50 + 220.4
    EXPECT_EQ(flagAt(200, 0).x(), 230);
    EXPECT_EQ(flagAt(199, 0).x(), 229);
    EXPECT_EQ(flagAt(0, 2).x(), 490); // 50 + 440.8
    EXPECT_EQ(flagAt(219, 2).x(), 710 - 40); // 490 + 220.4
}

TEST(TimeScalePlan, WholePixelsAreTruncatedAndHeld) {
    EXPECT_EQ(wholePixel(12.9), 12);
    EXPECT_EQ(wholePixel(-12.9), -12);
    EXPECT_EQ(wholePixel(1e15), 1000000000);
    EXPECT_EQ(wholePixel(-1e300), -1000000000);
    EXPECT_EQ(wholePixel(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(TimeFlagPlan, FlagThatIsWiderThanItsDayBeginsAtTheDaysLeftEdge) {
    EXPECT_EQ(flagAt(10, 1, 25.0).x(), 75);
}

} // namespace
} // namespace TC
