#include "terminal/formula/ModelRun.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace terminal;

namespace {

std::string stateOf(const ModelRun &run) {
    return run.progress().getString("state");
}

} // namespace

TEST(ModelRun, ItsStateFollowsTheRun) {
    ModelRun run;
    EXPECT_EQ(stateOf(run), "waiting");
    const ScriptModelOutcome outcome = run.run([&](ScriptModelProcess &, const ModelRun::Progress &tell) {
        EXPECT_EQ(stateOf(run), "running");
        tell({3, 7, QStringLiteral("SH600000")});
        return ScriptModelOutcome();
    });
    EXPECT_FALSE(outcome.stopped);
    EXPECT_EQ(stateOf(run), "finished");
    EXPECT_EQ(run.progress().getNumber("done"), 3);
    EXPECT_EQ(run.progress().getNumber("total"), 7);
    EXPECT_EQ(run.progress().getString("text"), "SH600000");
}

TEST(ModelRun, AnErrorIsAFailedRun) {
    ModelRun run;
    run.run([](ScriptModelProcess &, const ModelRun::Progress &) {
        ScriptModelOutcome outcome;
        outcome.error = FormulaError{QStringLiteral("M"), 1, QStringLiteral("no")};
        return outcome;
    });
    EXPECT_EQ(stateOf(run), "failed");
}

TEST(ModelRun, StoppingEndsTheProcessThatRuns) {
    ModelRun run;
    std::atomic<bool> entered{false};
    std::thread stopper([&] {
        while (!entered) {
            std::this_thread::yield();
        }
        run.stop();
    });
    run.run([&](ScriptModelProcess &process, const ModelRun::Progress &) {
        entered = true;
        while (!process.isStopped()) {
            std::this_thread::yield();
        }
        ScriptModelOutcome outcome;
        outcome.stopped = true;
        return outcome;
    });
    stopper.join();
}

TEST(ModelRun, NothingIsStartedAfterwards) {
    ModelRun run;
    run.stop();
    const ScriptModelOutcome outcome = run.run([](ScriptModelProcess &, const ModelRun::Progress &) {
        ADD_FAILURE() << "it was stopped";
        return ScriptModelOutcome();
    });
    EXPECT_TRUE(outcome.stopped);
    EXPECT_EQ(stateOf(run), "waiting");
}
