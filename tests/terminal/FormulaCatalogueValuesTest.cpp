// The formulas of the catalogue against values that reference_catalogue.py has worked out.

#include "terminal/formula/FormulaCatalogue.h"

#include "tests/terminal/Samples.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace terminal;
using tests::kMinute;
using tests::kOpen;

namespace {

QList<QByteArray> rows(const char *name) {
    QFile file(QString(TIMESHARE_SOURCE_DIR "/tests/terminal/data/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    QList<QByteArray> lines = file.readAll().split('\n');
    lines.removeLast();
    return lines;
}

/// What the reference values took for the net value of a fund and the close of its index on the day before.
constexpr double kNetValue = 1.2345;
constexpr double kIndexClose = 4000.0;

/// The minutes of the day, and of the index.
struct Days {
    MinuteBars own;
    MinuteBars index;
};

Days readDays() {
    Days days;
    MinuteBars &bars = days.own;
    QList<QByteArray> lines = rows("catalogue_day.csv");
    lines.removeFirst();
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(',');
        MinuteBar bar;
        bar.time = kOpen + static_cast<qint64>(bars.size()) * kMinute;
        bar.open = fields[0].toDouble();
        bar.high = fields[1].toDouble();
        bar.low = fields[2].toDouble();
        bar.price = fields[3].toDouble();
        bar.average = fields[4].toDouble();
        bar.volume = fields[5].toDouble();
        bar.amount = fields[6].toDouble();
        bars.push_back(bar);
        if (!fields[7].isEmpty()) {
            MinuteBar index;
            index.time = bar.time;
            index.price = fields[7].toDouble();
            days.index.push_back(index);
        }
    }
    return days;
}

/// One line of a formula: values at some points, an empty text for no value.
struct ExpectedLine {
    QString formula;
    int line = 0;
    QList<QByteArray> values;
};

struct Expected {
    std::vector<size_t> points;
    std::vector<ExpectedLine> lines;
};

Expected readExpected() {
    Expected expected;
    const QList<QByteArray> lines = rows("catalogue_values.csv");
    for (const QByteArray &point : lines[0].split(',').mid(2)) {
        expected.points.push_back(point.toUInt());
    }
    for (const QByteArray &text : lines.mid(1)) {
        const QList<QByteArray> fields = text.split(',');
        expected.lines.push_back({QString::fromUtf8(fields[0]), fields[1].toInt(), fields.mid(2)});
    }
    return expected;
}

class FormulaCatalogueValuesTest : public ::testing::Test {
protected:
    std::unique_ptr<FormulaProgram> program(const QString &name) {
        TC::CFormulaParam request;
        request.mFormulaName = name;
        const auto file = mCatalogue.fileOf(request);
        FormulaInputs inputs;
        inputs.previousNetValue = kNetValue;
        inputs.underlying = "SH000300";
        inputs.underlyingClose = kIndexClose;
        inputs.underlyingBars = mDays.index;
        return file ? makeLuaFormula(*file, inputs,
                                     [](const FormulaError &error) {
                                         ADD_FAILURE() << qPrintable(error.formula) << ":" << error.line << ": "
                                                       << qPrintable(error.text);
                                     })
                    : nullptr;
    }
    /// A thousandth of the line's largest value is what a small value is compared against: differences of nearly
    /// equal numbers keep no more digits.
    static double scaleOf(const QList<QByteArray> &values) {
        double largest = 0.0;
        for (const QByteArray &value : values) {
            largest = std::max(largest, std::abs(value.toDouble()));
        }
        return largest / 1000;
    }
    static void compare(const ExpectedLine &expected, size_t i, size_t point, double value) {
        const QByteArray &text = expected.values[static_cast<int>(i)];
        const bool has = std::isfinite(value) && value < TC::kUnsetValue;
        EXPECT_EQ(has, !text.isEmpty())
            << qPrintable(expected.formula) << " line " << expected.line << " point " << point;
        if (has && !text.isEmpty()) {
            const double wanted = text.toDouble();
            EXPECT_NEAR(value, wanted, 1e-9 * std::max(std::abs(wanted), scaleOf(expected.values)))
                << qPrintable(expected.formula) << " line " << expected.line << " point " << point;
        }
    }

    ConfigService mConfig;
    FormulaCatalogue mCatalogue{mConfig};
    const Days mDays = readDays();
    const MinuteBars &mDay = mDays.own;
    const Expected mExpected = readExpected();
};

} // namespace

TEST_F(FormulaCatalogueValuesTest, EveryLineOfEveryFormulaHasAReference) {
    QMap<QString, int> lines;
    for (const ExpectedLine &expected : mExpected.lines) {
        ++lines[expected.formula];
    }
    for (const QString &name : mCatalogue.names()) {
        EXPECT_EQ(lines.value(name), mCatalogue.description(name)->lines.size()) << qPrintable(name);
    }
}

TEST_F(FormulaCatalogueValuesTest, AWholeDayHasTheValuesOfTheDefinitions) {
    ASSERT_EQ(mDay.size(), 241u);
    for (const ExpectedLine &expected : mExpected.lines) {
        const auto formula = program(expected.formula);
        ASSERT_TRUE(formula) << qPrintable(expected.formula);
        const se::RPCFormulaResult result = formula->evaluate(mDay);
        ASSERT_GT(result.mValues.size(), size_t(expected.line)) << qPrintable(expected.formula);
        const std::vector<double> &values = result.mValues[size_t(expected.line)];
        ASSERT_EQ(values.size(), mDay.size()) << qPrintable(expected.formula);
        for (size_t i = 0; i < mExpected.points.size(); ++i) {
            compare(expected, i, mExpected.points[i], values[mExpected.points[i]]);
        }
    }
}

TEST_F(FormulaCatalogueValuesTest, TheLastPointOfAGrowingDayHasTheSameValue) {
    QMap<QString, std::shared_ptr<FormulaProgram>> programs;
    MinuteBars bars;
    for (size_t i = 0, kept = 0; i < mDay.size(); ++i) {
        bars.push_back(mDay[i]);
        const bool isKept = kept < mExpected.points.size() && mExpected.points[kept] == i;
        for (const QString &name : mCatalogue.names()) {
            std::shared_ptr<FormulaProgram> &formula = programs[name];
            if (!formula) {
                formula = program(name);
                formula->evaluate(bars);
                continue;
            }
            const se::RPCFormulaInstantResult last = formula->evaluateLast(bars);
            for (const ExpectedLine &expected : mExpected.lines) {
                if (isKept && expected.formula == name) {
                    ASSERT_GT(last.mValues.size(), size_t(expected.line)) << qPrintable(name);
                    compare(expected, kept, i, last.mValues[size_t(expected.line)]);
                }
            }
        }
        kept += isKept ? 1 : 0;
    }
}
