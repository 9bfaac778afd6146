#include "containers/HistoryDownload.h"

#include "host/services/CStockManager.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <memory>
#include <utility>

namespace TC {

namespace {

constexpr qint64 kMinutePeriod = 60000; ///< milliseconds
constexpr int kMinuteHistory = 3001; ///< kind of a download

/// What the service holds: a participant of the bus of its own, which may go on any thread.
class Sender : public GZ::CEventDeliverer {
public:
    using GZ::CEventDeliverer::CEventDeliverer;
    ~Sender() override { retire(); }
};

} // namespace

HistoryDownload::HistoryDownload(std::function<void(int, int)> onProgress)
    : mOnProgress(std::move(onProgress)) {}

void HistoryDownload::start(const CRealtimeUiParam &view) {
    CStockManager &stocks = view.service<CStockManager>();
    const CInstrumentDetailPtr detail = view.getStockDetail();
    int date = view.mGetTradeDateFunc ? view.mGetTradeDateFunc()
               : detail               ? stocks.getLastTradingDay(getDetailQsMarket(detail))
                                      : 0;
    const QPair<qint64, qint64> range = stocks.getStartEndTime(detail, date);
    CHistoryDataParam param;
    param.mMarkets.append(getDetailQsMarket(detail));
    param.mPeriod = kMinutePeriod;
    param.mStart = range.first;
    param.mEnd = range.second;
    param.mKind = kMinuteHistory;
    param.mCodes.append(getDetailQsCode(detail));
    view.service<CFormulaManager>().suppleDataFromServer(QStringLiteral("suppledata"), param, callback());
}

SuppleProgressCallback HistoryDownload::callback() {
    return [sender = std::make_shared<Sender>(this)](int done, int total, const QString &, const QString &) {
        sender->deliverEvent(eDownloadStep, done, total, QString(), nullptr);
    };
}

bool HistoryDownload::handleEvent(int event, int first, int second, QString /*text*/, void * /*payload*/) {
    if (event == eDownloadStep) {
        mOnProgress(first, second);
    }
    return true;
}

} // namespace TC
