#pragma once

#include "host/records/CFormulaParam.h"
#include "host/services/CFormulaManager.h"

#include <QString>
#include <QVector>

#include <vector>

namespace TC {

class CRealtimeUiParam;
class PaneLog;

/// Requests of a pane on their way to the services, and withdrawn from them. A service may deliver into the pane, on a
/// thread of its own and while it is called, so nothing here is called under a lock.
class FormulaTraffic {
public:
    FormulaTraffic(const CRealtimeUiParam &view, const PaneLog &log) : mView(view), mLog(log) {}

    void send(QVector<CFormulaParam> &params, const FormulaHistoryCallback &onHistory,
              const FormulaRealtimeCallback &onRealtime) const;
    /// The same to the replay service.
    void sendToReplay(QVector<CFormulaParam> &params, const FormulaHistoryCallback &onHistory,
                      const FormulaRealtimeCallback &onRealtime) const;
    /// Waits for the results, one of each a request; false when there are others.
    bool fetch(QVector<CFormulaParam> &params, std::vector<FormulaMetaPtr> &metas,
               std::vector<FormulaResultPtr> &results) const;
    /// Withdraws requests from both services.
    void withdraw(const QVector<QString> &ids) const;
    void withdrawOne(const QString &id) const;
    /// Withdraws requests of overlays, of which the replay service has none.
    void withdrawOverlays(const QVector<QString> &ids) const;

private:
    const CRealtimeUiParam &mView;
    const PaneLog &mLog;
};

} // namespace TC
