// Slow formulas hold up nobody but themselves.

#include "tests/terminal/FormulaServiceFixture.h"

#include "tests/terminal/PricePrograms.h"

#include <QElapsedTimer>

#include <atomic>
#include <mutex>

using namespace terminal;
using namespace tests;

namespace {

constexpr int kSlowRun = 900; // milliseconds of a processor
constexpr int kSlowFormulas = 10;

/// The price, after a while; counts its runs.
class BurningProgram : public tests::BurningPriceProgram {
public:
    BurningProgram(int milliseconds, std::atomic<int> &runs)
        : BurningPriceProgram("BURN", milliseconds), mRuns(runs) {}

    se::RPCFormulaResult evaluate(const MinuteBars &bars) const override {
        ++mRuns;
        return BurningPriceProgram::evaluate(bars);
    }

private:
    std::atomic<int> &mRuns;
};

class SlowFormulasTest : public FormulaServiceFixture {
protected:
    ~SlowFormulasTest() override { mService.reset(); }

    void makeService(int milliseconds) {
        mService = std::make_unique<FormulaService>(
            mFeed,
            [this, milliseconds](const TC::CFormulaParam &param) -> std::unique_ptr<FormulaProgram> {
                return param.mFormulaName == "BURN" ? std::make_unique<BurningProgram>(milliseconds, mRuns)
                                                    : makeBuiltInFormula(param);
            },
            [](const TC::CFormulaParam &request) { return static_cast<int>(request.mStart.first / 1000); });
    }
    Received lastOf(const QString &id) const {
        for (auto received = mReceived.rbegin(); received != mReceived.rend(); ++received) {
            if (received->id == id) {
                return *received;
            }
        }
        return {};
    }

    std::atomic<int> mRuns{0};
};

} // namespace

TEST_F(SlowFormulasTest, ALightOneGetsItsPointsWhileTenOfNearlyASecondRun) {
    makeService(kSlowRun);
    request({param("light")});
    ASSERT_TRUE(waitForResults(1));
    for (int i = 0; i < kSlowFormulas; ++i) {
        request({param(QStringLiteral("slow%1").arg(i), "BURN")});
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return mRuns > 0; }, 10000));
    QElapsedTimer time;
    time.start();
    for (int tick = 1; tick <= 20; ++tick) {
        mFeed.change("SH600000", bar(kOpen + kMinute, 20.0 + tick, 10.1, 300));
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                const Received light = lastOf("light");
                return light.point && light.point->mValues[0] == 20.0 + tick;
            },
            10000));
    }
    // Ten slow ones take nine seconds a tick; the bound leaves room for a busy machine.
    EXPECT_LT(time.elapsed(), 5000);
    for (int i = 0; i < kSlowFormulas; ++i) {
        mService->unrequestFormula(QStringLiteral("slow%1").arg(i));
    }
}

TEST_F(SlowFormulasTest, TicksThatComeWhileASlowOneRunsAreOneRun) {
    makeService(30);
    request({param("slow", "BURN")});
    ASSERT_TRUE(waitForResults(1));
    const int before = mRuns;
    for (int i = 0; i < 500; ++i) {
        mFeed.change("SH600000", bar(kOpen + kMinute, 20.0 + i, 10.1, 300));
    }
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return lastOf("slow").point && lastOf("slow").point->mValues[0] == 519.0; }, 20000));
    EXPECT_LT(mRuns - before, 100) << "one for those that came meanwhile";
}

TEST_F(SlowFormulasTest, OneThatGoesOnIsToldInItsPaneAndInTheMessages) {
    makeService(30);
    RunShareLimits share;
    share.seriesMilliseconds = 20;
    share.pauseFactor = 1;
    share.patienceMilliseconds = 1;
    mService->setShare(share);
    std::mutex lock;
    QList<FormulaError> told;
    mService->setScriptModels({}, [&](const FormulaError &error) {
        std::lock_guard<std::mutex> hold(lock);
        told.append(error);
    });
    request({param("slow", "BURN")});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mReceived[0].meta->mLineNames.front(), "BURN");
    for (int tick = 1; tick <= 3; ++tick) {
        mFeed.change("SH600000", bar(kOpen + kMinute, 20.0 + tick, 10.1, 300));
        ASSERT_TRUE(waitForResults(1 + tick));
    }
    ASSERT_EQ(mReceived[2].kind, Received::History) << "the run after the one that was told";
    EXPECT_EQ(mReceived[2].meta->mLineNames.front(), "BURN（计算慢）");
    EXPECT_TRUE(mReceived[2].keepRange);
    EXPECT_EQ(mReceived[3].kind, Received::Point) << "told once";
    std::lock_guard<std::mutex> hold(lock);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0].formula, "BURN");
}
