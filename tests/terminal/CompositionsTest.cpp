#include "terminal/market/Compositions.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "tests/terminal/StoreFixture.h"

#include <QMap>

using namespace terminal;

namespace {

class CompositionsTest : public StoreFixture {
protected:
    const QDate mDay{2026, 11, 20};
    const PreviousCloseOf mCloses = [this](const QString &key, int day) {
        return mClose.value({key, day}, mAny[key]);
    };

    void SetUp() override {
        openFilledStore(timeOf(mDay, 630));
        mAny["SH600519"] = 1400.0;
        mAny["SZ000858"] = 100.0;
    }
    void addIndex(qint64 start, double base) {
        UserIndex index;
        index.key = "CD9";
        index.detail = TC::CIndexDetail(index.key);
        index.detail.mStartTime = start;
        index.detail.mBaseValue = base;
        index.detail.mMembers = {"SH600519", "SZ000858"};
        MarketWriter writer(mStore);
        ASSERT_TRUE(writer.addIndex(index));
        ASSERT_TRUE(writer.commit());
    }
    std::vector<CompositeMember> members(const QString &key) {
        return compositionOf(mStore, key, dayOf(mDay), mCloses).value_or(std::vector<CompositeMember>());
    }

    QMap<QPair<QString, int>, double> mClose;
    QMap<QString, double> mAny;
};

} // namespace

TEST_F(CompositionsTest, AnInstrumentIsNoComposite) {
    EXPECT_FALSE(compositionOf(mStore, "SH600000", dayOf(mDay), mCloses));
    EXPECT_FALSE(compositionOf(mStore, "nothing", dayOf(mDay), mCloses));
}

TEST_F(CompositionsTest, AnIndexWithoutAStartHasItsBaseValueAtTheCloseBefore) {
    const std::vector<CompositeMember> index = members("CD100002"); // base value 1000
    ASSERT_EQ(index.size(), 2u);
    EXPECT_DOUBLE_EQ(index[0].weight, 500.0 / 1400.0);
    EXPECT_DOUBLE_EQ(index[1].weight, 500.0 / 100.0);
    // +10 % and -2 % make +4 %.
    EXPECT_NEAR(index[0].weight * 1540.0 + index[1].weight * 98.0, 1040.0, 1e-9);
}

TEST_F(CompositionsTest, AMemberWithoutACloseBeforeDoesNotCount) {
    mAny["SZ000858"] = TC::kUnsetValue;
    const std::vector<CompositeMember> index = members("CD100002");
    ASSERT_EQ(index.size(), 1u);
    EXPECT_DOUBLE_EQ(index[0].weight * 1400.0, 1000.0);
    mAny.clear();
    EXPECT_TRUE(members("CD100002").empty());
}

TEST_F(CompositionsTest, FromItsStartOnAnIndexGoesOnFromTheCloseOfTheDayBefore) {
    const QDate first(2026, 11, 18); // two trading days before
    addIndex(timeOf(first, 0), 200.0);
    // The closes are those of the store; what they are compared with makes +50 % and -10 % on the first day (+20 %),
    // and +10 % and +10 % on the second.
    const double factors[2][2] = {{1.5, 0.9}, {1.1, 1.1}};
    const char *keys[] = {"SH600519", "SZ000858"};
    for (int d = 0; d < 2; ++d) {
        for (int i = 0; i < 2; ++i) {
            const QString key = QString::fromLatin1(keys[i]);
            const int day = dayOf(first.addDays(d));
            const auto summary = mStore.summary(mStore.catalogue()->find(key)->id, day);
            ASSERT_TRUE(summary);
            mClose[{key, day}] = summary->close / factors[d][i];
        }
    }
    const std::vector<CompositeMember> index = members("CD9");
    ASSERT_EQ(index.size(), 2u);
    EXPECT_NEAR(index[0].weight * 1400.0 + index[1].weight * 100.0, 200.0 * 1.2 * 1.1, 1e-9);
}

TEST_F(CompositionsTest, BeforeItsStartAnIndexStandsAtItsBase) {
    addIndex(timeOf(mDay.addDays(5), 0), 0.0);
    const std::vector<CompositeMember> index = members("CD9");
    ASSERT_EQ(index.size(), 2u);
    EXPECT_NEAR(index[0].weight * 1400.0 + index[1].weight * 100.0, 100.0, 1e-9) << "100 when none is given";
}

TEST_F(CompositionsTest, APortfolioCountsSharesAndContractsWithTheirMultipliers) {
    const std::vector<CompositeMember> stocks = members("TZZH1");
    ASSERT_EQ(stocks.size(), 3u);
    EXPECT_EQ(stocks[0].key, "SH600000");
    EXPECT_EQ(stocks[0].weight, 20000.0);
    QMap<QString, double> futures;
    for (const CompositeMember &member : members("TZZH2")) {
        futures[member.key] = member.weight;
    }
    EXPECT_EQ(futures.size(), 2);
    EXPECT_EQ(futures["SHFEAU2612"], 2 * 1000.0) << "two lots of gold, 1000 g each";
    EXPECT_EQ(futures["CFFEXIF2612"], -300.0) << "one contract of the CSI 300 sold, 300 yuan a point";
}

TEST_F(CompositionsTest, ThePositionsAreThoseOfTheLastFuture) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const QString last = catalogue->portfolios.value("TZZH2").positions.last().key;
    EXPECT_EQ(compositeSessions(*catalogue, "TZZH2"), catalogue->find(last)->sessions);
    EXPECT_FALSE(compositeSessions(*catalogue, "TZZH2") == catalogue->find("SH600000")->sessions);
    EXPECT_EQ(compositeSessions(*catalogue, "TZZH1"), catalogue->find("SH600000")->sessions);
    EXPECT_EQ(compositeSessions(*catalogue, "CD100001"), catalogue->find("SH600000")->sessions);
}
