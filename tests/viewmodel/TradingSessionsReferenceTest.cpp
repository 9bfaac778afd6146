// The whole axis against axis_reference.py, which works it out in another way: every minute, every position and
// every pixel of a range of widths, on all built-in days.

#include "viewmodel/TradingSessions.h"

#include <QMap>
#include <QProcess>

#include <gtest/gtest.h>

using namespace TC;

namespace {

using Numbers = QVector<int>;

const QVector<QPair<QString, ETradingDay>> kDays{{"night", ETradingDay::Night},
                                                 {"treasury", ETradingDay::TreasuryFutures},
                                                 {"commodity", ETradingDay::CommodityFutures},
                                                 {"hongkong", ETradingDay::HongKong},
                                                 {"overseas", ETradingDay::Overseas},
                                                 {"afterhours", ETradingDay::AfterHours},
                                                 {"longafternoon", ETradingDay::LongAfternoon},
                                                 {"stock", ETradingDay::Stock}};

const QVector<double> kWidths{
    0.0,   0.5,   1.0,   2.0,   2.25,  3.0,    10.0,   57.5, 100.0, 241.0, 242.0, 243.0, 333.0 + 1.0 / 3.0,
    482.0, 558.0, 700.0, 977.0, 978.5, 1200.0, 1919.75};

/// The lines of the script: key to numbers. Run once.
const QMap<QString, Numbers> &reference() {
    static const QMap<QString, Numbers> answers = [] {
        QProcess python;
        python.start(QStringLiteral("python3"),
                     {QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/viewmodel/axis_reference.py")});
        EXPECT_TRUE(python.waitForFinished(60000)) << python.errorString().toStdString();
        EXPECT_EQ(python.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
        QMap<QString, Numbers> lines;
        for (const QString &line : QString::fromUtf8(python.readAllStandardOutput()).split('\n')) {
            Numbers &numbers = lines[line.section(':', 0, 0)];
            for (const QString &number : line.section(':', 1).split(' ', Qt::SkipEmptyParts)) {
                numbers.append(number.toInt());
            }
        }
        return lines;
    }();
    return answers;
}

/// Compares a line of the script with an operation over a range that begins at `first`.
template <class Operation> void expectSame(const QString &key, int first, int end, Operation operation) {
    ASSERT_TRUE(reference().contains(key)) << key.toStdString();
    const Numbers expected = reference().value(key);
    ASSERT_EQ(expected.size(), end - first) << key.toStdString();
    for (int argument = first; argument < end; ++argument) {
        ASSERT_EQ(operation(argument), expected[argument - first]) << key.toStdString() << " at " << argument;
    }
}

TEST(TradingSessionsReference, SessionsAndPositionCountsAreThoseOfTheReference) {
    for (const auto &[name, kind] : kDays) {
        const TradingDay day = tradingDay(kind);
        Numbers ends;
        for (const auto &session : day.sessions) {
            ends << session.first << session.second;
        }
        EXPECT_EQ(ends, reference().value("sessions " + name)) << name.toStdString();
        EXPECT_EQ(Numbers{day.pointCount}, reference().value("count " + name)) << name.toStdString();
    }
}

TEST(TradingSessionsReference, EveryPositionHasTheMinuteOfTheReference) {
    for (const auto &[name, kind] : kDays) {
        const TradingDay day = tradingDay(kind);
        expectSame("minutes " + name, 0, day.pointCount + 30,
                   [&](int index) { return minuteOfIndex(day, index); });
    }
}

TEST(TradingSessionsReference, EveryMinuteOfADayHasThePositionOfTheReference) {
    for (const auto &[name, kind] : kDays) {
        const TradingDay day = tradingDay(kind);
        expectSame("index " + name, -70, 1500,
                   [&](int minute) { return indexOfMinute(day.sessions, minute, false); });
        expectSame("night index " + name, -70, 1500,
                   [&](int minute) { return indexOfMinute(day.sessions, minute, true); });
    }
}

TEST(TradingSessionsReference, EveryPositionHasThePixelOfTheReferenceAtAllWidths) {
    ASSERT_EQ(reference().value("widths"), Numbers{static_cast<int>(kWidths.size())});
    for (const auto &[name, kind] : kDays) {
        const int count = tradingDay(kind).pointCount;
        for (int i = 0; i < kWidths.size(); ++i) {
            expectSame(QStringLiteral("pixel %1 %2").arg(name).arg(i), -3, count + 3,
                       [&](int index) { return pixelOfIndex(kWidths[i], count, index); });
        }
    }
}

TEST(TradingSessionsReference, EveryPixelHasThePositionOfTheReferenceAtAllWidths) {
    for (const auto &[name, kind] : kDays) {
        const int count = tradingDay(kind).pointCount;
        for (int i = 0; i < kWidths.size(); ++i) {
            expectSame(QStringLiteral("at pixel %1 %2").arg(name).arg(i), -5, int(kWidths[i]) + 6,
                       [&](int pixel) { return indexOfPixel(kWidths[i], count, pixel); });
        }
    }
}

} // namespace
