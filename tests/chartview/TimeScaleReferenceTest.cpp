// The time scale of every market day, at many widths and of one to six days, against time_scale_reference.py, which
// works it out from clock times.

#include "chartview/TimeScalePlan.h"
#include "viewmodel/TradingSessions.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTime>

#include <gtest/gtest.h>

using namespace TC;

namespace {

const QVector<QPair<QString, ETradingDay>> kDays{{"night", ETradingDay::Night},
                                                 {"treasury", ETradingDay::TreasuryFutures},
                                                 {"commodity", ETradingDay::CommodityFutures},
                                                 {"hongkong", ETradingDay::HongKong},
                                                 {"overseas", ETradingDay::Overseas},
                                                 {"afterhours", ETradingDay::AfterHours},
                                                 {"longafternoon", ETradingDay::LongAfternoon},
                                                 {"stock", ETradingDay::Stock}};
constexpr int kStrip = 50;

struct ScaleCase {
    QString name;
    TradingDay day;
    int width = 0; ///< of the view
    int days = 1;
    int character = 6; ///< pixels of a character of a label
};

QVector<ScaleCase> allCases() {
    QVector<ScaleCase> cases;
    for (const auto &[name, kind] : kDays) {
        for (int width = 150; width <= 2600; width += 35) {
            for (int days = 1; days <= 6; ++days) {
                cases.append({name, tradingDay(kind), width, days, 5 + (width + days) % 4});
            }
        }
    }
    return cases;
}

QVector<TimeScaleDay> planOf(const ScaleCase &one) {
    TimeScaleInput input;
    input.sessions = one.day.sessions;
    input.dayWidth = (one.width - 2 * kStrip) / double(one.days);
    input.leftWidth = kStrip;
    input.dayCount = one.days;
    input.columnOfIndex = [&](int index) { return pixelOfIndex(input.dayWidth, one.day.pointCount, index); };
    input.timeOfIndex = [&](int index) {
        const int minute = minuteOfIndex(one.day, index);
        return minute == 1440 ? QStringLiteral("24:00")
                              : QTime(minute / 60, minute % 60).toString(QStringLiteral("hh:mm"));
    };
    input.dateOfDay = [](int daysAgo) { return QStringLiteral("24-03-%1").arg(15 - daysAgo); };
    input.textWidth = [&](const QString &text) { return one.character * text.size(); };
    return planTimeScale(input);
}

QJsonArray scaleReference(const QVector<ScaleCase> &cases) {
    QJsonArray questions;
    for (const ScaleCase &one : cases) {
        questions.append(
            QJsonObject{{"day", one.name}, {"width", one.width}, {"days", one.days}, {"char", one.character}});
    }
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/chartview/time_scale_reference.py")});
    python.write(QJsonDocument(questions).toJson(QJsonDocument::Compact));
    python.closeWriteChannel();
    EXPECT_TRUE(python.waitForFinished(60000)) << python.errorString().toStdString();
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    return QJsonDocument::fromJson(python.readAllStandardOutput()).array();
}

void expectDay(const TimeScaleDay &day, const QJsonObject &expected) {
    EXPECT_EQ(QJsonArray({day.clipLeft, day.clipWidth}), expected["clip"].toArray());
    const QJsonArray ticks = expected["ticks"].toArray();
    ASSERT_EQ(day.ticks.size(), ticks.size());
    for (int i = 0; i < ticks.size(); ++i) {
        EXPECT_DOUBLE_EQ(day.ticks[i], ticks[i].toDouble()) << "tick " << i;
    }
    const QJsonArray labels = expected["labels"].toArray();
    ASSERT_EQ(day.labels.size(), labels.size());
    for (int i = 0; i < labels.size(); ++i) {
        EXPECT_DOUBLE_EQ(day.labels[i].x, labels[i].toArray()[0].toDouble()) << "label " << i;
        EXPECT_EQ(day.labels[i].text, labels[i].toArray()[1].toString()) << "label " << i;
        EXPECT_EQ(day.labels[i].head, i == 0);
    }
}

TEST(TimeScaleReference, EveryMarketDayAtManyWidthsIsThatOfTheReference) {
    const QVector<ScaleCase> cases = allCases();
    const QJsonArray answers = scaleReference(cases);
    ASSERT_EQ(answers.size(), cases.size());
    int dropped = 0;
    for (int i = 0; i < cases.size() && !::testing::Test::HasFailure(); ++i) {
        const ScaleCase &one = cases[i];
        SCOPED_TRACE(
            QStringLiteral("%1, %2 pixels, %3 days").arg(one.name).arg(one.width).arg(one.days).toStdString());
        const QVector<TimeScaleDay> plan = planOf(one);
        const QJsonArray expected = answers[i].toArray();
        ASSERT_EQ(plan.size(), expected.size());
        for (int day = 0; day < plan.size(); ++day) {
            expectDay(plan[day], expected[day].toObject());
            dropped += plan[day].ticks.size() - plan[day].labels.size();
        }
    }
    EXPECT_GT(dropped, cases.size()) << "labels have to come too near";
}

} // namespace
