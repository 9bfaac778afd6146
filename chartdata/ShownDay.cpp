#include "chartdata/ShownDay.h"

#include "host/services/CStockManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QDateTime>

namespace TC {

void ShownDay::set(int date, const CRealtimeUiParam &view) {
    mDate = date == 0 && view.mGetTradeDateFunc ? view.mGetTradeDateFunc() : date;
    const QString market = getDetailQsMarket(view.getStockDetail());
    mIsLive = mDate != 0 && view.service<CStockManager>().getLastTradingDay(market) == mDate;
}

void ShownDay::setReplayTime(qint64 milliseconds) {
    mReplayTime = QDateTime::fromSecsSinceEpoch(milliseconds / 1000).time();
}

} // namespace TC
