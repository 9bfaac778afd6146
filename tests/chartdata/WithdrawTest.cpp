// Requests and formulas that go: whoever holds what when they do.

#include "tests/chartdata/ChartDataFixture.h"

#include "host/services/CReplayManager.h"

#include <future>
#include <thread>

using corvane::ERunMode;
using TC::CFormulaParam;
using TC::CRealtimeData;

namespace tests {
namespace {

class Withdraw : public ChartData {
protected:
    void overlay(const char *key, bool withAxis = true) {
        mUi->addStock(QString::fromLatin1(key), QString(), withAxis);
    }
};

TEST_F(Withdraw, WithdrawsFromBothServices) {
    auto data = requested();
    mHost.mLog.clear();
    data->unrequest();
    EXPECT_EQ(mHost.mLog.all(),
              (QStringList{"CStrategyTradeManager::updateBacktestData 7-REALTIME.lua-600000-1",
                           "CFormulaManager::unrequestFormulas 7-REALTIME.lua-600000-1",
                           "CReplayManager::deleteFormulas 7-REALTIME.lua-600000-1"}));
    EXPECT_TRUE(data->reqIds().isEmpty());
    mHost.mLog.clear();
    data->unrequest();
    EXPECT_TRUE(mHost.mLog.all().isEmpty());
}

/// A formula service that delivers on a thread of its own, and waits for it, while it is told to withdraw or to
/// start.
class DeliveringService : public fakehost::FakeFormulaManager {
public:
    explicit DeliveringService(fakehost::CallLog &log)
        : FakeFormulaManager(log), mPrevious(TC::CSingletonT<TC::CFormulaManager>::install(this)) {}
    ~DeliveringService() override { TC::CSingletonT<TC::CFormulaManager>::install(mPrevious); }

    void requestFormulas(QVector<CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback onRealtime) override {
        FakeFormulaManager::requestFormulas(params, onHistory, onRealtime);
        deliver();
    }
    void unrequestFormulas(const QVector<QString> &ids) override {
        if (mBusy) {
            return FakeFormulaManager::unrequestFormulas(ids);
        }
        deliver();
        FakeFormulaManager::unrequestFormulas(ids);
    }
    void unrequestFormula(const QString &id) override {
        if (!mBusy) {
            deliver();
        }
        FakeFormulaManager::unrequestFormula(id);
    }
    int mDelivered = 0;
    int mTimedOut = 0;

private:
    void deliver() {
        mBusy = true;
        const QList<fakehost::LiveRequest> live = mLive.all();
        std::packaged_task<void()> task([&live] {
            for (const fakehost::LiveRequest &request : live) {
                request.onHistory(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {10}), request.id(), 1,
                                  QString(), true);
            }
        });
        std::future<void> done = task.get_future();
        std::thread service(std::move(task));
        if (done.wait_for(std::chrono::seconds(20)) == std::future_status::ready) {
            ++mDelivered;
        } else {
            ++mTimedOut;
            std::fprintf(stderr, "a service thread is blocked by the lock of the pane\n");
            std::abort();
        }
        service.join();
        mBusy = false;
    }
    bool mBusy = false;
    TC::CFormulaManager *mPrevious;
};

TEST_F(Withdraw, ServiceMayDeliverFromAnotherThreadWhileRequestsStartAndEnd) {
    DeliveringService service(mHost.mLog);
    overlay("SH600001");
    auto data = requested({"REALTIME", "REALTIMEVOL"});
    EXPECT_EQ(service.mDelivered, 1);
    EXPECT_EQ(data->getData().size(), 3); // both of the main instrument, and the overlay aligned to it
    data->removeOverlayData();
    EXPECT_EQ(service.mDelivered, 2);
    data->removeFormula("REALTIMEVOL", true);
    EXPECT_EQ(service.mDelivered, 3);
    data->unrequest();
    EXPECT_EQ(service.mDelivered, 4);
}

TEST_F(Withdraw, ResultAfterUnrequestChangesNothingAndIsWithdrawnAgain) {
    auto data = requested();
    const QString id = data->getReqID(key("SH600000"));
    const fakehost::LiveRequest live = mHost.mFormulas.mLive.find("REALTIME.lua", "600000");
    data->unrequest();
    mHost.mLog.clear();
    live.onHistory(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {10}), id, 1, QString(), true);
    EXPECT_TRUE(data->getData().isEmpty());
    EXPECT_EQ(mHost.mLog.all(), (QStringList{"CFormulaManager::unrequestFormula " + id}));
    live.onRealtime(0, id, makePoint(minuteTime(kDay, 570), {10}));
    EXPECT_EQ(mHost.mLog.of("CFormulaManager::unrequestFormula").size(), 2);
    EXPECT_TRUE(mEvents.all().empty());
}

TEST_F(Withdraw, ObjectLivesUntilTheServiceLetsGo) {
    auto data = requested();
    boost::weak_ptr<CRealtimeData> watch = data;
    data.reset();
    EXPECT_FALSE(watch.expired());
    mHost.mFormulas.unrequestFormula("7-REALTIME.lua-600000-1");
    EXPECT_TRUE(watch.expired());
}

TEST_F(Withdraw, DestructionWithdrawsAndDisconnects) {
    auto data = makeMain();
    data->request(ERunMode::Ordinary);
    const QString id = data->getReqID(key("SH600000"));
    EXPECT_EQ(mHost.mLinkage.sigLinkageChanged.num_slots(), 1u);
    // The stale delivery is the last thing that the service does for the object.
    data->unrequest();
    data->request(ERunMode::Ordinary);
    mHost.mFormulas.mLive.remove(data->getReqID(key("SH600000")));
    mHost.mLog.clear();
    data.reset();
    EXPECT_EQ(mHost.mLog.of("CFormulaManager::unrequestFormulas").size(), 1);
    EXPECT_EQ(mHost.mLinkage.sigLinkageChanged.num_slots(), 0u);
    mHost.mLinkage.sigLinkageChanged({"SH600000"});
}

TEST_F(Withdraw, WithdrawingOverlaysLeavesTheMainInstrument) {
    overlay("SH600001");
    overlay("SZ000001", false);
    auto data = requested();
    const QString main = data->getReqID(key("SH600000"));
    const QString ids = data->getReqID(key("SH600001")) + "," + data->getReqID(key("SZ000001"));
    mHost.mLog.clear();
    data->unrequestOverlays();
    EXPECT_EQ(mHost.mLog.all(), (QStringList{"CStrategyTradeManager::updateBacktestData " + ids,
                                             "CFormulaManager::unrequestFormulas " + ids}));
    EXPECT_EQ(data->reqIds(), (QVector<QString>{main}));
}

TEST_F(Withdraw, RemovingOverlaysDropsTheirSeriesAndKeepsTheMainOne) {
    overlay("SH600001");
    mUi->mAddNoAxisStocks.append(mUi->getStockDetail()); // the main instrument over itself
    auto data = requested();
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, 11}));
    history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 2), {20, 21}));
    ASSERT_EQ(data->getData().size(), 2);
    data->removeOverlayData();
    EXPECT_EQ(data->getData().keys(), (QList<TC::CFormulaKey>{key("SH600000")}));
    // The raw series went too: the next main series aligns nothing.
    mUi->mAddNoAxisStocks.clear();
    data->request(ERunMode::Ordinary);
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, 11}));
    EXPECT_EQ(data->getData().size(), 1);
}

TEST_F(Withdraw, RemovedFormulaIsWithdrawnFromBothServicesWithItsRange) {
    auto data = requested({"REALTIME", "REALTIMEVOL"});
    const TC::CFormulaKey volume = key("SH600000", "REALTIMEVOL");
    history(*data, volume, makeResult(minuteTimes(kDay, 570, 1), {100}));
    ASSERT_TRUE(data->getMaxMinMap().contains(volume));
    const QString id = data->getReqID(volume);
    mHost.mLog.clear();
    data->removeFormula("realtimevol", false);
    EXPECT_EQ(mHost.mLog.all(),
              (QStringList{"CFormulaManager::unrequestFormula " + id, "CReplayManager::deleteFormulas " + id}));
    EXPECT_EQ(data->getFormulas(), (QList<QString>{"REALTIME"}));
    EXPECT_FALSE(data->getData().contains(volume));
    EXPECT_FALSE(data->getMaxMinMap().contains(volume));
    EXPECT_TRUE(data->getReqID(volume).isEmpty());
}

TEST_F(Withdraw, RemovedFormulaIsDrawnAwayOnlyWhenAskedFor) {
    auto data = makeSub({"MACD"});
    data->request(ERunMode::Ordinary);
    const auto macd = key("SH600000", "MACD");
    const auto values = makeResult(minuteTimes(kDay, 570, 4), {10, 14, 12, 13});
    history(*data, macd, values);
    startDrawing(*data);
    const QImage before = painted(*data);
    data->removeFormula("MACD", false);
    EXPECT_EQ(painted(*data), before);
    data->addFormula("MACD");
    data->request(ERunMode::Ordinary);
    history(*data, macd, values);
    EXPECT_TRUE(data->isRangeOutgrown()); // the range it was drawn with went with it
    data->removeFormula("MACD", true);
    EXPECT_NE(painted(*data), before);
}

TEST_F(Withdraw, RemovingAnUnknownFormulaTellsNobody) {
    auto data = makeMain({"REALTIME", "GONE"});
    mHost.mLog.clear();
    data->removeFormula("gone", true);
    EXPECT_EQ(data->getFormulas(), (QList<QString>{"REALTIME"}));
    EXPECT_TRUE(mHost.mLog.of("CFormulaManager::").isEmpty());
}

TEST_F(Withdraw, RemovingAllFormulasLeavesNone) {
    auto data = requested({"REALTIME", "REALTIMEVOL", "MACD"});
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {10}));
    data->removeAllFormulas();
    EXPECT_TRUE(data->getFormulas().isEmpty());
    EXPECT_TRUE(data->getData().isEmpty());
    EXPECT_TRUE(data->reqIds().isEmpty());
}

TEST_F(Withdraw, ReplacingTheSubFormulaKeepsTheMainOnesAndRequestsNothing) {
    auto data = requested({"REALTIME", "REALTIMEVOL", "MACD"});
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {10}));
    mHost.mLog.clear();
    data->replaceSubFormula("kdj");
    EXPECT_EQ(data->getFormulas(), (QList<QString>{"REALTIME", "REALTIMEVOL", "KDJ"}));
    EXPECT_TRUE(data->getData().isEmpty());
    EXPECT_TRUE(data->getMaxMinMap().isEmpty());
    EXPECT_TRUE(data->reqIds().isEmpty());
    EXPECT_TRUE(mHost.mLog.of("CFormulaManager::requestFormulas").isEmpty());
}

} // namespace
} // namespace tests
