#include "chartdata/FormulaTraffic.h"

#include "chartdata/PaneLog.h"
#include "host/services/CReplayManager.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {

void FormulaTraffic::send(QVector<CFormulaParam> &params, const FormulaHistoryCallback &onHistory,
                          const FormulaRealtimeCallback &onRealtime) const {
    mView.service<CFormulaManager>().requestFormulas(params, onHistory, onRealtime);
}

void FormulaTraffic::sendToReplay(QVector<CFormulaParam> &params, const FormulaHistoryCallback &onHistory,
                                  const FormulaRealtimeCallback &onRealtime) const {
    mLog.replayRequested(params);
    mView.service<CReplayManager>().requestFormulas(mView.getStock(), params, onHistory, onRealtime);
}

bool FormulaTraffic::fetch(QVector<CFormulaParam> &params, std::vector<FormulaMetaPtr> &metas,
                           std::vector<FormulaResultPtr> &results) const {
    if (params.isEmpty()) {
        return false;
    }
    mView.service<CFormulaManager>().requestFormulasSync(params, metas, results);
    const auto count = static_cast<std::size_t>(params.size());
    return metas.size() == count && results.size() == count;
}

void FormulaTraffic::withdrawOverlays(const QVector<QString> &ids) const {
    mView.service<CFormulaManager>().unrequestFormulas(ids);
}

void FormulaTraffic::withdraw(const QVector<QString> &ids) const {
    if (!ids.isEmpty()) {
        mLog.withdrawn(ids);
        mView.service<CFormulaManager>().unrequestFormulas(ids);
        QVector<QString> replayed = ids;
        mView.service<CReplayManager>().deleteFormulas(replayed);
    }
}

void FormulaTraffic::withdrawOne(const QString &id) const {
    if (!id.isEmpty()) {
        mView.service<CFormulaManager>().unrequestFormula(id);
        QVector<QString> ids{id};
        mView.service<CReplayManager>().deleteFormulas(ids);
    }
}

} // namespace TC
