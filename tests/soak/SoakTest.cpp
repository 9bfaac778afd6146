// The terminal in the hands of a robot, at the fastest pace of its market. A few seconds of it with every run of the tests;
// hours by ./test --soak.

#include "containers/CRealtimeMainWidget.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/DialogState.h"
#include "terminal/app/MemoryWatch.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/formula/ScriptModelCatalogue.h"
#include "terminal/market/MarketDate.h"
#include "terminal/threads/SmallHeaps.h"
#include "tests/soak/FrameWatch.h"
#include "tests/soak/MemoryCurve.h"
#include "tests/soak/SoakRobot.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <cstdio>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SOAK_SANITIZED
#endif
#endif

#ifdef SOAK_SANITIZED
/// The sanitizer gives back a tenth of what it keeps of freed memory at once, on the thread that frees, which then stands for
/// about 100 ms at its 256 MB. All other tests have those.
extern "C" const char *__asan_default_options() {
    return "quarantine_size_mb=64";
}
#endif

using namespace terminal;
using tests::FrameWatch;
using tests::MemoryCurve;
using tests::MemorySample;
using tests::SoakRobot;

namespace {

#ifdef SOAK_SANITIZED
constexpr bool kIsSanitized = true;
constexpr double kLatest =
    500.0; ///< milliseconds; what the sanitizer adds to every access is four to five times
#else
constexpr bool kIsSanitized = false;
constexpr double kLatest = 100.0;
#endif
constexpr double kWarmUp = 10.0; ///< minutes, after which memory is to be flat
constexpr double kExploring = 4.0; ///< minutes, in which dialogs come before all else
constexpr double kHurrying = 9.0; ///< minutes, in which more is done than later
constexpr double kMostGrowth = 2.0; ///< per cent
constexpr quint32 kSeed = 20261120;
constexpr double kMinute = 60000.0;

double numberFrom(const char *variable, double otherwise) {
    bool isNumber = false;
    const double number = qEnvironmentVariable(variable).toDouble(&isNumber);
    return isNumber && number > 0.0 ? number : otherwise;
}

class Soak : public ::testing::Test {
protected:
    void SetUp() override {
        keepHeapsSmall(); // as the program does
        keepDialogStateIn(mFolder.path());
        TerminalSettings settings;
        settings.store = mFolder.path() + "/market.db";
        settings.config = mFolder.path() + "/config.json";
        settings.formulas = mFolder.path() + "/formulas";
        settings.scripts = mFolder.path() + "/scripts";
        settings.speed = SimulatedClock::kFastest;
        settings.start = timeOf(QDate(2026, 11, 20), 570);
        ASSERT_TRUE(copyMissingFiles(builtInScripts(), settings.scripts));
        QString error;
        mServices = TerminalServices::open(settings, error);
        ASSERT_TRUE(mServices) << qPrintable(error);
        mWindow = std::make_unique<TerminalWindow>(*mServices);
        mWindow->show();
        mWindow->showInstrument(QStringLiteral("SH600000"));
        mWindow->activateWindow();
        ASSERT_TRUE(waitUntilComplete());
        ASSERT_TRUE(QDir().mkpath(QStringLiteral(TIMESHARE_BINARY_DIR "/soak")));
        mMemory = std::make_unique<MemoryWatch>(mServices->messages().sink()); // as the program has
        mTime.start();
    }
    void TearDown() override {
        mMemory.reset();
        mWindow.reset();
        mServices.reset();
    }

    double minutes() const { return static_cast<double>(mTime.elapsed()) / kMinute; }
    bool waitUntilComplete() {
        return QTest::qWaitFor([this] { return mWindow->view()->isComplete(); }, 60000);
    }
    /// What is free goes back first, as it does once a minute: it would tell when that was, not what is held.
    MemorySample sample() const {
        giveBackFreeMemory();
        MemorySample sample = tests::memoryNow();
        sample.minute = minutes();
        sample.widgets = QApplication::allWidgets().size();
        sample.requests = mServices->formulas().liveRequests() + mServices->replay().liveRequests();
        return sample;
    }
    static QString logPath(quint32 seed) {
        return QStringLiteral(TIMESHARE_BINARY_DIR "/soak/actions-%1.txt").arg(seed);
    }

    QTemporaryDir mFolder;
    QElapsedTimer mTime;
    std::unique_ptr<TerminalServices> mServices;
    std::unique_ptr<TerminalWindow> mWindow;
    std::unique_ptr<MemoryWatch> mMemory;
};

/// Numbers of the widgets by their class and that of their window.
std::map<QString, int> widgetKinds() {
    std::map<QString, int> kinds;
    for (const QWidget *widget : QApplication::allWidgets()) {
        const QWidget *owner = widget->isWindow() ? widget->parentWidget() : widget->window();
        const QString window = owner ? QString::fromLatin1(owner->metaObject()->className()) : QString();
        ++kinds[QString::fromLatin1(widget->metaObject()->className()) + " of " + window];
    }
    return kinds;
}

void tellGrownKinds(const std::map<QString, int> &before) {
    for (const auto &[kind, count] : widgetKinds()) {
        const auto found = before.find(kind);
        const int former = found == before.end() ? 0 : found->second;
        if (count > former) {
            std::printf("%s: %d after the first round, %d now\n", qPrintable(kind), former, count);
        }
    }
}

/// Windows of a kind, or more of it, than ever before: what they take is no growth of what was there.
void tellNewWindows(std::map<QString, int> &most) {
    std::map<QString, int> now;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        ++now[QString::fromLatin1(window->metaObject()->className())];
    }
    for (const auto &[kind, count] : now) {
        if (count > most[kind]) {
            std::printf("  %d of %s\n", count, qPrintable(kind));
            most[kind] = count;
        }
    }
}

void tellFrames(const FrameWatch &frames) {
    std::printf(
        "events %d, longest %.1f ms, over %.0f ms: %zu by the clock, %zu without waiting for a processor\n",
        frames.events(), frames.longest(), kLatest, frames.late().size(), frames.lateByOneself().size());
    for (const FrameWatch::Late &late : frames.late()) {
        std::printf("  %.1f ms, %.1f of them without a processor, %.1f at work, %.1f with a processor stolen, "
                    "after %s\n    in %s\n",
                    late.wait, late.starved, late.busy, late.stolen, qPrintable(late.doing),
                    qPrintable(late.calls.join("\n      of ")));
    }
}

void tellActions(const SoakRobot &robot) {
    for (auto kind = robot.done().begin(); kind != robot.done().end(); ++kind) {
        std::printf("%s: %d\n", qPrintable(kind.key()), kind.value());
    }
    if (::testing::Test::HasFailure()) {
        std::printf("the last actions:\n%s\n", qPrintable(robot.lastActions().join('\n')));
    }
}

} // namespace

/// By its environment: TIMESHARE_SOAK_MINUTES, without which every kind of action is done and little else, and
/// TIMESHARE_SOAK_SEED.
TEST_F(Soak, NothingGrowsWarnsOrHoldsTheScreenUp) {
    constexpr int kSmokePace = 5; // milliseconds between actions
    constexpr int kHurry = 25;
    constexpr int kPace = 50;
    // Milliseconds. What is under way when memory is looked at differs by 4 % from round to round under a sanitizer: so many of
    // them tell growth from chance.
    constexpr qint64 kRound = 10000;
    const double wanted = numberFrom("TIMESHARE_SOAK_MINUTES", 0.0);
    const auto seed = static_cast<quint32>(numberFrom("TIMESHARE_SOAK_SEED", kSeed));
    std::printf("seed %u, actions in %s\n", seed, qPrintable(logPath(seed)));
    std::printf("%s\n", qPrintable(tests::memoryHeading()));
    SoakRobot robot(*mServices, *mWindow, seed, logPath(seed));
    FrameWatch frames(kLatest, [&] { return robot.last(); });
    MemoryCurve memory;
    std::map<QString, int> kinds;
    std::map<QString, int> windows;
    const qint64 marketStart = mServices->clock().now();
    do {
        // The first use of anything takes memory for good, and so do requests that are kept: that is to be over with
        // the warming up.
        using ELeaning = SoakRobot::ELeaning;
        robot.setLeaning(minutes() < kExploring  ? ELeaning::Windows
                         : minutes() < kHurrying ? ELeaning::Requests
                                                 : ELeaning::Nothing);
        const int pace = minutes() < kHurrying ? kHurry : kPace;
        robot.act(wanted > 0.0 ? kRound : 1500, wanted > 0.0 ? pace : kSmokePace);
        robot.settle();
        EXPECT_TRUE(waitUntilComplete()) << "the chart is not complete";
        const MemorySample now = sample();
        kinds = kinds.empty() ? widgetKinds() : kinds;
        memory.add(now);
        std::printf("%s\n", qPrintable(tests::memoryLine(now)));
        tellNewWindows(windows);
        std::fflush(stdout);
    } while (minutes() < wanted && !HasFailure());

    const double market = static_cast<double>(mServices->clock().now() - marketStart) / kMinute / 60.0;
    std::printf("%.1f minutes, %.0f hours of the market\n", minutes(), market);
    tellGrownKinds(kinds);
    tellFrames(frames);
    EXPECT_EQ(robot.missing(), QStringList());
    EXPECT_EQ(mWindow->view()->instrument(), "SH600000");
    EXPECT_GT(mWindow->view()->main()->param().size(), 0);
    if (minutes() > kWarmUp) {
        EXPECT_LE(memory.growth(kIsSanitized ? &MemorySample::inUse : &MemorySample::resident, kWarmUp),
                  kMostGrowth)
            << "per cent of memory";
    }
    if (wanted > 0.0) {
        EXPECT_EQ(frames.lateByOneself().size(), 0u) << "events later than " << kLatest << " ms";
    }
    tellActions(robot);
}
