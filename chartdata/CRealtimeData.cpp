// Life cycle, formulas, set-up.

#include "chartdata/CRealtimeData.h"

#include "host/services/CFormulaOperateManager.h"
#include "host/services/CReplayManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QCoreApplication>
#include <QThread>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/locks.hpp>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

namespace TC {

using Hold = boost::lock_guard<boost::recursive_mutex>;

namespace {

bool isUserInterfaceThread() {
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

} // namespace

/// The signal may be running while the object goes, on whatever thread lets go of it last: disconnecting does not wait
/// for it, so it reaches the object through this. What changes on another thread than that of the user interface is
/// drawn with the next painting: the view model belongs to that thread.
struct CRealtimeData::LinkageBond {
    boost::recursive_mutex lock;
    CRealtimeData *data = nullptr; ///< null when it has gone
    std::mutex untoldLock; ///< guards the following; nothing else is locked under it
    std::vector<std::string> untold; ///< instruments that have changed on other threads
    std::atomic<bool> hasUntold{false};

    void hear(const std::vector<std::string> &instruments) {
        if (isUserInterfaceThread()) {
            const Hold hold(lock);
            if (data) {
                data->onLinkageChanged(instruments);
            }
            return;
        }
        const std::lock_guard<std::mutex> hold(untoldLock);
        for (const std::string &instrument : instruments) {
            if (std::count(untold.begin(), untold.end(), instrument) == 0) {
                untold.push_back(instrument);
            }
        }
        hasUntold = !untold.empty();
    }

    std::vector<std::string> takeUntold() {
        if (!hasUntold) {
            return {};
        }
        const std::lock_guard<std::mutex> hold(untoldLock);
        hasUntold = false;
        return std::exchange(untold, {});
    }
};

CRealtimeData::CRealtimeData(boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                             GZ::CEventDeliverer *next)
    : IndexBaseData(next, displayType), mUiParam(std::move(uiParam)),
      mLinkageBond(std::make_shared<LinkageBond>()) {
    mLinkageBond->data = this;
    mLinkageConnection = CSingletonT<CLinkageManager>::instance().sigLinkageChanged.connect(
        [bond = mLinkageBond](const std::vector<std::string> &instruments) { bond->hear(instruments); });
}

CRealtimeData::~CRealtimeData() {
    retire();
    unrequest();
    mLinkageConnection.disconnect();
    {
        const Hold hold(mLinkageBond->lock);
        mLinkageBond->data = nullptr;
    }
    clearData();
}

void CRealtimeData::addFormula(const QString &name) {
    const Hold hold(mLock);
    const QString upper = name.toUpper();
    if (!mFormulas.contains(upper)) {
        mFormulas.append(upper);
    }
}

bool CRealtimeData::hasFormula(const QString &name) const {
    const Hold hold(mLock);
    return mFormulas.contains(name.toUpper());
}

QList<QString> CRealtimeData::getSubFormulas() const {
    const Hold hold(mLock);
    QList<QString> found;
    for (const QString &name : mFormulas) {
        if (!isMainGraph(name)) {
            found.append(name);
        }
    }
    return found;
}

void CRealtimeData::removeFormula(const QString &name, bool redrawAfter) {
    const CFormulaDetailPtr formula = CSingletonT<CFormulaOperateManager>::instance().getFormula(name);
    const CFormulaKey key(mUiParam->getStock(), formula ? formula->mName : name.toUpper());
    QString requestId;
    {
        const Hold hold(mLock);
        mFormulas.removeAll(key.mFormula);
        if (mReq.getReq(requestId, key)) {
            mReq.removeReq(requestId);
        }
    }
    if (!requestId.isEmpty()) {
        CSingletonT<CFormulaManager>::instance().unrequestFormula(requestId);
        QVector<QString> ids{requestId};
        CSingletonT<CReplayManager>::instance().deleteFormulas(ids);
    }
    const Hold hold(mLock);
    if (!mData.contains(key)) {
        return;
    }
    mData.remove(key);
    forgetRange(key);
    noteDamage(eSeriesChanged);
    if (redrawAfter) {
        drawChart(mChartRect);
        drawLinkage(mChartRect);
    }
}

void CRealtimeData::removeAllFormulas() {
    for (const QString &name : getFormulas()) {
        removeFormula(name, false);
    }
    const Hold hold(mLock);
    drawChart(mChartRect);
    drawLinkage(mChartRect);
}

void CRealtimeData::replaceSubFormula(const QString &name) {
    unrequest();
    clearData();
    const Hold hold(mLock);
    const auto isNoMain = [this](const QString &formula) { return !mUiParam->isMainFormula(formula); };
    mFormulas.erase(std::remove_if(mFormulas.begin(), mFormulas.end(), isNoMain), mFormulas.end());
    addFormula(name);
}

bool CRealtimeData::isMainGraph(const QString &formula) const {
    const CFormulaDetailPtr detail = CSingletonT<CFormulaOperateManager>::instance().getFormula(formula);
    return (detail && detail->mType == 2) || mUiParam->isMainFormula(formula);
}

QString CRealtimeData::getMainGraph() const {
    const Hold hold(mLock);
    for (const QString &name : mFormulas) {
        if (isMainGraph(name) && !mUiParam->isVolFormula(name)) {
            return name;
        }
    }
    return mUiParam->getBasicFormula();
}

void CRealtimeData::clearData() {
    const Hold hold(mLock);
    mData.clear();
    mOverlayData.clear();
    mMaxMin.clear();
    mDrawnMaxMin.clear();
    noteDamage(eSeriesChanged);
}

void CRealtimeData::forgetRange(const CFormulaKey &key) {
    mMaxMin.remove(key);
    mDrawnMaxMin.remove(key);
}

void CRealtimeData::setAxisWidget(CGraphAxisWidget *axisWidget) {
    const Hold hold(mLock);
    mAxis = mUiParam->mStripScales.of(axisWidget);
}

void CRealtimeData::setTradeDate(int date) {
    const Hold hold(mLock);
    mTradeDate = date;
    if (mTradeDate == 0 && mUiParam->mGetTradeDateFunc) {
        mTradeDate = mUiParam->mGetTradeDateFunc();
    }
    const QString market = getDetailQsMarket(mUiParam->getStockDetail());
    mIsLastTradingDay =
        mTradeDate != 0 && CSingletonT<CStockManager>::instance().getLastTradingDay(market) == mTradeDate;
}

int CRealtimeData::getTradeDate() const {
    const Hold hold(mLock);
    return mTradeDate;
}

void CRealtimeData::setDrawEnabled(bool enabled) {
    const Hold hold(mLock);
    mDrawEnabled = enabled;
    if (enabled) {
        drawChart(mChartRect);
        drawLinkage(mChartRect);
    }
}

void CRealtimeData::setReplayMode(bool replay) {
    const Hold hold(mLock);
    mReplayMode = replay;
}

void CRealtimeData::setFillGaps(bool fill) {
    const Hold hold(mLock);
    mFillGaps = fill;
}

void CRealtimeData::drawUntoldLinkage() {
    const std::vector<std::string> instruments = mLinkageBond->takeUntold();
    if (!instruments.empty()) {
        onLinkageChanged(instruments);
    }
}

void CRealtimeData::onLinkageChanged(const std::vector<std::string> &instruments) {
    const Hold hold(mLock);
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    if (detail && std::count(instruments.begin(), instruments.end(), getDetailKey(detail)) > 0) {
        drawLinkage(mChartRect);
    }
}

QString CRealtimeData::getResultText() const {
    const Hold hold(mLock);
    if (mData.isEmpty()) {
        return QString();
    }
    if (mData.size() == 1) {
        se::RPCFormulaResultCache entry = mData.first();
        return GZ::sToQs(getResultTxtStr(entry.result, entry.meta, true));
    }
    std::vector<se::RPCFormulaResult> results;
    std::vector<se::RPCFormulaMetaResult> metas;
    for (const se::RPCFormulaResultCache &entry : mData) {
        results.push_back(entry.result);
        metas.push_back(entry.meta);
    }
    return GZ::sToQs(getResultTxtStr(results, metas, true));
}

} // namespace TC
