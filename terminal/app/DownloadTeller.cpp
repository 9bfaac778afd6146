#include "terminal/app/DownloadTeller.h"

#include "containers/CRealtimeMainWidget.h"
#include "host/services/CStockManager.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/market/MarketDate.h"

namespace terminal {
namespace {

constexpr int kDaysOfDownload = 20;
constexpr qint64 kMinutePeriod = 60000; ///< milliseconds
constexpr int kMinuteHistory = 3001; ///< kind of data

/// The trading days in front of one.
TC::CHistoryDataParam daysBefore(const TC::CInstrumentDetailPtr &detail, int day) {
    TC::CStockManager &stocks = TC::CSingletonT<TC::CStockManager>::instance();
    const QString market = TC::getDetailQsMarket(detail);
    int first = stocks.getShiftTradeDate(market, day, -kDaysOfDownload);
    int last = stocks.getShiftTradeDate(market, day, -1);
    TC::CHistoryDataParam param;
    param.mMarkets.append(market);
    param.mCodes.append(TC::getDetailQsCode(detail));
    param.mPeriod = kMinutePeriod;
    param.mKind = kMinuteHistory;
    param.mStart = stocks.getStartEndTime(detail, first).first;
    param.mEnd = stocks.getStartEndTime(detail, last).second;
    return param;
}

} // namespace

DownloadTeller::DownloadTeller(TerminalServices &services, ChartView &view, QObject *parent)
    : QObject(parent), mServices(services), mView(view) {
    mServices.formulas().setDownloadListener(
        [this](const QString &key, int done, int total) { onStep(key, done, total); });
}

DownloadTeller::~DownloadTeller() {
    mServices.formulas().setDownloadListener({});
}

void DownloadTeller::startOrStop() {
    FormulaService &service = mServices.formulas();
    if (service.downloadsUnderWay() > 0) {
        service.stopDownloads();
        return;
    }
    const QString key = mView.instrument();
    const TC::CInstrumentDetailPtr detail = mServices.detailOf(key);
    if (!detail) {
        Q_EMIT told(tr("%1 由成分计算，请下载其成分的数据").arg(mServices.nameOf(key)), true);
        return;
    }
    mDays = 0;
    mView.main()->downloadData();
    const QVector<QDate> known = mServices.daysOf(key);
    if (!known.isEmpty()) {
        TC::CHistoryDataParam earlier = daysBefore(detail, dayOf(known.last()));
        service.suppleDataFromServer(QStringLiteral("earlier"), earlier, {});
    }
    Q_EMIT underWayChanged(true);
    Q_EMIT told(tr("开始下载 %1").arg(key), false);
}

void DownloadTeller::onStep(const QString &key, int done, int total) {
    const bool failed = done == -1;
    mDays += !failed && done < total ? 1 : 0;
    if (mServices.formulas().downloadsUnderWay() == 0) {
        Q_EMIT underWayChanged(false);
        tellEnd(key, failed);
    } else if (total > 1) {
        Q_EMIT told(tr("下载 %1：%2/%3").arg(key).arg(done).arg(total), false);
    }
}

void DownloadTeller::tellEnd(const QString &key, bool failed) {
    if (failed) {
        Q_EMIT told(tr("%1 的下载没有完成，已下载 %n 个交易日", nullptr, mDays).arg(key), true);
    } else if (mDays > 0) {
        Q_EMIT told(tr("%1 下载完成，新增 %n 个交易日", nullptr, mDays).arg(key), false);
    } else {
        Q_EMIT told(tr("%1 没有可下载的数据").arg(key), false);
    }
}

} // namespace terminal
