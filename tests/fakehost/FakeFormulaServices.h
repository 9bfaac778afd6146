#pragma once

/// \file
/// Doubles of the formula, replay, history cache and strategy services. They keep requests with their callbacks
/// and answer when the test says so, on whatever thread the test calls from.

#include "host/services/CFormulaManager.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CMultiRequestDataManager.h"
#include "host/services/CReplayManager.h"
#include "host/services/CStrategyTradeManager.h"
#include "tests/fakehost/CallLog.h"

#include <QMap>
#include <boost/make_shared.hpp>

#include <map>
#include <mutex>
#include <string>

namespace fakehost {

/// One request that lives at a service.
struct LiveRequest {
    TC::CFormulaParam param;
    TC::FormulaHistoryCallback onHistory;
    TC::FormulaRealtimeCallback onRealtime;
    QString id() const { return QString::fromStdString(param.mRequestId); }
};

/// Requests by id, in order of arrival. Any thread; callbacks are called and released outside the lock.
class LiveRequests {
public:
    void add(const QVector<TC::CFormulaParam> &params, const TC::FormulaHistoryCallback &onHistory,
             const TC::FormulaRealtimeCallback &onRealtime) {
        std::lock_guard<std::mutex> hold(mLock);
        for (const TC::CFormulaParam &param : params) {
            mRequests.append({param, onHistory, onRealtime});
        }
    }
    void remove(const QString &id) {
        QList<LiveRequest> gone;
        {
            std::lock_guard<std::mutex> hold(mLock);
            for (int i = mRequests.size() - 1; i >= 0; --i) {
                if (mRequests[i].id() == id) {
                    gone.append(mRequests.takeAt(i));
                }
            }
        }
    }
    /// Lets go of everything.
    void clear() {
        QList<LiveRequest> gone;
        std::lock_guard<std::mutex> hold(mLock);
        mRequests.swap(gone);
    }
    QList<LiveRequest> all() const {
        std::lock_guard<std::mutex> hold(mLock);
        return mRequests;
    }
    /// The newest live request of a formula's file name and code; an empty one when there is none.
    LiveRequest find(const QString &formulaName, const QString &code) const {
        const QList<LiveRequest> requests = all();
        for (int i = requests.size() - 1; i >= 0; --i) {
            if (requests[i].param.mFormulaName == formulaName && requests[i].param.mCode == code) {
                return requests[i];
            }
        }
        return {};
    }

private:
    mutable std::mutex mLock;
    QList<LiveRequest> mRequests;
};

/// One request for quotes, with what answers it.
struct QuoteRequest {
    quoter::TSMetaInfo meta;
    quoter::TRegionInfo region;
    TC::HistoryQuoteCallback onQuotes;
};

class FakeFormulaManager : public TC::CFormulaManager {
public:
    explicit FakeFormulaManager(CallLog &log) : mLog(log) {}

    void requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback onRealtime) override;
    void requestFormulasSync(QVector<TC::CFormulaParam> &params, std::vector<TC::FormulaMetaPtr> &metas,
                             std::vector<TC::FormulaResultPtr> &results) override;
    void unrequestFormula(const QString &requestId) override;
    void unrequestFormulas(const QVector<QString> &requestIds) override;
    void fetchCacheData(se::RPCFetchCacheDataParam &param,
                        std::vector<std::shared_ptr<quoter::QuoterBase>> &records) override;
    void requestHistoryQuote(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region,
                             TC::HistoryQuoteCallback onQuotes) override;
    QString lookHideVar(const QString &requestId, int index) override;
    void suppleDataFromServer(const QString &name, TC::CHistoryDataParam &param,
                              TC::SuppleProgressCallback onProgress) override;
    bool groupRunProgress(const std::string &requestId, bson::BSONObj &progress) override;

    LiveRequests mLive;
    QVector<TC::CFormulaParam> mLastParams; ///< the list of the last request
    std::vector<TC::FormulaMetaPtr> mSyncMetas; ///< what requestFormulasSync answers
    std::vector<TC::FormulaResultPtr> mSyncResults;
    std::vector<std::shared_ptr<quoter::QuoterBase>> mCached;
    se::RPCFetchCacheDataParam mLastFetch; ///< what the last look-up in the cache asked for
    std::vector<QuoteRequest> mQuoteRequests; ///< in order of arrival
    TC::CHistoryDataParam mLastHistory; ///< what the last download asked for
    TC::SuppleProgressCallback mOnProgress;
    QString mHideVar;
    std::map<std::string, bson::BSONObj> mProgress; ///< of group models, by request id

private:
    CallLog &mLog;
};

/// Formulas by upper-case name.
class FakeFormulaOperateManager : public TC::CFormulaOperateManager {
public:
    explicit FakeFormulaOperateManager(CallLog &log) : mLog(log) {}

    /// Adds a formula whose file is its name with ".lua", and answers its record for further changes.
    TC::CFormulaDetailPtr add(const QString &name, int type = 0);
    TC::CFormulaDetailPtr getFormula(const QString &name) override { return mFormulas.value(name.toUpper()); }
    bool genLuaFormula(const QString &fileName, const QString &name) override;
    QString pythonDir() override { return mPythonDir; }
    TC::CFormulaCatalogDetailPtr getRootCatalog() override { return mRoot; }
    TC::CFormulaParameters parameters(const QString &name) override {
        return mParameters.value(name.toUpper());
    }
    QString setParameters(const QString &name, const TC::CFormulaParameters &parameters) override;
    TC::CFormulaSource source(const QString &name) override { return mSources.value(name.toUpper()); }
    QString newFormulaText(const QString &name) override { return QStringLiteral("new ") + name; }
    TC::CFormulaFault checkFormula(const QString &text) override;
    TC::CFormulaFault saveFormula(QString &name, const QString &text) override;
    QString restoreFormula(const QString &name) override;

    QMap<QString, TC::CFormulaDetailPtr> mFormulas;
    TC::CFormulaCatalogDetailPtr mRoot = boost::make_shared<TC::CFormulaCatalogDetail>();
    QMap<QString, TC::CFormulaParameters> mParameters; ///< by upper-case name
    QMap<QString, TC::CFormulaSource> mSources; ///< by upper-case name
    QMap<QString, TC::CFormulaFault> mFaults; ///< what a text has, by the text
    QString mRefusal; ///< what setParameters and restoreFormula answer
    QString mNewName = QStringLiteral("NEW"); ///< the name in the text of a new formula
    QString mPythonDir = QStringLiteral("/scripts");
    bool mCompiles = true;

private:
    CallLog &mLog;
};

class FakeHistoryCache : public TC::CMultiRequestDataManager {
public:
    explicit FakeHistoryCache(CallLog &log) : mLog(log) {}
    bool getFormulaHistoryData(const QString &stock, const QString &formula, TC::FormulaMetaPtr &meta,
                               TC::FormulaResultPtr &result) override;
    void addFormulaHistoryData(const QString &stock, const QString &formula, const TC::FormulaMetaPtr &meta,
                               const TC::FormulaResultPtr &result) override;

    /// Whether series are kept; they are unless told.
    void setKeeping(bool keeping) { mKeeping = keeping; }

private:
    CallLog &mLog;
    bool mKeeping = true;
    std::mutex mLock;
    QMap<QPair<QString, QString>, QPair<TC::FormulaMetaPtr, TC::FormulaResultPtr>> mSeries;
};

class FakeReplayManager : public TC::CReplayManager {
public:
    explicit FakeReplayManager(CallLog &log) : mLog(log) {}
    void requestFormulas(const QString &stock, QVector<TC::CFormulaParam> &params,
                         TC::FormulaHistoryCallback onHistory, TC::FormulaRealtimeCallback onRealtime) override;
    void deleteFormulas(QVector<QString> &requestIds) override;
    void setThousandRange(qint64 start, qint64 end) override;

    LiveRequests mLive;

private:
    CallLog &mLog;
};

class FakeStrategyTradeManager : public TC::CStrategyTradeManager {
public:
    explicit FakeStrategyTradeManager(CallLog &log) : mLog(log) {}
    bool getStrategyByName(const QString &name, TC::CStrategyInfo &strategy) override;
    bool isFomrulaRun(const QString &name) override;
    void updateBacktestData(const QVector<QString> &requestIds) override;

    QMap<QString, TC::CStrategyInfo> mStrategies;

private:
    CallLog &mLog;
};

} // namespace fakehost
