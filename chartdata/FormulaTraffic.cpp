#include "chartdata/FormulaTraffic.h"

#include "chartdata/PaneLog.h"
#include "host/services/CReplayManager.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {

void FormulaTraffic::send(QVector<CFormulaParam> &params, const FormulaHistoryCallback &onHistory,
                          const FormulaRealtimeCallback &onRealtime) const {
    CSingletonT<CFormulaManager>::instance().requestFormulas(params, onHistory, onRealtime);
}

void FormulaTraffic::sendToReplay(QVector<CFormulaParam> &params, const FormulaHistoryCallback &onHistory,
                                  const FormulaRealtimeCallback &onRealtime) const {
    mLog.replayRequested(params);
    CSingletonT<CReplayManager>::instance().requestFormulas(mView.getStock(), params, onHistory, onRealtime);
}

bool FormulaTraffic::fetch(QVector<CFormulaParam> &params, std::vector<FormulaMetaPtr> &metas,
                           std::vector<FormulaResultPtr> &results) const {
    if (params.isEmpty()) {
        return false;
    }
    CSingletonT<CFormulaManager>::instance().requestFormulasSync(params, metas, results);
    const auto count = static_cast<std::size_t>(params.size());
    return metas.size() == count && results.size() == count;
}

void FormulaTraffic::withdrawOverlays(const QVector<QString> &ids) const {
    CSingletonT<CFormulaManager>::instance().unrequestFormulas(ids);
}

void FormulaTraffic::withdraw(const QVector<QString> &ids) const {
    if (!ids.isEmpty()) {
        mLog.withdrawn(ids);
        CSingletonT<CFormulaManager>::instance().unrequestFormulas(ids);
        QVector<QString> replayed = ids;
        CSingletonT<CReplayManager>::instance().deleteFormulas(replayed);
    }
}

void FormulaTraffic::withdrawOne(const QString &id) const {
    if (!id.isEmpty()) {
        CSingletonT<CFormulaManager>::instance().unrequestFormula(id);
        QVector<QString> ids{id};
        CSingletonT<CReplayManager>::instance().deleteFormulas(ids);
    }
}

} // namespace TC
