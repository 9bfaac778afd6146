// Requests: how they are built, issued and withdrawn.

#include "chartdata/CRealtimeData.h"

#include "chartdata/RequestLog.h"
#include "chartdata/RequestTimes.h"
#include "host/services/CConfigService.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CMultiRequestDataManager.h"
#include "host/services/CReplayManager.h"
#include "host/services/CStockManager.h"
#include "host/services/IdGenerator.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QStringList>
#include <boost/format.hpp>
#include <boost/lexical_cast.hpp>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/locks.hpp>

#include <limits>

namespace TC {
namespace {

using Hold = boost::lock_guard<boost::recursive_mutex>;

constexpr qint64 kMinute = 60000;
constexpr int kPlainResult = 1; ///< data type of results that no callback brought
const char kSource[] = "CRealtimeData";

/// Sets each named argument to its value; one without a value is "0".
template <class Value, class ToText>
void setArguments(QMap<QString, QString> &arguments, const QVector<QString> &names,
                  const QVector<Value> &values, ToText toText) {
    for (int i = 0; i < names.size(); ++i) {
        arguments[names[i]] = i < values.size() ? toText(values[i]) : QStringLiteral("0");
    }
}

/// Makes the request of a script model: its file in the script folder, and its arguments.
void addressScript(CFormulaParam &param, const CFormulaDetail &formula) {
    param.mFormulaName = getPythonDir() + QStringLiteral("\\%1.py").arg(formula.mName.toUpper());
    setArguments(param.mArguments, formula.mParamNames, formula.mParamValues,
                 [](double value) { return QString::fromStdString(boost::lexical_cast<std::string>(value)); });
    setArguments(param.mArguments, formula.mStrParamNames, formula.mStrParamValues,
                 [](const QString &value) { return value; });
}

void setTimes(CFormulaParam &param, const RequestTimes &times) {
    param.mStart = times.start;
    param.mEnd = times.end;
    param.mDataDemand = times.demand;
}

/// What stands for a request in the log.
std::string logKey(const CFormulaParam &param) {
    return QStringLiteral("%1%2,period:%3,dataDemand:%4,level:%5")
        .arg(param.mMarket, param.mCode, QString::number(param.mPeriod), QString::number(param.mDataDemand),
             QString::number(param.mLevel))
        .toStdString();
}

QString idOf(const CFormulaParam &param) {
    return GZ::sToQs(param.mRequestId);
}

} // namespace

QSet<CFormulaKey> CRealtimeData::wantedKeys() const {
    QSet<CFormulaKey> keys;
    const QString stock = mUiParam->getStock();
    for (const QString &name : mFormulas) {
        keys.insert(CFormulaKey(stock, name));
        if (mDisplayType != EIndexDisplayType::Main || !mUiParam->isBasicFormula(name)) {
            continue;
        }
        for (const CInstrumentDetailPtr &overlay : mUiParam->getAllAddStockList()) {
            keys.insert(CFormulaKey(getDetailQsKey(overlay), name));
        }
    }
    return keys;
}

template <class Fill>
void CRealtimeData::buildEach(QVector<CFormulaParam> &params, corvane::ERunMode mode, Fill fill) {
    auto &catalogue = CSingletonT<CFormulaOperateManager>::instance();
    for (const CFormulaKey &key : wantedKeys()) {
        const CFormulaDetailPtr formula = catalogue.getFormula(key.mFormula);
        if (!formula) {
            continue;
        }
        catalogue.genLuaFormula(formula->mFileName, formula->mName);
        CFormulaParam param;
        param.mFormulaName = formula->mFileName;
        param.mLanguage = static_cast<qint32>(formula->mLanguage);
        param.mPeriod = kMinute;
        param.mLimit = std::numeric_limits<qint32>::max();
        param.mLimitFlag = 1;
        if (mode == corvane::ERunMode::HandOver) {
            param.mRunData = formula->mRunData;
        }
        const CInstrumentDetailPtr detail =
            CSingletonT<CStockManager>::instance().getInstrumentDetail(key.mStock);
        if (detail) {
            param.mMarket = getDetailQsMarket(detail);
            param.mCode = getDetailQsCode(detail);
        } else {
            param.mStockKind = mUiParam->mStockKind;
        }
        if (formula->mLanguage == EFormulaLanguage::Python) {
            addressScript(param, *formula);
        }
        if (!fill(param, key, formula, detail != nullptr)) {
            continue;
        }
        param.mRequestId = se::IdGenerator::genId(mUiParam->getMainPanelID(), formula->mFileName, param.mCode);
        mReq.add(key, idOf(param));
        params.append(param);
    }
}

void CRealtimeData::buildRequestParams(QVector<CFormulaParam> &params, corvane::ERunMode mode) {
    const Hold hold(mLock);
    auto &stocks = CSingletonT<CStockManager>::instance();
    int date = mTradeDate;
    const QPair<qint64, qint64> bounds = stocks.getStartEndTime(mUiParam->getStockDetail(), date);
    const auto fill = [&](CFormulaParam &param, const CFormulaKey &key, const CFormulaDetailPtr &formula,
                          bool isInstrument) {
        if (!isInstrument && mUiParam->isOverlayIndex(key.mStock)) {
            param.mStockKind = 1;
        }
        if (!isInstrument && !mUiParam->fillRequestParam(param, key.mStock, formula)) {
            return false;
        }
        const int last = stocks.getLastTradingDay(calendarMarket(param.mMarket));
        setTimes(param, requestTimes(param.mMarket, bounds.first, bounds.second, last));
        param.mDataMode = 1;
        if (!mUiParam->mFormulaAccount.isEmpty()) {
            param.mArguments[QStringLiteral("__sys__account")] = mUiParam->mFormulaAccount;
        }
        const CUserConfig *user = getUserConfig();
        if (user && mDisplayType == EIndexDisplayType::Sub && formula->mLanguage == EFormulaLanguage::Native) {
            param.mInterval = user->subIndexRefresh() * 1000LL;
        }
        return true;
    };
    buildEach(params, mode, fill);
}

void CRealtimeData::buildFixedPriceParams(QVector<CFormulaParam> &params, corvane::ERunMode mode) {
    const Hold hold(mLock);
    auto &stocks = CSingletonT<CStockManager>::instance();
    int date = mTradeDate;
    const QPair<qint64, qint64> bounds = stocks.getStartEndTime(mUiParam->getStockDetail(), date);
    const auto fill = [&](CFormulaParam &param, const CFormulaKey &key, const CFormulaDetailPtr &formula,
                          bool isInstrument) {
        if (!isInstrument && !mUiParam->fillRequestParam(param, key.mStock, formula)) {
            return false;
        }
        const int last = stocks.getLastTradingDay(param.mMarket);
        setTimes(param, fixedPriceTimes(bounds.first, bounds.second, last));
        param.mDataMode = 3;
        param.mLevel = mUiParam->mFixedPriceLevel;
        return true;
    };
    buildEach(params, mode, fill);
}

QVector<CFormulaParam> CRealtimeData::buildParams(corvane::ERunMode mode) {
    QVector<CFormulaParam> params;
    if (mUiParam->mFixedPriceRequest) {
        buildFixedPriceParams(params, mode);
    } else {
        buildRequestParams(params, mode);
    }
    return params;
}

// The callbacks copy the pointer that they hold: a request may be withdrawn, and its callbacks freed, from
// within.

FormulaHistoryCallback CRealtimeData::historyCallback() {
    return [self = shared_from_this()](const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                       const QString &requestId, int dataType, const QString &formula,
                                       bool keepRange) {
        const boost::shared_ptr<CRealtimeData> data = self;
        data->onHistoryCallback(meta, result, requestId, dataType, formula, keepRange);
    };
}

FormulaRealtimeCallback CRealtimeData::realtimeCallback() {
    return [self = shared_from_this()](int number, const QString &requestId, const FormulaInstantPtr &point) {
        const boost::shared_ptr<CRealtimeData> data = self;
        data->onRealtimeCallback(number, requestId, point);
    };
}

/// Takes in what other views have fetched already; the request under way replaces it later.
void CRealtimeData::applyCached(const QVector<CFormulaParam> &params) {
    auto &cache = CSingletonT<CMultiRequestDataManager>::instance();
    for (const CFormulaParam &param : params) {
        CFormulaKey key;
        FormulaMetaPtr meta;
        FormulaResultPtr result;
        if (mReq.getKey(key, idOf(param)) &&
            cache.getFormulaHistoryData(key.mStock, key.mFormula, meta, result)) {
            noteDamage(applyHistory(meta, result, idOf(param), kPlainResult, QString(), true));
        }
    }
}

void CRealtimeData::request(corvane::ERunMode mode) {
    QVector<CFormulaParam> params;
    {
        const Hold hold(mLock);
        params = buildParams(mode);
        if (mDisplayType == EIndexDisplayType::Main) {
            for (const CFormulaParam &param : params) {
                logTraffic(this, "TC::CRealtimeData::request", kSource,
                           boost::format("mainID:%1%,requstID:%2%, range:%3% - %4%, key:%5%") %
                               mUiParam->getMainPanelID() % param.mRequestId %
                               utils::millisecondsToTime(param.mStart.first) %
                               utils::millisecondsToTime(param.mEnd.first) % logKey(param));
            }
            applyCached(params);
        }
    }
    if (!params.isEmpty()) {
        CSingletonT<CFormulaManager>::instance().requestFormulas(params, historyCallback(), realtimeCallback());
    }
}

void CRealtimeData::requestReplay(corvane::ERunMode mode) {
    QVector<CFormulaParam> params = buildParams(mode);
    if (params.isEmpty()) {
        return;
    }
    if (mDisplayType == EIndexDisplayType::Main) {
        const char *const function = "TC::CRealtimeData::requestReplay";
        for (const CFormulaParam &param : params) {
            logTraffic(this, function, kSource,
                       boost::format("%1%: requstID:%2%, range:%3% - %4%, key:%5%") % function %
                           param.mRequestId % param.mStart.first % param.mEnd.first % logKey(param));
        }
    }
    CSingletonT<CReplayManager>::instance().requestFormulas(mUiParam->getStock(), params, historyCallback(),
                                                            realtimeCallback());
}

void CRealtimeData::syncRequest(corvane::ERunMode mode) {
    QVector<CFormulaParam> params = buildParams(mode);
    if (params.isEmpty()) {
        return;
    }
    std::vector<FormulaMetaPtr> metas;
    std::vector<FormulaResultPtr> results;
    CSingletonT<CFormulaManager>::instance().requestFormulasSync(params, metas, results);
    const std::size_t count = static_cast<std::size_t>(params.size());
    if (metas.size() != count || results.size() != count) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const QString id = idOf(params[static_cast<int>(i)]);
        const Hold hold(mLock);
        noteDamage(applyHistory(metas[i], results[i], id, kPlainResult, QString(), true));
    }
}

// A service may be delivering into this object while requests are withdrawn, so it is told outside the lock.

void CRealtimeData::unrequest() {
    QVector<QString> ids;
    {
        const Hold hold(mLock);
        ids = mReq.reqIds();
        mReq.clear();
    }
    if (ids.isEmpty()) {
        return;
    }
    updateStrategyBacktestData(ids);
    if (mDisplayType == EIndexDisplayType::Main) {
        logTraffic(this, "TC::CRealtimeData::unrequest", kSource,
                   boost::format("mainID:%1%, unrequestIds: %2%") % mUiParam->getMainPanelID() %
                       QStringList(ids.toList()).join(QLatin1Char(',')).toStdString());
    }
    CSingletonT<CFormulaManager>::instance().unrequestFormulas(ids);
    CSingletonT<CReplayManager>::instance().deleteFormulas(ids);
}

QVector<QString> CRealtimeData::takeOverlayRequests() {
    QVector<QString> ids;
    const QString formula = getMainGraph();
    for (const CInstrumentDetailPtr &overlay : mUiParam->getAllAddStockList()) {
        QString id;
        if (mReq.getReq(id, CFormulaKey(getDetailQsKey(overlay), formula))) {
            mReq.removeReq(id);
            ids.append(id);
        }
    }
    return ids;
}

void CRealtimeData::withdrawOverlays(const QVector<QString> &ids) {
    updateStrategyBacktestData(ids);
    CSingletonT<CFormulaManager>::instance().unrequestFormulas(ids);
}

void CRealtimeData::unrequestOverlays() {
    QVector<QString> ids;
    {
        const Hold hold(mLock);
        ids = takeOverlayRequests();
    }
    withdrawOverlays(ids);
}

void CRealtimeData::removeOverlayData() {
    QVector<QString> ids;
    {
        const Hold hold(mLock);
        ids = takeOverlayRequests();
        mOverlayData.clear();
        const QString formula = getMainGraph();
        for (const CInstrumentDetailPtr &overlay : mUiParam->getAllAddStockList()) {
            const QString stock = getDetailQsKey(overlay);
            if (!mUiParam->isMainStock(stock)) {
                mData.remove(CFormulaKey(stock, formula));
            }
        }
        noteDamage(eSeriesChanged);
    }
    withdrawOverlays(ids);
    const Hold hold(mLock);
    drawChart(mChartRect);
    drawLinkage(mChartRect);
}

} // namespace TC
