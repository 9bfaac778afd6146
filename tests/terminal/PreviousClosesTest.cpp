#include "terminal/market/PreviousCloses.h"

#include "terminal/market/MarketWriter.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <QSqlError>
#include <QSqlQuery>

using namespace terminal;
using tests::kToday;

namespace {

class PreviousClosesTest : public StoreFixture {
protected:
    void SetUp() override {
        openStore();
        MarketWriter writer(mStore);
        Instrument instrument;
        instrument.market = QStringLiteral("SH");
        instrument.code = QStringLiteral("600000");
        instrument.sessions = DaySessions({{570, 690}, {781, 900}});
        mInstrument = writer.putInstrument(instrument);
        writer.putDay(mInstrument, kToday, BarSource::Imported, {tests::pricedMinute(tests::kOpen, 10.5)});
        writer.putPreviousClose(mInstrument, kToday, 10.0);
        ASSERT_TRUE(writer.commit()) << qPrintable(writer.error());
    }
    double price() { return mCloses.of(tests::kShare, kToday).price; }
    /// As another process does.
    void changeBehindTheProgram(double price) {
        QSqlQuery query(mStore.connection());
        ASSERT_TRUE(query.exec(QStringLiteral("UPDATE previous_closes SET price = %1").arg(price)))
            << qPrintable(query.lastError().text());
    }

    qint64 mInstrument = 0;
    qint64 mNow = 5000;
    PreviousCloses mCloses{mStore, [this] { return mNow; }};
};

} // namespace

TEST_F(PreviousClosesTest, WhatThisProgramWritesCountsAtOnce) {
    EXPECT_EQ(price(), 10.0);
    MarketWriter writer(mStore);
    writer.putPreviousClose(mInstrument, kToday, 11.0);
    ASSERT_TRUE(writer.commit());
    EXPECT_EQ(price(), 11.0);
}

TEST_F(PreviousClosesTest, TheStoreIsAskedOnceASecond) {
    EXPECT_EQ(price(), 10.0);
    changeBehindTheProgram(11.0);
    mNow += PreviousCloses::kAge - 1;
    EXPECT_EQ(price(), 10.0) << "it was not asked";
    EXPECT_EQ(mCloses.of(tests::kShare, tests::kYesterday).price, TC::kUnsetValue) << "another day";
    ++mNow;
    EXPECT_EQ(price(), 11.0);
}

TEST_F(PreviousClosesTest, OfMoreDaysThanAreKeptEachIsRight) {
    for (int i = 1; i <= 2 * PreviousCloses::kMost; ++i) {
        ASSERT_EQ(mCloses.of(tests::kShare, kToday - i * 86400).price, TC::kUnsetValue);
    }
    EXPECT_EQ(price(), 10.0);
}
