// What the soak measures with.

#include "tests/soak/ActionLog.h"
#include "tests/soak/FrameWatch.h"
#include "tests/soak/MemoryCurve.h"
#include "tests/soak/StolenTime.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <ctime>

using tests::FrameWatch;
using tests::MemoryCurve;
using tests::MemorySample;

namespace {

MemoryCurve curveOf(std::initializer_list<qint64> resident) {
    MemoryCurve curve;
    double minute = 0.0;
    for (const qint64 bytes : resident) {
        MemorySample sample;
        sample.minute = minute++;
        sample.resident = bytes;
        curve.add(sample);
    }
    return curve;
}

} // namespace

namespace tests {

/// Keeps the thread at work until it has computed for so long.
__attribute__((noinline, visibility("default"))) void compute(double milliseconds) {
    const std::clock_t start = std::clock();
    while (static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC < milliseconds) {
    }
}

} // namespace tests

TEST(ActionLog, ItsFileHasAllLinesWhenItIsGone) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("it's a log.txt"));
    QByteArray expected;
    for (int round = 0; round < 2; ++round) {
        tests::ActionLog log(path);
        expected.clear();
        for (int i = 0; i < 1000; ++i) {
            log.write(QStringLiteral("指标 %1").arg(i + round));
            expected += "指标 " + QByteArray::number(i + round) + '\n';
        }
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), expected);
}

TEST(MemoryCurve, ItsGrowthIsThatOfTheLastFifthOverTheFirst) {
    const MemoryCurve curve = curveOf({900, 50, 100, 100, 1, 1, 1, 1, 1, 1, 105, 105});
    EXPECT_NEAR(curve.growth(&MemorySample::resident, 2.0), 5.0, 1e-9);
    EXPECT_NEAR(curve.growth(&MemorySample::resident, 0.0), (105.0 / 475.0 - 1.0) * 100.0, 1e-9);
}

TEST(MemoryCurve, OneSampleOutOfTheWayDoesNotCount) {
    const MemoryCurve curve = curveOf({100, 100, 100, 1, 1, 1, 1, 1, 1, 1, 1, 1, 100, 900, 100});
    EXPECT_NEAR(curve.growth(&MemorySample::resident, 0.0), 0.0, 1e-9);
}

TEST(MemoryCurve, TooFewSamplesTellNoGrowth) {
    EXPECT_EQ(curveOf({100, 200, 300, 400}).growth(&MemorySample::resident, 0.0), 0.0);
}

TEST(MemoryCurve, WhatIsHeldIsSeen) {
    const MemorySample before = tests::memoryNow();
    EXPECT_GT(before.resident, 0);
    EXPECT_GT(before.descriptors, 2);
    const std::vector<char> held(64 << 20, 1);
    QFile file(QStringLiteral("/dev/null"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const MemorySample after = tests::memoryNow();
    EXPECT_GE(after.inUse - before.inUse, static_cast<qint64>(held.size()));
    EXPECT_GE(after.resident - before.resident, static_cast<qint64>(held.size() / 2));
    EXPECT_EQ(after.descriptors, before.descriptors + 1);
}

TEST(FrameWatch, AThreadThatIsBusyIsLateByItself) {
    FrameWatch watch(100.0, [] { return QStringLiteral("computing"); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return watch.events() > 3; }, 20000));
    const size_t before = watch.lateByOneself().size();
    QTimer::singleShot(0, &watch, [] { tests::compute(400.0); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return watch.lateByOneself().size() > before; }, 20000));
    EXPECT_EQ(watch.lateByOneself().back().doing, "computing");
    EXPECT_TRUE(watch.lateByOneself().back().calls.join(' ').contains("tests::compute(double)"))
        << qPrintable(watch.lateByOneself().back().calls.join('\n'));
    EXPECT_GE(watch.longest(), watch.lateByOneself().back().own());
}

TEST(FrameWatch, OfWhatAnEventWaitedTheLongerTimeWithoutAProcessorIsTakenOff) {
    FrameWatch::Late late;
    late.wait = 250.0;
    late.starved = 40.0;
    EXPECT_EQ(late.own(), 210.0);
    late.stolen = 170.0;
    EXPECT_EQ(late.own(), 80.0);
}

TEST(StolenTime, EachProcessorHasItsOwn) {
    const QByteArray stat = "cpu  248826 20969 118021 3333835 2571 0 1011 891 0 0\n"
                            "cpu0 122831 10319 57695 1671091 758 0 324 437 0 0\n"
                            "cpu1 125995 10649 60326 1662743 1812 0 686 454 0 0\n"
                            "intr 1 2 3 4 5 6 7 8\n";
    EXPECT_EQ(tests::stolenTimes(stat, 100.0), (std::vector<double>{4370.0, 4540.0}));
    EXPECT_EQ(tests::stolenTimes("cpu0 1 2\n", 100.0), std::vector<double>{0.0});
    EXPECT_TRUE(tests::stolenTimes(QByteArray(), 100.0).empty());
}

TEST(StolenTime, WhatOneProcessorLostMostCounts) {
    EXPECT_EQ(tests::mostStolen({10.0, 500.0}, {120.0, 530.0}), 110.0);
    EXPECT_EQ(tests::mostStolen({10.0, 500.0}, {10.0}), 0.0);
    EXPECT_EQ(tests::mostStolen({}, {100.0}), 0.0);
}
