// Imports of real minute bars of real markets, which stand beside the source tree on some machines only.

#include "terminal/market/MarketDate.h"
#include "terminal/market/MinuteBarImporter.h"
#include "terminal/market/StoreStockManager.h"
#include "tests/terminal/StoreFixture.h"

#include <QFileInfo>

#include <cmath>

using namespace terminal;

namespace {

class RealBarsTest : public StoreFixture {
protected:
    void SetUp() override {
        if (!QFileInfo::exists(folder())) {
            GTEST_SKIP() << "no folder of real bars";
        }
        openStore();
    }
    static QString folder() { return QStringLiteral(TIMESHARE_SOURCE_DIR "/../shared/data/"); }

    ImportedBars import(const char *file, const char *market = "", const char *code = "") {
        ImportOptions options;
        options.market = QString::fromLatin1(market);
        options.code = QString::fromLatin1(code);
        const ImportOutcome outcome =
            MinuteBarImporter(mStore, options).importFile(folder() + QString::fromLatin1(file));
        EXPECT_EQ(outcome.error.toStdString(), "");
        return outcome.instruments.value(0);
    }
    MinuteBars bars(const char *key, const QDate &day) {
        return mStore.bars(mStore.catalogue()->find(QString::fromLatin1(key))->id, dayOf(day));
    }
    QVector<int> days(const char *key) {
        return mStore.days(mStore.catalogue()->find(QString::fromLatin1(key))->id);
    }
};

} // namespace

TEST_F(RealBarsTest, AShareOfShenzhen) {
    const ImportedBars imported = import("a_000001.SZ_1min_20180102-20180115.csv");
    EXPECT_EQ(imported.key, QStringLiteral("SZ000001"));
    EXPECT_EQ(imported.bars, 2400);
    EXPECT_EQ(days("SZ000001").size(), 10);
    const MinuteBars day = bars("SZ000001", QDate(2018, 1, 5));
    ASSERT_EQ(day.size(), 240u);
    EXPECT_EQ(day[0].time, timeOf(QDate(2018, 1, 5), 571));
    const MinuteBars first = bars("SZ000001", QDate(2018, 1, 2));
    EXPECT_EQ(first[0].price, 13.38);
    EXPECT_EQ(first[0].volume, 2003635.0);
    EXPECT_DOUBLE_EQ(first[1].average, (26785576.72 + 11587569.78) / (2003635.0 + 867181.0));
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SZ000001"))->priceTick, 0.01);
    // The close of 2018-01-02 is the previous close of the day after; that of the first day is not known, and
    // its first price stands for it.
    StoreStockManager stocks(mStore);
    EXPECT_EQ(stocks.getCurrentDateLastClose(QStringLiteral("SZ000001"), dayOf(QDate(2018, 1, 3))),
              first.back().price);
    EXPECT_EQ(stocks.getCurrentDateLastClose(QStringLiteral("SZ000001"), dayOf(QDate(2018, 1, 2))),
              first.front().open);
}

TEST_F(RealBarsTest, AnIndexOfShanghai) {
    EXPECT_EQ(import("a_000001.XSHG_index_1min_20200701-20200708.csv").bars, 1440);
    const MinuteBars day = bars("SH000001", QDate(2020, 7, 1));
    ASSERT_EQ(day.size(), 240u);
    EXPECT_EQ(day[0].open, 2991.18);
    EXPECT_EQ(day[0].price, 2990.43);
    EXPECT_EQ(day[0].high, 2991.5);
    EXPECT_EQ(day[0].amount, 0.0);
    EXPECT_NEAR(day[1].average, (2990.43 * 720858300.0 + 2986.91 * 311297200.0) / (720858300.0 + 311297200.0),
                1e-9);
}

TEST_F(RealBarsTest, AShareOfShanghaiWithItsAuctionAndVolumeInLots) {
    EXPECT_EQ(import("a_600519_1min_20260323-20260325.csv", "SH", "600519").bars, 723);
    const MinuteBars day = bars("SH600519", QDate(2026, 3, 23));
    ASSERT_EQ(day.size(), 241u);
    EXPECT_EQ(day[0].time, timeOf(QDate(2026, 3, 23), 570));
    EXPECT_EQ(day[0].volume, 22700.0); // 227 lots
    EXPECT_EQ(day[1].average, 1432.029);
}

TEST_F(RealBarsTest, GoldHasItsNightAcrossMidnight) {
    EXPECT_EQ(import("fut_AU_1min_20190625-20190704.csv", "SHFE", "AU").bars, 4596);
    EXPECT_EQ(days("SHFEAU").size(), 9); // eight whole ones, and the last night
    const MinuteBars monday = bars("SHFEAU", QDate(2019, 7, 1));
    ASSERT_EQ(monday.size(), 556u);
    const Instrument *gold = mStore.catalogue()->find(QStringLiteral("SHFEAU"));
    EXPECT_EQ(gold->priceTick, 0.05);
    const std::vector<qint64> positions = gold->sessions.times(QDate(2019, 7, 1), QDate(2019, 6, 28));
    ASSERT_EQ(positions.size(), 556u);
    for (size_t i = 0; i < positions.size(); ++i) {
        ASSERT_EQ(monday[i].time, positions[i]) << i;
    }
    EXPECT_EQ(days("SHFEAU").last(), dayOf(QDate(2019, 7, 5)));
    const MinuteBars tuesday = bars("SHFEAU", QDate(2019, 6, 25));
    EXPECT_EQ(tuesday[1].average, 316.1040000000001);
}

TEST_F(RealBarsTest, SteelHasAShortNight) {
    EXPECT_EQ(import("fut_RB_1min_20190625-20190704.csv", "SHFE", "RB").bars, 2889);
    EXPECT_EQ(bars("SHFERB", QDate(2019, 7, 1)).size(), 346u);
    EXPECT_EQ(bars("SHFERB", QDate(2019, 7, 5)).size(), 121u);
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SHFERB"))->priceTick, 1.0);
}

TEST_F(RealBarsTest, ManganeseHasNoNight) {
    EXPECT_EQ(import("fut_SM_1min_20190625-20190704.csv", "CZCE", "SM").bars, 1800);
    EXPECT_EQ(bars("CZCESM", QDate(2019, 7, 4)).size(), 225u);
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("CZCESM"))->sessions.count(), 226);
}

TEST_F(RealBarsTest, AnIndexFutureWithAnUnnamedColumn) {
    EXPECT_EQ(import("fut_IF_1min_20230718-20230721.csv", "CFFEX", "IF2307").bars, 960);
    EXPECT_EQ(bars("CFFEXIF2307", QDate(2023, 7, 21)).size(), 240u);
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("CFFEXIF2307"))->priceTick, 0.2);
}
