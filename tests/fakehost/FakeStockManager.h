#pragma once

#include "host/services/CStockManager.h"
#include "tests/fakehost/CallLog.h"

#include <QMap>
#include <QSet>

namespace fakehost {

/// Instruments by key; every market has the same trading days, which are all days unless listed.
class FakeStockManager : public TC::CStockManager {
public:
    explicit FakeStockManager(CallLog &log) : mLog(log) {}

    /// Adds an instrument and answers its record for further changes.
    TC::CInstrumentDetailPtr add(const std::string &market, const std::string &code, double lastClose = 10.0,
                                 double priceTick = 0.01) {
        auto detail = std::make_shared<TC::CInstrumentDetail>();
        detail->mMarket = market;
        detail->mCode = code;
        detail->mName = code;
        detail->mLastClose = lastClose;
        detail->mPriceTick = priceTick;
        mDetails[TC::getDetailQsKey(detail)] = detail;
        return detail;
    }

    TC::CInstrumentDetailPtr getInstrumentDetail(const QString &key) override { return mDetails.value(key); }
    bool isExist(const QString &key) override { return mDetails.contains(key); }
    bool isPortfolio(const QString &key) override { return mPortfolios.contains(key); }
    TC::CInstrumentDetailPtr getDefaultDetail() override { return mDefault; }
    double getCurrentDateLastClose(const QString &key, int date) override {
        mLog.add(QStringLiteral("CStockManager::getCurrentDateLastClose %1 %2").arg(key).arg(date));
        return mCloses.value(qMakePair(key, date), mCloses.value(qMakePair(key, 0), TC::kUnsetValue));
    }
    double getCurrentDateLastClose(const TC::CInstrumentDetailPtr &detail, int date) override {
        return getCurrentDateLastClose(TC::getDetailQsKey(detail), date);
    }
    int getLastTradingDay(const QString &market) override {
        return mLastTradingDays.value(market, mLastTradingDay);
    }
    int getShiftTradeDate(const QString &, int date, int shift) override {
        const int at = mTradingDays.indexOf(date);
        if (at < 0) {
            return date + shift * 86400;
        }
        return mTradingDays.value(at + shift);
    }
    QPair<qint64, qint64> getStartEndTime(const TC::CInstrumentDetailPtr &detail, int &date) override {
        mLog.add(
            QStringLiteral("CStockManager::getStartEndTime %1 %2").arg(TC::getDetailQsKey(detail)).arg(date));
        return qMakePair(date * 1000LL + mStartOffset, date * 1000LL + mEndOffset);
    }

    QMap<QString, TC::CInstrumentDetailPtr> mDetails;
    QSet<QString> mPortfolios;
    TC::CInstrumentDetailPtr mDefault;
    QMap<QPair<QString, int>, double> mCloses; ///< by key and date; date 0 stands for every day
    int mLastTradingDay = 1710432000; ///< 2024-03-15 at UTC+8
    QMap<QString, int> mLastTradingDays; ///< by market, where it differs
    QList<int> mTradingDays; ///< when empty, every day is one
    qint64 mStartOffset = 0; ///< milliseconds after midnight
    qint64 mEndOffset = 54000000; ///< 15:00

private:
    CallLog &mLog;
};

} // namespace fakehost
