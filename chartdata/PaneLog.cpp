#include "chartdata/PaneLog.h"

#include "chartdata/RequestLog.h"
#include "host/services/CConfigService.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QStringList>
#include <boost/format.hpp>

namespace TC {
namespace {

const char kSource[] = "CRealtimeData";

/// What stands for a request.
std::string keyOf(const CFormulaParam &param) {
    return QStringLiteral("%1%2,period:%3,dataDemand:%4,level:%5")
        .arg(param.mMarket, param.mCode, QString::number(param.mPeriod), QString::number(param.mDataDemand),
             QString::number(param.mLevel))
        .toStdString();
}

} // namespace

bool PaneLog::takesRequests() const {
    return isMain() && isTrafficHeard();
}

void PaneLog::requested(const QVector<CFormulaParam> &params) const {
    if (!takesRequests()) {
        return;
    }
    for (const CFormulaParam &param : params) {
        logTraffic(mOwner, "TC::CRealtimeData::request", kSource,
                   boost::format("mainID:%1%,requstID:%2%, range:%3% - %4%, key:%5%") % mView.getMainPanelID() %
                       param.mRequestId % utils::millisecondsToTime(param.mStart.first) %
                       utils::millisecondsToTime(param.mEnd.first) % keyOf(param));
    }
}

void PaneLog::replayRequested(const QVector<CFormulaParam> &params) const {
    if (!takesRequests()) {
        return;
    }
    const char *const function = "TC::CRealtimeData::requestReplay";
    for (const CFormulaParam &param : params) {
        logTraffic(mOwner, function, kSource,
                   boost::format("%1%: requstID:%2%, range:%3% - %4%, key:%5%") % function % param.mRequestId %
                       param.mStart.first % param.mEnd.first % keyOf(param));
    }
}

void PaneLog::withdrawn(const QVector<QString> &ids) const {
    if (takesRequests()) {
        logTraffic(mOwner, "TC::CRealtimeData::unrequest", kSource,
                   boost::format("mainID:%1%, unrequestIds: %2%") % mView.getMainPanelID() %
                       QStringList(ids.toList()).join(QLatin1Char(',')).toStdString());
    }
}

void PaneLog::history(const FormulaMetaPtr &meta, const FormulaResultPtr &result, const QString &requestId,
                      int dataType) const {
    if (!takesRequests()) {
        return;
    }
    const std::size_t names = meta ? meta->mLineNames.size() : 0;
    const std::size_t values = result && !result->mValues.empty() ? result->mValues[0].size() : 0;
    logTraffic(mOwner, "TC::CRealtimeData::onHistoryCallback", kSource,
               boost::format("mainID:%1%, reqid = %2%, meta size = %3%, basic data size = %4%, dataType:%5%") %
                   mView.getMainPanelID() % requestId.toStdString() % names % values % dataType);
}

void PaneLog::point(const se::RPCFormulaResultCache *series, const QString &requestId,
                    const se::RPCFormulaInstantResult &point) const {
    if (!takesPoints() || !series || series->result.mTimes.empty()) {
        return;
    }
    const CConfig *config = mView.service<CConfigService>().config();
    if (config && config->debugLog()) {
        logTraffic(mOwner, "TC::CRealtimeData::doRealtimeCallback", kSource,
                   boost::format("mainID:%1%, qsReqId:%2%, lasttime:%3%, newtime:%4%") %
                       mView.getMainPanelID() % requestId.toStdString() %
                       utils::millisecondsToTime(series->result.mTimes.back().first) %
                       utils::millisecondsToTime(point.mTime.first));
    }
}

} // namespace TC
