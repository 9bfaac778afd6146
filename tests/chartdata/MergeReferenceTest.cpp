// Random walks of results through a pane, compared step by step with merge_reference.py.

#include "tests/chartdata/ChartDataFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <random>

namespace tests {
namespace {

constexpr int kCharts = 40;
constexpr int kMergeSteps = 70;

QJsonArray toJson(const se::TimePosition &time) {
    return {double(time.first), double(time.second)};
}

QJsonArray toJson(const std::vector<double> &values) {
    QJsonArray array;
    for (const double value : values) {
        array.append(value);
    }
    return array;
}

class MergeReference : public ChartData {
protected:
    using Times = std::vector<se::TimePosition>;

    int random(int below) { return static_cast<int>(mRandom() % static_cast<unsigned>(below)); }
    double value() { return 10.0 + random(64) / 8.0; }
    std::vector<double> values(std::size_t count) {
        std::vector<double> made(count);
        std::generate(made.begin(), made.end(), [this] { return value(); });
        return made;
    }
    /// Ascending positions of a few seconds' distance, some within one second, with `subPositions` some
    /// differing in those alone.
    Times times(int count, bool subPositions) {
        Times made;
        se::TimePosition at = mStart;
        at.first += random(3) * 1000;
        for (int i = 0; i < count; ++i) {
            made.push_back(at);
            const int kind = random(6);
            if (kind == 0 && subPositions) {
                ++at.second;
            } else {
                at.first += kind == 1 ? 100 + random(500) : (1 + random(2)) * 1000;
            }
        }
        return made;
    }
    se::TimePosition timeNear(const Times &stored, bool subPositions) {
        if (!stored.empty() && random(3) == 0) {
            return stored[static_cast<std::size_t>(random(static_cast<int>(stored.size())))];
        }
        se::TimePosition at = stored.empty() ? mStart : stored.back();
        at.first += (random(5) - 2) * 1000;
        at.second += subPositions && random(4) == 0 ? 1 : 0;
        return at;
    }

    const std::mt19937::result_type mSeed = 20240315;
    std::mt19937 mRandom{mSeed};
    const se::TimePosition mStart = minuteTime(kDay, 570);
};

QJsonArray seriesJson(const se::RPCFormulaResult &series) {
    QJsonArray points;
    for (std::size_t i = 0; i < series.mTimes.size(); ++i) {
        QJsonArray values;
        for (const std::vector<double> &line : series.mValues) {
            const bool known = i < line.size() && line[i] != TC::kUnsetValue;
            values.append(known ? QJsonValue(line[i]) : QJsonValue());
        }
        while (values.size() < 2) {
            values.append(QJsonValue());
        }
        points.append(QJsonObject{{"time", toJson(series.mTimes[i])},
                                  {"valid", i < series.mValid.size() ? series.mValid[i] : 0},
                                  {"values", values}});
    }
    return points;
}

TEST_F(MergeReference, RandomResultsLeaveTheSeriesOfTheReference) {
    const QMap<QString, TC::CFormulaKey> keys{{"main", key("SH600000")},
                                              {"volume", key("SH600000", "REALTIMEVOL")},
                                              {"first", key("SH600001")},
                                              {"second", key("SZ000001")}};
    mUi->addStock("SH600001", QString(), true);
    mUi->addStock("SZ000001", QString(), false);
    QJsonArray input;
    QVector<QJsonArray> states;
    for (int chart = 0; chart < kCharts; ++chart) {
        const bool live = random(4) != 0;
        const bool fillGaps = random(4) == 0;
        mUi->mDataCount = 0;
        auto data = makeMain({"REALTIME", "REALTIMEVOL"});
        data->setTradeDate(live ? kDay : kDay - 86400);
        data->setFillGaps(fillGaps);
        data->request(corvane::ERunMode::Ordinary);
        QMap<QString, Times> stored;
        QJsonArray operations;
        QJsonArray left;
        for (int step = 0; step < kMergeSteps; ++step) {
            const QStringList names = keys.keys();
            QString name = names[random(names.size())];
            const int kind = random(12);
            mEvents.clear();
            int flags = 0;
            QJsonObject operation;
            if (kind < 2 || kind == 11) {
                name = kind == 11 ? QStringLiteral("main") : name;
                const int count = random(8) == 0 ? 0 : 1 + random(12);
                const auto result =
                    makeResult(times(count, name != "main"), values(static_cast<std::size_t>(count)),
                               values(static_cast<std::size_t>(count)));
                stored[name] = result->mTimes;
                operation = {{"op", kind == 11 ? "push" : "history"},
                             {"values", QJsonArray{toJson(result->mValues[0]), toJson(result->mValues[1])}}};
                QJsonArray timesJson;
                for (const se::TimePosition &time : result->mTimes) {
                    timesJson.append(toJson(time));
                }
                operation["times"] = timesJson;
                flags = kind == 11 ? data->applyPushedResult(makeMeta(2), result, "REALTIME")
                                   : history(*data, keys[name], result, random(2) == 0);
            } else {
                const bool oneLine = random(6) == 0 && (name == "main" || name == "volume");
                const auto made = makePoint(timeNear(stored[name], name != "main"), values(oneLine ? 1 : 2));
                operation = {{"op", "point"}, {"time", toJson(made->mTime)}, {"values", toJson(made->mValues)}};
                flags = point(*data, keys[name], made);
                if (flags & TC::eSeriesChanged && (stored[name].empty() || stored[name].back() < made->mTime)) {
                    stored[name].push_back(made->mTime);
                }
            }
            operation["series"] = name;
            operations.append(operation);
            QJsonObject held;
            for (auto at = keys.begin(); at != keys.end(); ++at) {
                if (data->getData().contains(*at)) {
                    held[at.key()] = seriesJson(series(*data, *at));
                }
            }
            const auto events = mEvents.all();
            left.append(QJsonObject{{"flags", flags & ~TC::eRangeChanged},
                                    {"average", events.empty() ? QJsonValue() : QJsonValue(events[0].text)},
                                    {"count", int(mUi->mDataCount)},
                                    {"series", held}});
            EXPECT_LE(events.size(), 1u);
        }
        input.append(QJsonObject{{"live", live},
                                 {"fillGaps", fillGaps},
                                 {"overlays", QJsonArray{"first", "second"}},
                                 {"operations", operations}});
        states.append(left);
    }

    QProcess python;
    python.start("python3", {QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/chartdata/merge_reference.py")});
    ASSERT_TRUE(python.waitForStarted()) << "python3 is needed";
    python.write(QJsonDocument(input).toJson(QJsonDocument::Compact));
    python.closeWriteChannel();
    ASSERT_TRUE(python.waitForFinished(120000));
    ASSERT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    const QJsonArray answers = QJsonDocument::fromJson(python.readAllStandardOutput()).array();
    ASSERT_EQ(answers.size(), kCharts);
    for (int chart = 0; chart < kCharts; ++chart) {
        const QJsonArray expected = answers[chart].toArray();
        ASSERT_EQ(expected.size(), kMergeSteps);
        for (int step = 0; step < kMergeSteps; ++step) {
            const auto text = [](const QJsonValue &value) {
                return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact).toStdString();
            };
            ASSERT_EQ(text(states[chart][step]), text(expected[step]))
                << "seed " << mSeed << " chart " << chart << " step " << step << ' '
                << text(input[chart].toObject()["operations"].toArray()[step]);
        }
    }
}

} // namespace
} // namespace tests
