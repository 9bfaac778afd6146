#include "chartdata/RequestBook.h"

#include "tests/chartdata/PartsFixture.h"

using namespace TC;

namespace tests {
namespace {

class Book : public PartsFixture {
protected:
    QStringList opened(corvane::ERunMode mode = corvane::ERunMode::Ordinary) {
        QStringList series;
        for (const CFormulaParam &param : mBook.open(kDay, mode)) {
            CFormulaKey of;
            EXPECT_TRUE(mBook.find(of, QString::fromStdString(param.mRequestId)));
            series.append(of.mStock + QLatin1Char(' ') + of.mFormula);
        }
        series.sort();
        return series;
    }

    IndexBaseDataReq mIds;
    RequestBook mBook{mView, EIndexDisplayType::Main, mFormulas, mIds};
};

TEST_F(Book, OpensTheFormulasAndTheBasicOneOnEachOverlay) {
    mFormulas = QList<QString>{"REALTIME", "MACD", "UNKNOWN"};
    mView.addStock(QStringLiteral("SZ000001"), QString(), true);
    EXPECT_EQ(opened(), (QStringList{"SH600000 MACD", "SH600000 REALTIME", "SZ000001 REALTIME"}));
}

TEST_F(Book, LaterEntryOfASeriesReplacesTheOneBefore) {
    const QString first = QString::fromStdString(mBook.open(kDay, corvane::ERunMode::Ordinary)[0].mRequestId);
    const QString second = QString::fromStdString(mBook.open(kDay, corvane::ERunMode::Ordinary)[0].mRequestId);
    CFormulaKey of;
    EXPECT_FALSE(mBook.find(of, first)) << "stale";
    EXPECT_TRUE(mBook.find(of, second));
    EXPECT_EQ(mBook.closeAll(), QVector<QString>{second});
}

TEST_F(Book, ClosedEntriesAreStaleAndToldOnce) {
    mFormulas = QList<QString>{"REALTIME", "MACD"};
    mView.addStock(QStringLiteral("SZ000001"), QString(), true);
    opened();
    EXPECT_EQ(mBook.closeOverlays(QStringLiteral("REALTIME")).size(), 1);
    EXPECT_TRUE(mBook.closeOverlays(QStringLiteral("REALTIME")).isEmpty());
    const QString id = mBook.close(key("SH600000", "MACD"));
    CFormulaKey of;
    EXPECT_FALSE(id.isEmpty());
    EXPECT_FALSE(mBook.find(of, id));
    EXPECT_EQ(mBook.close(key("SH600000", "MACD")), QString());
    EXPECT_EQ(mBook.closeAll().size(), 1) << "the main instrument's chart";
    EXPECT_TRUE(mBook.closeAll().isEmpty());
}

TEST_F(Book, WithdrawsNothingItself) {
    opened();
    mHost.mLog.clear();
    mBook.closeAll();
    EXPECT_EQ(mHost.mLog.all(), QStringList());
}

TEST_F(Book, FixedPriceSessionHasItsOwnHoursAndLevel) {
    mView.mFixedPriceRequest = true;
    mView.mFixedPriceLevel = 5;
    const QVector<CFormulaParam> params = mBook.open(kDay, corvane::ERunMode::Ordinary);
    ASSERT_EQ(params.size(), 1);
    EXPECT_EQ(params[0].mStart.first, kDay * 1000LL + 54300000);
    EXPECT_EQ(params[0].mEnd.first, kDay * 1000LL + 55800000);
    EXPECT_EQ(params[0].mLevel, 5);
}

} // namespace
} // namespace tests
