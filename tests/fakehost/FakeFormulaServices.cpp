#include "tests/fakehost/FakeFormulaServices.h"

#include <QStringList>

namespace fakehost {
namespace {

QString joined(const QVector<QString> &ids) {
    return QStringList(ids.toList()).join(QLatin1Char(','));
}

QString idsOf(const QVector<TC::CFormulaParam> &params) {
    QVector<QString> ids;
    for (const TC::CFormulaParam &param : params) {
        ids.append(QString::fromStdString(param.mRequestId));
    }
    return joined(ids);
}

} // namespace

void FakeFormulaManager::requestFormulas(QVector<TC::CFormulaParam> &params,
                                         TC::FormulaHistoryCallback onHistory,
                                         TC::FormulaRealtimeCallback onRealtime) {
    mLog.add(QStringLiteral("CFormulaManager::requestFormulas %1").arg(idsOf(params)));
    mLastParams = params;
    mLive.add(params, onHistory, onRealtime);
}

void FakeFormulaManager::requestFormulasSync(QVector<TC::CFormulaParam> &params,
                                             std::vector<TC::FormulaMetaPtr> &metas,
                                             std::vector<TC::FormulaResultPtr> &results) {
    mLog.add(QStringLiteral("CFormulaManager::requestFormulasSync %1").arg(idsOf(params)));
    mLastParams = params;
    metas = mSyncMetas;
    results = mSyncResults;
}

void FakeFormulaManager::unrequestFormula(const QString &requestId) {
    mLog.add(QStringLiteral("CFormulaManager::unrequestFormula %1").arg(requestId));
    mLive.remove(requestId);
}

void FakeFormulaManager::unrequestFormulas(const QVector<QString> &requestIds) {
    mLog.add(QStringLiteral("CFormulaManager::unrequestFormulas %1").arg(joined(requestIds)));
    for (const QString &id : requestIds) {
        mLive.remove(id);
    }
}

void FakeFormulaManager::fetchCacheData(se::RPCFetchCacheDataParam &param,
                                        std::vector<std::shared_ptr<quoter::QuoterBase>> &records) {
    mLog.add(QStringLiteral("CFormulaManager::fetchCacheData %1 %2 %3 %4 %5")
                 .arg(param.mStart)
                 .arg(param.mEnd)
                 .arg(param.mPeriod)
                 .arg(param.mKind)
                 .arg(param.mCount));
    mLastFetch = param;
    records = mCached;
}

void FakeFormulaManager::requestHistoryQuote(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region,
                                             TC::HistoryQuoteCallback onQuotes) {
    mLog.add(QStringLiteral("CFormulaManager::requestHistoryQuote %1 %2 %3 %4")
                 .arg(QString::fromStdString(meta.mCode))
                 .arg(meta.mDataKind)
                 .arg(region.mStart)
                 .arg(region.mEnd));
    mQuoteRequests.push_back({meta, region, onQuotes});
}

QString FakeFormulaManager::lookHideVar(const QString &requestId, int index) {
    mLog.add(QStringLiteral("CFormulaManager::lookHideVar %1 %2").arg(requestId).arg(index));
    return mHideVar;
}

void FakeFormulaManager::suppleDataFromServer(const QString &name, TC::CHistoryDataParam &param,
                                              TC::SuppleProgressCallback onProgress) {
    mLog.add(QStringLiteral("CFormulaManager::suppleDataFromServer %1 %2")
                 .arg(name, QStringList(param.mCodes).join(QLatin1Char(','))));
    mLastHistory = param;
    mOnProgress = onProgress;
}

bool FakeFormulaManager::groupRunProgress(const std::string &requestId, bson::BSONObj &progress) {
    mLog.add(QStringLiteral("CFormulaManager::groupRunProgress %1").arg(QString::fromStdString(requestId)));
    const auto found = mProgress.find(requestId);
    if (found == mProgress.end()) {
        return false;
    }
    progress = found->second;
    return true;
}

TC::CFormulaDetailPtr FakeFormulaOperateManager::add(const QString &name, int type) {
    TC::CFormulaDetailPtr detail(new TC::CFormulaDetail);
    detail->mName = name;
    detail->mFileName = name + QStringLiteral(".lua");
    detail->mType = type;
    mFormulas[name.toUpper()] = detail;
    return detail;
}

bool FakeFormulaOperateManager::genLuaFormula(const QString &fileName, const QString &name) {
    mLog.add(QStringLiteral("CFormulaOperateManager::genLuaFormula %1 %2").arg(fileName, name));
    return mCompiles;
}

QString FakeFormulaOperateManager::setParameters(const QString &name,
                                                 const TC::CFormulaParameters &parameters) {
    mLog.add(QStringLiteral("CFormulaOperateManager::setParameters %1").arg(name));
    if (mRefusal.isEmpty()) {
        mParameters.insert(name.toUpper(), parameters);
    }
    return mRefusal;
}

TC::CFormulaFault FakeFormulaOperateManager::checkFormula(const QString &text) {
    mLog.add(QStringLiteral("CFormulaOperateManager::checkFormula"));
    return mFaults.value(text);
}

TC::CFormulaFault FakeFormulaOperateManager::saveFormula(QString &name, const QString &text) {
    mLog.add(QStringLiteral("CFormulaOperateManager::saveFormula %1").arg(name));
    const TC::CFormulaFault fault = mFaults.value(text);
    if (fault.isGood()) {
        name = name.isEmpty() ? mNewName : name;
        TC::CFormulaSource &source = mSources[name.toUpper()];
        source.mText = text;
        source.mIsUserMade = true;
    }
    return fault;
}

QString FakeFormulaOperateManager::restoreFormula(const QString &name) {
    mLog.add(QStringLiteral("CFormulaOperateManager::restoreFormula %1").arg(name));
    if (mRefusal.isEmpty()) {
        mSources[name.toUpper()].mIsUserMade = false;
    }
    return mRefusal;
}

bool FakeHistoryCache::getFormulaHistoryData(const QString &stock, const QString &formula,
                                             TC::FormulaMetaPtr &meta, TC::FormulaResultPtr &result) {
    mLog.add(QStringLiteral("CMultiRequestDataManager::getFormulaHistoryData %1 %2").arg(stock, formula));
    std::lock_guard<std::mutex> hold(mLock);
    const auto found = mSeries.constFind(qMakePair(stock, formula));
    if (found == mSeries.constEnd()) {
        return false;
    }
    meta = found->first;
    result = found->second;
    return true;
}

void FakeHistoryCache::addFormulaHistoryData(const QString &stock, const QString &formula,
                                             const TC::FormulaMetaPtr &meta,
                                             const TC::FormulaResultPtr &result) {
    mLog.add(QStringLiteral("CMultiRequestDataManager::addFormulaHistoryData %1 %2").arg(stock, formula));
    std::lock_guard<std::mutex> hold(mLock);
    if (mKeeping) {
        mSeries[qMakePair(stock, formula)] = qMakePair(meta, result);
    }
}

void FakeReplayManager::requestFormulas(const QString &stock, QVector<TC::CFormulaParam> &params,
                                        TC::FormulaHistoryCallback onHistory,
                                        TC::FormulaRealtimeCallback onRealtime) {
    mLog.add(QStringLiteral("CReplayManager::requestFormulas %1 %2").arg(stock, idsOf(params)));
    mLive.add(params, onHistory, onRealtime);
}

void FakeReplayManager::deleteFormulas(QVector<QString> &requestIds) {
    mLog.add(QStringLiteral("CReplayManager::deleteFormulas %1").arg(joined(requestIds)));
    for (const QString &id : requestIds) {
        mLive.remove(id);
    }
}

void FakeReplayManager::setThousandRange(qint64 start, qint64 end) {
    mLog.add(QStringLiteral("CReplayManager::setThousandRange %1 %2").arg(start).arg(end));
}

bool FakeStrategyTradeManager::getStrategyByName(const QString &name, TC::CStrategyInfo &strategy) {
    const auto found = mStrategies.constFind(name);
    if (found == mStrategies.constEnd()) {
        return false;
    }
    strategy = *found;
    return true;
}

bool FakeStrategyTradeManager::isFomrulaRun(const QString &name) {
    return mStrategies.contains(name) && mStrategies[name].mRunning;
}

void FakeStrategyTradeManager::updateBacktestData(const QVector<QString> &requestIds) {
    mLog.add(QStringLiteral("CStrategyTradeManager::updateBacktestData %1").arg(joined(requestIds)));
}

} // namespace fakehost
