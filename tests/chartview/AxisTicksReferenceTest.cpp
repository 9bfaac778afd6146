// Random strips against ticks_reference.py, which works them out in another way.

#include "chartview/AxisLabels.h"
#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace TC;

namespace {

struct StripCase {
    AxisLabelInput labels;
    int height = 0;
    AxisRange range;
    AxisRange volumeRange;
    double close = 0.0;
    double step = 0.01;
    QVector<QPair<int, int>> sessions;
};

class StripCases {
public:
    StripCase next() {
        StripCase made;
        made.labels.displayType = one({0, 0, 1}) == 0 ? EIndexDisplayType::Main : EIndexDisplayType::Sub;
        made.labels.right = one({0, 1}) == 1;
        made.labels.volume = one({0, 1}) == 1;
        made.labels.width = whole(40, 80);
        made.labels.fontHeight = whole(8, 30);
        made.height = one({whole(0, 150), whole(0, 800), whole(800, 3000)});
        made.range = range(one({1, 100, 99990, 100000, 5000000}));
        made.volumeRange = {amount(one({3000, 50000, 20000000, 900000000})), one({0, 0, whole(1, 100)})};
        made.close = amount(100);
        made.labels.lastClose = one({0.0, 1e-6, 1.0, 1.0}) * (made.range.first + made.range.second) / 2;
        made.step = one({0.01, 0.001, 0.2, 1.0, 0.05, 0.0001, kUnsetValue});
        made.labels.tickDecimals = decimals(made.step);
        const int precision = whole(-3, 4);
        if (precision >= 0) {
            made.labels.formulaPrecision = precision;
        }
        made.sessions = sessions();
        return made;
    }

private:
    template <class T> T one(std::initializer_list<T> choices) {
        return choices.begin()[whole(0, static_cast<int>(choices.size()) - 1)];
    }
    int whole(int least, int most) { return std::uniform_int_distribution<int>(least, most)(mRandom); }
    double amount(double most) { return std::uniform_real_distribution<double>(0.0, most)(mRandom); }
    AxisRange range(double most) {
        const double low = amount(most) - one({0.0, most / 2});
        return {low + amount(most / 10), low};
    }
    QVector<QPair<int, int>> sessions() {
        QVector<QPair<int, int>> sessions;
        int minute = whole(0, 600);
        for (int count = whole(0, 5); count > 0; --count) {
            const int last = minute + one({0, 29, 30, 31, 59, 60, whole(0, 300)});
            sessions.append({minute, last});
            minute = last + whole(1, 120);
        }
        return sessions;
    }
    std::mt19937 mRandom{20240315};
};

QVector<AxisTick> ticksOf(const StripCase &strip) {
    const int count = axisTickCount(strip.height, strip.labels.fontHeight);
    if (strip.labels.displayType == EIndexDisplayType::Sub) {
        return subPaneTicks(strip.height, count, strip.range);
    }
    QVector<AxisTick> ticks =
        mainPaneTicks(strip.height, count, strip.labels.volume, strip.range, strip.volumeRange);
    if (ticks.isEmpty()) {
        ticks.append({strip.close, strip.height / 2});
    }
    return ticks;
}

QJsonObject toJson(const StripCase &strip) {
    QJsonArray sessions;
    for (const auto &session : strip.sessions) {
        sessions.append(QJsonArray{session.first, session.second});
    }
    return {{"main", strip.labels.displayType == EIndexDisplayType::Main},
            {"right", strip.labels.right},
            {"volume", strip.labels.volume},
            {"width", strip.labels.width},
            {"font", strip.labels.fontHeight},
            {"height", strip.height},
            {"max", strip.range.first},
            {"min", strip.range.second},
            {"volMax", strip.volumeRange.first},
            {"volMin", strip.volumeRange.second},
            {"close", strip.close},
            {"last", strip.labels.lastClose},
            {"tick", strip.step},
            {"precision", strip.labels.formulaPrecision ? QJsonValue(*strip.labels.formulaPrecision)
                                                        : QJsonValue(QJsonValue::Null)},
            {"sessions", sessions}};
}

QJsonArray stripReference(const QJsonArray &cases) {
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/chartview/ticks_reference.py")});
    python.write(QJsonDocument(cases).toJson(QJsonDocument::Compact));
    python.closeWriteChannel();
    EXPECT_TRUE(python.waitForFinished(60000)) << python.errorString().toStdString();
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    return QJsonDocument::fromJson(python.readAllStandardOutput()).array();
}

void expectTicks(const QVector<AxisTick> &ticks, const QJsonArray &expected) {
    ASSERT_EQ(ticks.size(), expected.size());
    for (int i = 0; i < ticks.size(); ++i) {
        const QJsonArray tick = expected[i].toArray();
        EXPECT_NEAR(ticks[i].value, tick[0].toDouble(), 1e-9 * std::fabs(ticks[i].value) + 1e-12);
        EXPECT_EQ(ticks[i].y, tick[1].toInt());
    }
}

void expectLabels(const QVector<AxisLabel> &labels, const QJsonArray &expected) {
    ASSERT_EQ(labels.size(), expected.size());
    for (int i = 0; i < labels.size(); ++i) {
        const QJsonArray label = expected[i].toArray();
        const QJsonArray rect = label[0].toArray();
        EXPECT_EQ(labels[i].rect, QRect(rect[0].toInt(), rect[1].toInt(), rect[2].toInt(), rect[3].toInt()));
        EXPECT_EQ(labels[i].alignment, label[1].toInt());
        EXPECT_EQ(GZ::formatDoubleNumber(labels[i].number, labels[i].decimals, labels[i].flags, false, "-"),
                  label[2].toString())
            << labels[i].number;
        EXPECT_EQ(QString(labels[i].color), label[3].toString());
    }
}

TEST(AxisTicksReference, RandomStripsAreThoseOfTheReference) {
    constexpr int count = 3000;
    StripCases random;
    QVector<StripCase> cases;
    QJsonArray questions;
    for (int i = 0; i < count; ++i) {
        cases.append(random.next());
        questions.append(toJson(cases.last()));
    }
    const QJsonArray answers = stripReference(questions);
    ASSERT_EQ(answers.size(), count);
    int labelled = 0;
    for (int i = 0; i < count && !::testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE(QJsonDocument(questions[i].toObject()).toJson(QJsonDocument::Compact).toStdString());
        const QJsonObject answer = answers[i].toObject();
        StripCase strip = cases[i];
        strip.labels.ticks = ticksOf(strip);
        expectTicks(strip.labels.ticks, answer["ticks"].toArray());
        const QVector<AxisLabel> labels = planAxisLabels(strip.labels);
        expectLabels(labels, answer["labels"].toArray());
        labelled += labels.size();
        QJsonArray lines;
        for (int line : timeLineIndexes(strip.sessions)) {
            lines.append(line);
        }
        EXPECT_EQ(lines, answer["lines"].toArray());
    }
    EXPECT_GT(labelled, count) << "the cases must not be trivial";
}

} // namespace
