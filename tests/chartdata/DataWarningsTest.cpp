// What the log tells of results that cannot be right.

#include "host/services/DataLog.h"
#include "tests/chartdata/ChartDataFixture.h"
#include "tests/support/MessageGuard.h"

#include <QLoggingCategory>

namespace tests {
namespace {

class DataWarning : public ChartData {
protected:
    DataWarning() {
        mData = make(TC::EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"});
        mData->request(corvane::ERunMode::Ordinary);
    }
    ~DataWarning() override {
        QLoggingCategory::setFilterRules(QString());
        mData->unrequest();
    }
    static void switchOn() { QLoggingCategory::setFilterRules(QStringLiteral("timeshare.data=true")); }
    void history(const QString &id, const std::vector<se::TimePosition> &times) {
        const std::vector<double> values(times.size(), 10.0);
        mData->onHistoryCallback(makeMeta(2), makeResult(times, {values, values}), id, 1, QString(), false);
    }
    QString id() const { return mHost.mFormulas.mLive.find("REALTIME.lua", "600000").id(); }

    const std::vector<se::TimePosition> kMinuteMissing = {minuteTime(kDay, 570), minuteTime(kDay, 572)};
    boost::shared_ptr<TC::CRealtimeData> mData;
};

TEST_F(DataWarning, NothingIsToldUnlessAskedFor) {
    EXPECT_FALSE(TC::dataLog().isWarningEnabled());
    ASSERT_FALSE(id().isEmpty());
    history(id(), kMinuteMissing); // a message would fail the test
}

TEST_F(DataWarning, AKindIsToldOnceARequestWithWhoseItIs) {
    switchOn();
    const ExpectMessages expected("minutes before it are missing");
    history(id(), kMinuteMissing);
    ASSERT_EQ(expected.seen().size(), 1);
    EXPECT_TRUE(expected.seen()[0].startsWith("SH600000 REALTIME, request " + id() + ": point 1 is of 09:32"))
        << expected.seen()[0].toStdString();
    history(id(), kMinuteMissing);
    EXPECT_EQ(expected.seen().size(), 1) << "once a request";
    mData->unrequest();
    mData->request(corvane::ERunMode::Ordinary);
    history(id(), kMinuteMissing);
    EXPECT_EQ(expected.seen().size(), 2) << "the next request";
}

TEST_F(DataWarning, SoundResultsAreNotTalkedOf) {
    switchOn();
    history(id(), minuteTimes(kDay, 570, 121));
    mData->onRealtimeCallback(0, id(), makePoint(minuteTime(kDay, 690), {10.0, 10.0}));
    mData->onRealtimeCallback(0, id(), makePoint(minuteTime(kDay, 781), {10.0, 10.0}));
}

TEST_F(DataWarning, PointsBeforeTheHistoryAndWithoutAPlaceAreTold) {
    switchOn();
    const ExpectMessages expected("dropped");
    mData->onRealtimeCallback(0, id(), makePoint(minuteTime(kDay, 570), {10.0, 10.0}));
    ASSERT_EQ(expected.seen().size(), 1);
    EXPECT_TRUE(expected.seen()[0].contains("a point came before the history"));
    mData->unrequest();
    mData->request(corvane::ERunMode::Ordinary);
    history(id(), minuteTimes(kDay, 570, 3));
    mData->onRealtimeCallback(0, id(), makePoint(minuteTime(kDay, 569), {10.0, 10.0}));
    ASSERT_EQ(expected.seen().size(), 2);
    EXPECT_TRUE(expected.seen()[1].contains("the point of 09:29 is dropped: the series is at 09:32"));
}

TEST_F(DataWarning, TheFirstPointOfADayThatHasNoneYetIsSound) {
    switchOn();
    history(id(), {});
    mData->onRealtimeCallback(0, id(), makePoint(minuteTime(kDay, 570), {10.0, 10.0}));
    int taken = 0;
    mData->readData([&taken](const auto &series) {
        for (const se::RPCFormulaResultCache &one : series) {
            taken += static_cast<int>(one.result.mTimes.size());
        }
    });
    EXPECT_EQ(taken, 1);
}

TEST_F(DataWarning, AFormulaThatTheCatalogueDoesNotKnowIsTold) {
    switchOn();
    const ExpectMessages expected("unknown formula");
    const auto unknown = make(TC::EIndexDisplayType::Sub, {"NOSUCH"});
    unknown->request(corvane::ERunMode::Ordinary);
    ASSERT_EQ(expected.seen().size(), 1);
    EXPECT_TRUE(
        expected.seen()[0].startsWith("unknown formula \"NOSUCH\": CFormulaOperateManager::getFormula"));
    unknown->unrequest();
}

TEST_F(DataWarning, NoDescriptionAndNoHistoryAreTold) {
    switchOn();
    const ExpectMessages expected("is null");
    mData->onHistoryCallback(nullptr, makeResult({}, {}), id(), 1, QString(), false);
    EXPECT_EQ(expected.seen().size(), 1);
    const QString volume = mHost.mFormulas.mLive.find("REALTIMEVOL.lua", "600000").id();
    mData->onHistoryCallback(makeMeta(1), nullptr, volume, 1, QString(), false);
    EXPECT_EQ(expected.seen().size(), 2);
}

TEST_F(DataWarning, AnUnsetPreviousCloseIsToldWithItsSource) {
    switchOn();
    const ExpectMessages expected("previous close");
    mUi->mStockDetail = std::make_shared<TC::CInstrumentDetail>(*mUi->mStockDetail);
    mUi->mStockDetail->mLastClose = 0.0;
    history(id(), minuteTimes(kDay, 570, 3));
    ASSERT_EQ(expected.seen().size(), 1);
    EXPECT_TRUE(expected.seen()[0].contains("CInstrumentDetail::mLastClose"));
    mUi->mGetTradeDateFunc = [] { return kDay; };
    mHost.mStocks.mCloses.clear();
    const QString volume = mHost.mFormulas.mLive.find("REALTIMEVOL.lua", "600000").id();
    history(volume, minuteTimes(kDay, 570, 3));
    ASSERT_EQ(expected.seen().size(), 2);
    EXPECT_TRUE(expected.seen()[1].contains("CStockManager::getCurrentDateLastClose"));
}

TEST_F(DataWarning, AnAxisWithoutAPreviousCloseIsToldThoughTheTitleHasOne) {
    switchOn();
    const ExpectMessages expected("previous close");
    mHost.mStocks.mCloses.clear();
    history(id(), minuteTimes(kDay, 570, 3));
    ASSERT_EQ(expected.seen().size(), 1);
    EXPECT_TRUE(expected.seen()[0].contains("CStockManager::getCurrentDateLastClose, around which the axis"));
}

} // namespace
} // namespace tests
