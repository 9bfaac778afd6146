#include "terminal/market/MarketServices.h"
#include "host/services/CHostClock.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedClock.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

using namespace terminal;
using TC::CSingletonT;
using tests::clockTime;
using tests::kFriday;

namespace {

class MarketServicesTest : public StoreFixture {
protected:
    void SetUp() override {
        mClock.pause();
        TC::CSingletonT<TC::CHostClock>::install(&mClock);
        openFilledStore(mClock.now());
        mServices = std::make_unique<MarketServices>(mStore);
    }
    void TearDown() override {
        mServices.reset();
        TC::CSingletonT<TC::CHostClock>::install(nullptr);
    }
    static TC::CStockManager &stocks() { return CSingletonT<TC::CStockManager>::instance(); }
    static TC::CTradeOpenCloseTimeManager &times() {
        return CSingletonT<TC::CTradeOpenCloseTimeManager>::instance();
    }
    static TC::CSectorManager &sectors() { return CSingletonT<TC::CSectorManager>::instance(); }
    double closeOf(const char *key, const QDate &day) {
        return mStore.summary(mStore.catalogue()->find(QString::fromLatin1(key))->id, dayOf(day))->close;
    }
    static QPair<qint64, qint64> span(const char *key, const QDate &day) {
        int date = dayOf(day);
        return stocks().getStartEndTime(stocks().getInstrumentDetail(QString::fromLatin1(key)), date);
    }

    SimulatedClock mClock{clockTime(kFriday, 10, 0)};
    std::unique_ptr<MarketServices> mServices;
};

} // namespace

TEST_F(MarketServicesTest, ARecordHasAllItsFields) {
    const TC::CInstrumentDetailPtr share = stocks().getInstrumentDetail(QStringLiteral("SH600000"));
    ASSERT_TRUE(share);
    EXPECT_EQ(share->mMarket, "SH");
    EXPECT_EQ(share->mCode, "600000");
    EXPECT_EQ(share->mName, "浦发银行");
    EXPECT_EQ(share->mPriceTick, 0.01);
    EXPECT_GT(share->mFloatShares, 0.0);
    EXPECT_FALSE(share->mUnderlying);
    EXPECT_EQ(share->mLastClose, closeOf("SH600000", QDate(2026, 11, 19)));
    EXPECT_EQ(stocks().getInstrumentDetail(QStringLiteral("SH600000")),
              share); // the same one while the day lasts
    EXPECT_EQ(stocks().getInstrumentDetail(QStringLiteral("CFFEXTF2612"))->mProductId, "TF");
    const TC::CInstrumentDetailPtr bond = stocks().getInstrumentDetail(QStringLiteral("SH113050"));
    ASSERT_TRUE(bond && bond->mUnderlying);
    EXPECT_EQ(bond->mUnderlying->mCode, "601009");
    EXPECT_EQ(bond->mUnderlying->mMarket, "SH");
    EXPECT_FALSE(stocks().getInstrumentDetail(QStringLiteral("SH999999")));
}

TEST_F(MarketServicesTest, TheDefaultIsTheFirstBoardsOldestBank) {
    EXPECT_EQ(TC::getDetailKey(stocks().getDefaultDetail()), "SH600000");
}

TEST_F(MarketServicesTest, KnowsInstrumentsAndPortfolios) {
    EXPECT_TRUE(stocks().isExist(QStringLiteral("SHFEAU2612")));
    EXPECT_FALSE(stocks().isExist(QStringLiteral("TZZH1")));
    EXPECT_TRUE(stocks().isPortfolio(QStringLiteral("TZZH1")));
    EXPECT_FALSE(stocks().isPortfolio(QStringLiteral("SH600000")));
}

TEST_F(MarketServicesTest, ThePreviousCloseIsThatOfTheTradingDayBefore) {
    const QString key = QStringLiteral("SH600000");
    EXPECT_EQ(stocks().getCurrentDateLastClose(key, dayOf(QDate(2026, 11, 16))),
              closeOf("SH600000", QDate(2026, 11, 13)));
    EXPECT_EQ(stocks().getCurrentDateLastClose(stocks().getInstrumentDetail(key), dayOf(kFriday)),
              closeOf("SH600000", QDate(2026, 11, 19)));
    const int first = mStore.days(mStore.catalogue()->find(key)->id).first();
    EXPECT_EQ(stocks().getCurrentDateLastClose(key, first), 9.86); // the price it came to the market with
    EXPECT_EQ(stocks().getCurrentDateLastClose(key, dayOf(QDate(2027, 3, 1))), TC::kUnsetValue);
    const int running = stocks().getLastTradingDay(QStringLiteral("SH"));
    EXPECT_EQ(stocks().getCurrentDateLastClose(key, 0), stocks().getCurrentDateLastClose(key, running));
    EXPECT_NE(stocks().getCurrentDateLastClose(key, 0), TC::kUnsetValue);
    EXPECT_EQ(stocks().getCurrentDateLastClose(QStringLiteral("SH999999"), first), TC::kUnsetValue);
    EXPECT_EQ(stocks().getCurrentDateLastClose(TC::CInstrumentDetailPtr(), first), TC::kUnsetValue);
}

TEST_F(MarketServicesTest, TheTradingDayFollowsTheHostClock) {
    EXPECT_EQ(stocks().getLastTradingDay(QStringLiteral("SH")), dayOf(kFriday));
    EXPECT_EQ(stocks().getLastTradingDay(QStringLiteral("SHFE")), dayOf(kFriday));
    mClock.setTime(clockTime(kFriday, 21, 10));
    EXPECT_EQ(stocks().getLastTradingDay(QStringLiteral("SH")), dayOf(kFriday));
    EXPECT_EQ(stocks().getLastTradingDay(QStringLiteral("SHFE")), dayOf(QDate(2026, 11, 23)));
    mClock.setTime(clockTime(QDate(2026, 11, 22), 12, 0));
    EXPECT_EQ(stocks().getLastTradingDay(QStringLiteral("SH")), dayOf(kFriday));
    EXPECT_EQ(stocks().getLastTradingDay(QStringLiteral("an unknown market")), dayOf(kFriday));
}

TEST_F(MarketServicesTest, ANewDayGivesANewRecordWithItsLastClose) {
    const TC::CInstrumentDetailPtr friday = stocks().getInstrumentDetail(QStringLiteral("SH600000"));
    mClock.setTime(clockTime(QDate(2026, 11, 23), 9, 0));
    const TC::CInstrumentDetailPtr monday = stocks().getInstrumentDetail(QStringLiteral("SH600000"));
    EXPECT_NE(friday, monday);
    EXPECT_EQ(monday->mLastClose, closeOf("SH600000", kFriday));
}

TEST_F(MarketServicesTest, TradeDatesShift) {
    EXPECT_EQ(stocks().getShiftTradeDate(QStringLiteral("SH"), dayOf(kFriday), -5), dayOf(QDate(2026, 11, 13)));
    EXPECT_EQ(stocks().getShiftTradeDate(QStringLiteral("SH"), dayOf(kFriday), 0), dayOf(kFriday));
}

TEST_F(MarketServicesTest, ADayRunsFromItsMidnightToTheEndOfTrading) {
    EXPECT_EQ(span("SH600000", kFriday), qMakePair(clockTime(kFriday, 0, 0), clockTime(kFriday, 15, 0)));
    EXPECT_EQ(span("SZ300750", kFriday), qMakePair(clockTime(kFriday, 0, 0), clockTime(kFriday, 15, 30)));
    EXPECT_EQ(span("CFFEXT2612", kFriday), qMakePair(clockTime(kFriday, 0, 0), clockTime(kFriday, 15, 15)));
    EXPECT_EQ(span("YSWPCN2612", kFriday),
              qMakePair(clockTime(kFriday, 0, 0), clockTime(QDate(2026, 11, 21), 2, 0)));
    int date = dayOf(kFriday);
    EXPECT_EQ(stocks().getStartEndTime(nullptr, date),
              qMakePair(clockTime(kFriday, 0, 0), clockTime(kFriday, 15, 0)));
}

TEST_F(MarketServicesTest, WithANightADayStartsOnTheEveningBefore) {
    const QDate monday(2026, 11, 23);
    EXPECT_EQ(span("SHFEAU2612", monday), qMakePair(clockTime(kFriday, 21, 0), clockTime(monday, 15, 0)));
    const QDate afterHoliday(2026, 10, 8);
    EXPECT_EQ(span("SHFEAU2612", afterHoliday),
              qMakePair(clockTime(afterHoliday, 0, 0), clockTime(afterHoliday, 15, 0)));
}

TEST_F(MarketServicesTest, OnlySessionsThatDifferFromTheMarketsAreTold) {
    QVector<QPair<int, int>> sessions{{1, 2}};
    int count = 7;
    for (const char *code : {"AU2612", "unknown"}) {
        EXPECT_FALSE(times().getTradeTime(QStringLiteral("SHFE"), QString::fromLatin1(code), sessions, count));
        EXPECT_EQ(count, 7);
        EXPECT_EQ(sessions.size(), 1);
    }
    EXPECT_TRUE(times().getTradeTime(QStringLiteral("SHFE"), QStringLiteral("RB2701"), sessions, count));
    EXPECT_EQ(count, 346);
    EXPECT_EQ(sessions, (DaySessions::Table{{1260, 1380}, {541, 615}, {631, 690}, {811, 900}}));
    EXPECT_TRUE(times().hasNightQuoter(QStringLiteral("SHFE"), QStringLiteral("AU2612")));
    EXPECT_TRUE(times().hasNightQuoter(QStringLiteral("SHFE"), QStringLiteral("RB2701")));
    EXPECT_FALSE(times().hasNightQuoter(QStringLiteral("CZCE"), QStringLiteral("SM701")));
    EXPECT_FALSE(times().hasNightQuoter(QStringLiteral("YSWP"), QStringLiteral("CN2612")));
    EXPECT_FALSE(times().hasNightQuoter(QStringLiteral("SHFE"), QStringLiteral("unknown")));
}

TEST_F(MarketServicesTest, SectorsConvertiblesAndPairs) {
    EXPECT_EQ(sectors().getBkzsCodeByName(QStringLiteral("银行")), QStringLiteral("BKZS801780"));
    EXPECT_EQ(sectors().getBkzsCodeByName(QStringLiteral("没有")), QString());
    EXPECT_EQ(sectors().getSWSectorByStock(QStringLiteral("SH600519"), 1), QStringLiteral("食品饮料"));
    EXPECT_EQ(sectors().getSWSectorByStock(QStringLiteral("SH600519"), 3), QStringLiteral("白酒Ⅲ"));
    EXPECT_EQ(sectors().getSWSectorByStock(QStringLiteral("SH600519"), 4), QString());
    EXPECT_EQ(sectors().getConvertibleCodeByStock(QStringLiteral("SH601009")),
              QSet<QString>{QStringLiteral("SH113050")});
    EXPECT_EQ(sectors().getConvertibleCodeByStock(QStringLiteral("SH113050")),
              QSet<QString>{QStringLiteral("SH601009")});
    EXPECT_TRUE(sectors().getConvertibleCodeByStock(QStringLiteral("SH600000")).isEmpty());
    EXPECT_EQ(sectors().getHStockByAStock(QStringLiteral("SH601318")), QStringLiteral("HK02318"));
    EXPECT_EQ(sectors().getAStockByHStock(QStringLiteral("HK02318")), QStringLiteral("SH601318"));
    EXPECT_EQ(sectors().getHStockByAStock(QStringLiteral("SH600000")), QString());
}

TEST_F(MarketServicesTest, UserDefinedIndexes) {
    TC::CIndexManager &indexes = CSingletonT<TC::CIndexManager>::instance();
    TC::CIndexDetail *index = indexes.getIndex(QStringLiteral("CD100001"));
    ASSERT_NE(index, nullptr);
    EXPECT_EQ(index, indexes.getIndex(QStringLiteral("CD100001")));
    EXPECT_EQ(index->key(), QStringLiteral("CD100001"));
    EXPECT_EQ(index->mMembers, (QList<QString>{"SH600000", "SH601318", "SZ000001"}));
    EXPECT_EQ(index->mBaseValue, 1000.0);
    EXPECT_EQ(TC::getUserdefineIndex("CD100001"), 1000.0);
    EXPECT_EQ(TC::FormulaDispatch::getUserIndexLastClose("CD100001"), 0.0);
    EXPECT_EQ(TC::FormulaDispatch::getinitIndex("CD100001"), 1000.0);
    EXPECT_EQ(indexes.getIndex(QStringLiteral("CD999999")), nullptr);
    EXPECT_EQ(TC::getUserdefineIndex("CD999999"), 0.0);
}

TEST_F(MarketServicesTest, TypesOfInstruments) {
    using kvservice::StockTypeCenter;
    EXPECT_TRUE(StockTypeCenter::isTypedStock(277, "SZ", "300750"));
    EXPECT_TRUE(StockTypeCenter::isTypedStock(10006, "SZ", "300750"));
    EXPECT_TRUE(StockTypeCenter::isTypedStock(100017, "SH", "688001"));
    EXPECT_TRUE(StockTypeCenter::isTypedStock(135, "SZ", "127045"));
    EXPECT_FALSE(StockTypeCenter::isTypedStock(135, "SH", "600000"));
    EXPECT_FALSE(StockTypeCenter::isTypedStock(135, "XX", "1"));
    EXPECT_TRUE(TC::isIndexEx("SH", "000001"));
    EXPECT_TRUE(TC::isIndexEx("BKZS", "801780"));
    EXPECT_FALSE(TC::isIndexEx("SZ", "000001"));
    EXPECT_EQ(TC::getStockConvertibleBond("SZ", "002714"), "127045");
    EXPECT_EQ(TC::getStockConvertibleBond("SZ", "127045"), "");
    EXPECT_EQ(TC::getStockConvertibleBond("SH", "600000"), "");
}
