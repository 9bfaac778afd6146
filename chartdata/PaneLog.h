#pragma once

#include "host/records/CFormulaParam.h"
#include "host/records/Enumerations.h"
#include "host/services/CFormulaManager.h"

#include <QString>
#include <QVector>

namespace TC {

class CRealtimeUiParam;

/// What the data of a pane write to the log of the chart view: the requests and results of a main pane, and the single
/// points of a sub pane where the program is set to.
class PaneLog {
public:
    /// `owner` is the object that the lines name.
    PaneLog(const void *owner, const CRealtimeUiParam &view, EIndexDisplayType displayType)
        : mOwner(owner), mView(view), mDisplayType(displayType) {}

    void requested(const QVector<CFormulaParam> &params) const;
    void replayRequested(const QVector<CFormulaParam> &params) const;
    void withdrawn(const QVector<QString> &ids) const;
    void history(const FormulaMetaPtr &meta, const FormulaResultPtr &result, const QString &requestId,
                 int dataType) const;
    /// Whether single points can be written at all. Look-ups for point() are not worth their while otherwise.
    bool takesPoints() const { return !isMain(); }
    /// `series` is what the point goes to; null, or empty, is not logged.
    void point(const se::RPCFormulaResultCache *series, const QString &requestId,
               const se::RPCFormulaInstantResult &point) const;

private:
    bool takesRequests() const;
    bool isMain() const { return mDisplayType == EIndexDisplayType::Main; }

    const void *const mOwner;
    const CRealtimeUiParam &mView;
    const EIndexDisplayType mDisplayType;
};

} // namespace TC
