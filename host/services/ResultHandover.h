#pragma once

#include "host/Export.h"
#include "host/services/CFormulaManager.h"

#include <memory>

namespace TC {

class ResultQueue;

/// Brings callbacks of a host's own threads to the user-interface thread.
///
/// A service hands in the callbacks that it was given and calls, on any thread, what it gets in their place. The results
/// of one request come in their order, one after another, between the turns of the event loop, so that mouse, keyboard and
/// painting go on however many there are. They are merged: of the points of one minute that wait the last one comes, and a
/// whole series voids what waits before it. Values in between are not seen then, nor by the value axis.
///
/// Made and destroyed on the user-interface thread, and not by one of its callbacks. It may go before the callbacks that
/// it has given: they do nothing from then on.
class TIMESHARE_EXPORT ResultHandover {
public:
    ResultHandover();
    ~ResultHandover();
    ResultHandover(const ResultHandover &) = delete;
    ResultHandover &operator=(const ResultHandover &) = delete;

    /// Takes the callbacks of a list of requests and puts others in their place. What comes under an id that is not in the
    /// list is dropped. The callbacks are kept until every one of the requests is withdrawn.
    void take(const QVector<CFormulaParam> &params, FormulaHistoryCallback &onHistory,
              FormulaRealtimeCallback &onRealtime);
    /// The same for a callback that needs no withdrawal: kept as long as the one in its place.
    void take(HistoryQuoteCallback &onQuotes);
    void take(SuppleProgressCallback &onProgress);
    /// Withdraws a request: on the user-interface thread nothing of it comes any more, from another thread what is under
    /// way does. Callbacks are released on the user-interface thread. An unknown id is harmless.
    void withdraw(const QString &requestId);
    /// How many results wait.
    int pending() const;

private:
    class Pump;

    std::shared_ptr<ResultQueue> mQueue;
    std::unique_ptr<Pump> mPump;
};

/// A formula service in front of another one that calls back on threads of its own: to be installed in its place.
///
///     MyFormulas formulas;                       // calls back on its threads
///     TC::UiThreadFormulas handover(formulas);   // goes first
///     TC::CSingletonT<TC::CFormulaManager>::install(&handover);
///
/// With it views may change at any time. What is asked is asked of the other service, on the thread that asks.
class TIMESHARE_EXPORT UiThreadFormulas : public CFormulaManager {
public:
    /// `service` is not owned.
    explicit UiThreadFormulas(CFormulaManager &service) : mService(service) {}

    void requestFormulas(QVector<CFormulaParam> &params, FormulaHistoryCallback onHistory,
                         FormulaRealtimeCallback onRealtime) override;
    void requestFormulasSync(QVector<CFormulaParam> &params, std::vector<FormulaMetaPtr> &metas,
                             std::vector<FormulaResultPtr> &results) override;
    void unrequestFormula(const QString &requestId) override;
    void unrequestFormulas(const QVector<QString> &requestIds) override;
    void fetchCacheData(se::RPCFetchCacheDataParam &param,
                        std::vector<std::shared_ptr<quoter::QuoterBase>> &records) override;
    void requestHistoryQuote(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region,
                             HistoryQuoteCallback onQuotes) override;
    QString lookHideVar(const QString &requestId, int index) override;
    void suppleDataFromServer(const QString &name, CHistoryDataParam &param,
                              SuppleProgressCallback onProgress) override;
    bool groupRunProgress(const std::string &requestId, bson::BSONObj &progress) override;
    /// How many results wait.
    int pending() const { return mHandover.pending(); }

private:
    CFormulaManager &mService;
    ResultHandover mHandover;
};

} // namespace TC
