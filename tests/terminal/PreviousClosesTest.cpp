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
    constexpr int kDays = PreviousCloses::kMost + 10;
    const auto daysBefore = [](int i) { return kToday - i * 86400; };
    MarketWriter writer(mStore);
    for (int i = 1; i <= kDays; ++i) {
        writer.putDay(mInstrument, daysBefore(i), BarSource::Imported,
                      {tests::pricedMinute(tests::kOpen - i * 86400000LL, 10.5)});
        writer.putPreviousClose(mInstrument, daysBefore(i), 20.0 + i);
    }
    ASSERT_TRUE(writer.commit()) << qPrintable(writer.error());
    EXPECT_EQ(price(), 10.0);
    for (int i = 1; i <= kDays; ++i) {
        ASSERT_EQ(mCloses.of(tests::kShare, daysBefore(i)).price, 20.0 + i);
        ASSERT_LE(mCloses.daysInMemory(), PreviousCloses::kMost);
    }
    EXPECT_EQ(price(), 10.0) << "it was dropped meanwhile";
}

TEST_F(PreviousClosesTest, WhatIsNotKnownIsAskedAgain) {
    EXPECT_EQ(mCloses.of(tests::kShare, tests::kYesterday).price, TC::kUnsetValue);
    EXPECT_EQ(mCloses.daysInMemory(), 0);
    EXPECT_EQ(price(), 10.0);
    EXPECT_EQ(mCloses.daysInMemory(), 1);
}

TEST_F(PreviousClosesTest, AnotherCatalogueCountsAtOnce) {
    EXPECT_EQ(price(), 10.0);
    changeBehindTheProgram(11.0);
    EXPECT_EQ(price(), 10.0) << "nobody has told of it";
    ASSERT_EQ(mStore.reload().toStdString(), "");
    EXPECT_EQ(price(), 11.0);
}
