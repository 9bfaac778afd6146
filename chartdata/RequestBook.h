#pragma once

#include "host/drawing/IndexBaseData.h"
#include "host/records/CFormulaParam.h"
#include "host/records/Enumerations.h"
#include "host/services/CFormulaManager.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QVector>
#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeUiParam;

/// What a pane asks for, and under which ids the answers come.
///
/// A series has one id at most, and an id one series. An id that is not in the book is stale: whatever comes under it
/// is no longer wanted. Closing an entry withdraws nothing at a service: that is done with the ids that are answered.
class RequestBook {
public:
    /// `formulas` and `ids` are those of the pane.
    RequestBook(CRealtimeUiParam &view, EIndexDisplayType displayType, const QList<QString> &formulas,
                IndexBaseDataReq &ids)
        : mView(view), mDisplayType(displayType), mFormulas(formulas), mIds(ids) {}

    /// Opens an entry for each series that the pane shows on a trading day, seconds since the epoch at its midnight:
    /// its formulas on the main instrument, and the basic one on each overlay. A later entry of a series replaces the
    /// one before. A formula that nobody knows, and a series that cannot be addressed, are left out.
    QVector<CFormulaParam> open(int tradeDate, corvane::ERunMode mode);

    /// The series of an id; false for a stale one.
    bool find(CFormulaKey &key, const QString &id) const { return mIds.getKey(key, id); }

    /// Closes an entry; the id that it had, or empty.
    QString close(const CFormulaKey &key);
    /// Closes the entries of all overlays under a formula.
    QVector<QString> closeOverlays(const QString &formula);
    QVector<QString> closeAll();

private:
    QSet<CFormulaKey> wantedKeys() const;
    template <class Fill> QVector<CFormulaParam> openEach(corvane::ERunMode mode, Fill fill);
    QVector<CFormulaParam> openOrdinary(int tradeDate, corvane::ERunMode mode);
    /// Those of the after-hours session.
    QVector<CFormulaParam> openFixedPrice(int tradeDate, corvane::ERunMode mode);

    CRealtimeUiParam &mView;
    const EIndexDisplayType mDisplayType;
    const QList<QString> &mFormulas;
    IndexBaseDataReq &mIds;
};

} // namespace TC
