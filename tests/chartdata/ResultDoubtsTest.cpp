#include "chartdata/ResultDoubts.h"

#include "tests/support/Series.h"

#include <gtest/gtest.h>

#include <limits>

using namespace TC;
using tests::kDay;
using tests::makeMeta;
using tests::makePoint;
using tests::makeResult;
using tests::minuteTime;

namespace doubtstest {

/// 09:30 to 11:30 and 13:01 to 15:00.
const TradingDay kStockDay{{{570, 690}, {781, 900}}, 241};

std::vector<se::TimePosition> wholeDay() {
    std::vector<se::TimePosition> times;
    for (int i = 0; i < 241; ++i) {
        times.push_back(minuteTime(kDay, i <= 120 ? 570 + i : 660 + i));
    }
    return times;
}

FormulaResultPtr seriesAt(std::vector<se::TimePosition> times) {
    const std::size_t points = times.size();
    return makeResult(std::move(times), {std::vector<double>(points, 10.0)});
}

/// Kinds and words of all doubts, "kind: words".
QStringList doubts(const FormulaResultPtr &result, int lines = 1, const TradingDay &day = kStockDay) {
    QStringList found;
    for (const ResultDoubt &doubt : doubtsOfSeries(*makeMeta(lines), *result, day)) {
        found.append(QStringLiteral("%1: %2").arg(static_cast<int>(doubt.kind)).arg(doubt.words));
    }
    return found;
}

EDoubt onlyKind(const FormulaResultPtr &result, int lines = 1) {
    const std::vector<ResultDoubt> found = doubtsOfSeries(*makeMeta(lines), *result, kStockDay);
    EXPECT_EQ(found.size(), 1u);
    return found.empty() ? EDoubt::Close : found[0].kind;
}

TEST(ResultDoubts, AWholeDayIsSound) {
    EXPECT_EQ(doubts(seriesAt(wholeDay())), QStringList());
    EXPECT_EQ(doubts(seriesAt({})), QStringList());
}

TEST(ResultDoubts, ANightSessionIsSound) {
    const TradingDay night = tradingDay(ETradingDay::Night);
    std::vector<se::TimePosition> times;
    for (int i = 0; i < night.pointCount; ++i) {
        const int minute = minuteOfIndex(night, i);
        times.push_back(minuteTime(minute >= 18 * 60 ? kDay - 86400 : kDay, minute));
    }
    ASSERT_GT(times.size(), 300u);
    EXPECT_EQ(doubts(seriesAt(times), 1, night), QStringList());
}

TEST(ResultDoubts, MissingMinutesAreToldWithWhatTheyDo) {
    std::vector<se::TimePosition> times = wholeDay();
    times.erase(times.begin() + 5, times.begin() + 8); // 09:35, 09:36, 09:37
    const QStringList found = doubts(seriesAt(times));
    ASSERT_EQ(found.size(), 1);
    EXPECT_TRUE(found[0].contains("point 5 is of 09:38 but stands at 09:35")) << found[0].toStdString();
    EXPECT_TRUE(found[0].contains("3 minutes before it are missing"));
    EXPECT_TRUE(found[0].contains("with the close of the minute before"));
}

TEST(ResultDoubts, AMinuteThatIsThereTwiceShiftsToo) {
    std::vector<se::TimePosition> times = wholeDay();
    times.insert(times.begin() + 5, {times[4].first, 1}); // at a later sub-position: the order is sound
    EXPECT_EQ(onlyKind(seriesAt(times)), EDoubt::Gap);
    EXPECT_TRUE(doubts(seriesAt(times))[0].contains("1 points before it are too many"));
}

TEST(ResultDoubts, TimesThatAreNoMinuteEndsOfTheDay) {
    std::vector<se::TimePosition> times = wholeDay();
    times.insert(times.begin() + 121, minuteTime(kDay, 720)); // 12:00
    EXPECT_EQ(onlyKind(seriesAt(times)), EDoubt::Axis);
    EXPECT_TRUE(doubts(seriesAt(times))[0].contains("point 121 is of 12:00"));
    EXPECT_EQ(onlyKind(seriesAt({minuteTime(kDay, 570), {minuteTime(kDay, 571).first + 1, 0}})), EDoubt::Axis);
    const QStringList seconds = doubts(seriesAt({{(kDay + 570 * 60) * 1000LL + 30500, 0}}));
    ASSERT_EQ(seconds.size(), 1);
    EXPECT_TRUE(seconds[0].contains("09:30:30.500")) << seconds[0].toStdString();
}

TEST(ResultDoubts, TimesThatDoNotGoForward) {
    std::vector<se::TimePosition> times = {minuteTime(kDay, 570), minuteTime(kDay, 572), minuteTime(kDay, 571)};
    const std::vector<ResultDoubt> found = doubtsOfSeries(*makeMeta(1), *seriesAt(times), TradingDay());
    ASSERT_EQ(found.size(), 1u) << "nothing is known of the axis of this day";
    EXPECT_EQ(found[0].kind, EDoubt::Order);
    EXPECT_TRUE(found[0].words.contains("point 1 is of 09:32, point 2 of 09:31"));
    times = {minuteTime(kDay, 570), minuteTime(kDay, 570)};
    EXPECT_EQ(doubtsOfSeries(*makeMeta(1), *seriesAt(times), TradingDay()).size(), 1u) << "nor twice the same";
}

TEST(ResultDoubts, ShapesThatDoNotFit) {
    EXPECT_EQ(onlyKind(seriesAt(wholeDay()), 2), EDoubt::Shape);
    EXPECT_TRUE(doubts(seriesAt(wholeDay()), 2)[0].contains("mValues has 1 lines, the description 2"));

    FormulaResultPtr result = seriesAt(wholeDay());
    result->mValues[0].pop_back();
    EXPECT_TRUE(doubts(result).value(0).contains("mValues of line 0 has 240 points, mTimes has 241"));
    for (const int list : {0, 1, 2, 3}) {
        result = seriesAt(wholeDay());
        if (list == 0) {
            result->mExtra1[0].resize(3);
        } else if (list == 1) {
            result->mTexts[0].resize(3);
        } else if (list == 2) {
            result->mExtra2[0].resize(3);
        } else {
            result->mValid.clear();
        }
        EXPECT_EQ(onlyKind(result), EDoubt::Shape) << list;
    }
}

TEST(ResultDoubts, ListsThatAreNotThereAreNone) {
    const FormulaResultPtr result = seriesAt(wholeDay());
    result->mExtra1.clear();
    result->mTexts[0].clear();
    result->mExtra2.clear();
    result->mPointTags.clear();
    EXPECT_EQ(doubts(result), QStringList());
}

TEST(ResultDoubts, AnyNumberIsATime) {
    for (const qint64 time :
         {std::numeric_limits<qint64>::min(), qint64(-1), std::numeric_limits<qint64>::max()}) {
        EXPECT_EQ(onlyKind(seriesAt({{time, 0}})), EDoubt::Axis);
    }
}

/// Kinds of doubt of a point behind 09:30, 09:31 and 09:33.
std::vector<EDoubt> kindsOfPoint(int minute, std::vector<double> values) {
    se::RPCFormulaResultCache series;
    series.meta = *makeMeta(1);
    series.result = *seriesAt({minuteTime(kDay, 570), minuteTime(kDay, 571), minuteTime(kDay, 573)});
    std::vector<EDoubt> kinds;
    for (const ResultDoubt &doubt :
         doubtsOfPoint(series, *makePoint(minuteTime(kDay, minute), std::move(values)), kStockDay)) {
        kinds.push_back(doubt.kind);
    }
    return kinds;
}

TEST(ResultDoubts, APointHasAPlaceAValueForEachLineAndFollowsTheLastMinute) {
    EXPECT_EQ(kindsOfPoint(573, {1.0}), std::vector<EDoubt>()) << "changed";
    EXPECT_EQ(kindsOfPoint(571, {1.0}), std::vector<EDoubt>()) << "changed later";
    EXPECT_EQ(kindsOfPoint(573, {}), std::vector<EDoubt>{EDoubt::Shape});
    EXPECT_EQ(kindsOfPoint(572, {1.0}), std::vector<EDoubt>{EDoubt::Order})
        << "the series has none of that minute";
    EXPECT_EQ(kindsOfPoint(569, {1.0}), std::vector<EDoubt>{EDoubt::Order});
    EXPECT_EQ(kindsOfPoint(574, {1.0}), std::vector<EDoubt>{EDoubt::Gap}) << "a minute is missing since before";
    EXPECT_EQ(kindsOfPoint(700, {1.0}), std::vector<EDoubt>{EDoubt::Axis});
}

} // namespace doubtstest
