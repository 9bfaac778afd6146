#include "host/services/ResultHandover.h"

#include "tests/fakehost/FakeFormulaServices.h"
#include "tests/support/Series.h"
#include "toolkit/services/ResultQueue.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QStringList>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <thread>

using namespace TC;
using tests::kDay;
using tests::makeMeta;
using tests::makePoint;
using tests::makeResult;
using tests::minuteTime;
using tests::minuteTimes;

namespace handovertest {

FormulaResultPtr seriesOf(int points, double value) {
    return makeResult(minuteTimes(kDay, 570, points), {std::vector<double>(std::size_t(points), value)});
}

/// A service that the test calls back for, with the handover before it. What comes is noted as "id:H3" for a series of
/// three points, "id:P570=10" for a point.
class Handover : public ::testing::Test {
protected:
    QVector<CFormulaParam> ask(const QStringList &ids) {
        QVector<CFormulaParam> params;
        for (const QString &id : ids) {
            CFormulaParam param;
            param.mRequestId = id.toStdString();
            params.append(param);
        }
        mHandover->requestFormulas(
            params,
            [this, held = mHeld](const FormulaMetaPtr &, const FormulaResultPtr &result, const QString &id, int,
                                 const QString &, bool keepRange) {
                note(QStringLiteral("%1:H%2%3")
                         .arg(id)
                         .arg(result->mTimes.size())
                         .arg(keepRange ? QStringLiteral("k") : QString()));
            },
            [this, held = mHeld](int, const QString &id, const FormulaInstantPtr &point) {
                const qint64 minute = (point->mTime.first / 1000 - kDay) / 60;
                note(QStringLiteral("%1:P%2=%3").arg(id).arg(minute).arg(point->mValues[0]));
            });
        return params;
    }
    void note(const QString &what) {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        mCame.append(what);
        if (mOnCall) {
            mOnCall(what);
        }
    }
    fakehost::LiveRequest live(const QString &id) const {
        for (const fakehost::LiveRequest &request : mService.mLive.all()) {
            if (request.id() == id) {
                return request;
            }
        }
        return {};
    }
    static void history(const fakehost::LiveRequest &request, int points, bool keepRange = false) {
        request.onHistory(makeMeta(1), seriesOf(points, 1.0), request.id(), 1, QString(), keepRange);
    }
    static void point(const fakehost::LiveRequest &request, int minute, double value) {
        request.onRealtime(0, request.id(), makePoint(minuteTime(kDay, minute), {value}));
    }
    QStringList settle() {
        while (mHandover->pending() > 0) {
            QCoreApplication::processEvents();
        }
        QStringList came;
        came.swap(mCame);
        return came;
    }

    fakehost::CallLog mLog;
    fakehost::FakeFormulaManager mService{mLog};
    std::unique_ptr<UiThreadFormulas> mHandover = std::make_unique<UiThreadFormulas>(mService);
    std::shared_ptr<int> mHeld = std::make_shared<int>(0); ///< as a callback holds a chart's data
    QStringList mCame;
    std::function<void(const QString &)> mOnCall;
};

TEST_F(Handover, WhatAnotherThreadTellsComesOnTheUserInterfaceThreadInOrder) {
    ask({"A"});
    std::thread service([this] {
        history(live("A"), 2);
        point(live("A"), 572, 10.0);
        point(live("A"), 573, 11.0);
    });
    service.join();
    EXPECT_TRUE(mCame.isEmpty()) << "nothing comes inside of the service's call";
    EXPECT_EQ(settle(), (QStringList{"A:H2", "A:P572=10", "A:P573=11"}));
}

TEST_F(Handover, OfThePointsOfAMinuteTheLastComes) {
    ask({"A"});
    for (int i = 0; i < 1000; ++i) {
        point(live("A"), 572, i);
    }
    point(live("A"), 573, 5.0);
    EXPECT_EQ(mHandover->pending(), 2);
    EXPECT_EQ(settle(), (QStringList{"A:P572=999", "A:P573=5"}));
}

TEST_F(Handover, AWholeSeriesStandsForAllBeforeIt) {
    ask({"A"});
    history(live("A"), 2);
    point(live("A"), 572, 10.0);
    history(live("A"), 3, true);
    point(live("A"), 573, 11.0);
    EXPECT_EQ(settle(), (QStringList{"A:H3", "A:P573=11"})) << "the range before the first one does not hold";
    history(live("A"), 4, true);
    history(live("A"), 5, true);
    EXPECT_EQ(settle(), QStringList{"A:H5k"});
    history(live("A"), 6, true);
    history(live("A"), 7, false);
    EXPECT_EQ(settle(), QStringList{"A:H7"});
}

TEST_F(Handover, RequestsComeByTurns) {
    ask({"A", "B"});
    for (int minute = 570; minute < 573; ++minute) {
        point(live("A"), minute, 1.0);
    }
    point(live("B"), 570, 2.0);
    EXPECT_EQ(settle(), (QStringList{"A:P570=1", "B:P570=2", "A:P571=1", "A:P572=1"}));
}

TEST_F(Handover, NothingComesOfAWithdrawnRequest) {
    ask({"A", "B"});
    const fakehost::LiveRequest late = live("A");
    history(late, 2);
    history(live("B"), 2);
    mHandover->unrequestFormula("A");
    EXPECT_TRUE(live("A").id().isEmpty()) << "it is withdrawn at the service";
    history(late, 3);
    point(late, 573, 1.0);
    EXPECT_EQ(settle(), QStringList{"B:H2"});
}

TEST_F(Handover, WithdrawnByACallbackNothingFollows) {
    ask({"A", "B"});
    mOnCall = [this](const QString &) { mHandover->unrequestFormulas({"A", "B"}); };
    history(live("A"), 2);
    point(live("A"), 572, 1.0);
    point(live("B"), 572, 1.0);
    EXPECT_EQ(settle(), QStringList{"A:H2"});
}

TEST_F(Handover, AnIdThatIsAskedForAnewTakesNothingOfTheFormerRequest) {
    ask({"A"});
    const fakehost::LiveRequest former = live("A");
    history(former, 2);
    mHandover->unrequestFormula("A");
    ask({"A"});
    history(former, 3);
    history(live("A"), 4);
    EXPECT_EQ(settle(), QStringList{"A:H4"});
}

TEST_F(Handover, WhatWasNotAskedForIsDropped) {
    ask({"A"});
    fakehost::LiveRequest other = live("A");
    other.param.mRequestId = "X";
    history(other, 2);
    EXPECT_EQ(mHandover->pending(), 0);
    mHandover->unrequestFormula("X");
}

TEST_F(Handover, CallbacksGoWhenTheLastOfTheirRequestsIsWithdrawn) {
    ask({"A", "B"});
    const std::weak_ptr<int> watch = mHeld;
    mHeld.reset();
    mHandover->unrequestFormula("A");
    EXPECT_FALSE(watch.expired());
    mHandover->unrequestFormula("B");
    EXPECT_TRUE(watch.expired()) << "at once, although the service may still hold what stands in their place";
}

TEST_F(Handover, AWithdrawalOnAnotherThreadReleasesOnTheUserInterfaceThread) {
    struct Witness {
        ~Witness() { EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread()); }
    };
    auto witness = std::make_shared<Witness>();
    const std::weak_ptr<Witness> watch = witness;
    QVector<CFormulaParam> params(1);
    params[0].mRequestId = "A";
    mHandover->requestFormulas(
        params,
        [witness](const FormulaMetaPtr &, const FormulaResultPtr &, const QString &, int, const QString &,
                  bool) {},
        FormulaRealtimeCallback());
    witness.reset();
    std::thread([this] { mHandover->unrequestFormula("A"); }).join();
    EXPECT_FALSE(watch.expired());
    settle();
    EXPECT_TRUE(watch.expired());
}

TEST_F(Handover, AnEventLoopInsideACallbackGoesOnWithWhatFollows) {
    ask({"A"});
    QEventLoop inside;
    mOnCall = [&](const QString &what) {
        if (what == "A:H2") {
            inside.exec(); // ends with the point
        } else {
            inside.quit();
        }
    };
    history(live("A"), 2);
    point(live("A"), 572, 1.0);
    EXPECT_EQ(settle(), (QStringList{"A:H2", "A:P572=1"}));
}

TEST_F(Handover, InputComesBetweenManyResults) {
    QStringList ids;
    for (int i = 0; i < 200; ++i) {
        ids.append(QString::number(i));
    }
    ask(ids);
    bool turned = false;
    int before = 0;
    QTimer input;
    input.setSingleShot(true);
    QObject::connect(&input, &QTimer::timeout, [&] {
        turned = true;
        before = mHandover->pending();
    });
    mOnCall = [](const QString &) { QThread::msleep(1); }; // 200 ms of work in all
    for (const QString &id : ids) {
        history(live(id), 1);
    }
    input.start(0);
    settle();
    EXPECT_TRUE(turned);
    EXPECT_GT(before, 0) << "the event loop had its turn while results waited";
}

TEST_F(Handover, QuotesAndProgressComeOnTheUserInterfaceThreadToo) {
    mHandover->requestHistoryQuote(
        {}, {}, [this](int first, int second, const auto &records, const QString &text) {
            note(QStringLiteral("Q%1 %2 %3 %4").arg(first).arg(second).arg(records.size()).arg(text));
        });
    CHistoryDataParam range;
    mHandover->suppleDataFromServer("name", range,
                                    [this](int done, int total, const QString &, const QString &) {
                                        note(QStringLiteral("S%1/%2").arg(done).arg(total));
                                    });
    std::thread([this] {
        mService.mQuoteRequests.front().onQuotes(1, 2, {nullptr}, "mine");
        mService.mOnProgress(3, 4, QString(), QString());
    }).join();
    EXPECT_EQ(settle(), (QStringList{"Q1 2 1 mine", "S3/4"}));
}

TEST_F(Handover, WhatWaitsGoesWithTheHandoverAndLateCallsAreHarmless) {
    ask({"A"});
    const fakehost::LiveRequest late = live("A");
    const std::weak_ptr<int> watch = mHeld;
    mHeld.reset();
    mHandover->requestHistoryQuote({}, {}, [](int, int, const auto &, const QString &) {});
    history(late, 2);
    mHandover.reset();
    EXPECT_TRUE(watch.expired());
    history(late, 3);
    point(late, 573, 1.0);
    mService.mQuoteRequests.front().onQuotes(0, 0, {}, QString());
    QCoreApplication::processEvents();
    EXPECT_TRUE(mCame.isEmpty());
}

TEST(ResultQueue, WakesOnceUntilNothingWaits) {
    int wakes = 0;
    ResultQueue queue([&] { ++wakes; });
    queue.postTask([] {});
    queue.postTask([] {});
    EXPECT_EQ(wakes, 1);
    EXPECT_TRUE(queue.deliverOne());
    EXPECT_TRUE(queue.deliverOne());
    queue.postTask([] {}); // before anybody was told that nothing waits
    EXPECT_EQ(wakes, 1);
    EXPECT_TRUE(queue.deliverOne());
    EXPECT_FALSE(queue.deliverOne());
    queue.postTask([] {});
    EXPECT_EQ(wakes, 2);
}

} // namespace handovertest
