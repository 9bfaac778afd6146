#pragma once

#include "host/Export.h"
#include "host/records/CFormulaKey.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QVector>

namespace TC {

/// Two-way registry between series and request ids. Not locked: its owner does that.
class TIMESHARE_EXPORT IndexBaseDataReq {
public:
    /// Registers a request id under a key; an earlier id of the key, or key of the id, is replaced. False when
    /// the pair was there already or the id is empty.
    bool add(const CFormulaKey &key, const QString &requestId);
    /// Look-ups in both directions; false, and nothing changed, when absent.
    bool getKey(CFormulaKey &key, const QString &requestId) const;
    bool getReq(QString &requestId, const CFormulaKey &key) const;
    /// Forgets an id; false when it is unknown.
    bool removeReq(const QString &requestId);
    void clear();
    QVector<QString> reqIds() const;

private:
    QHash<QString, CFormulaKey> mKeys;
    QMap<CFormulaKey, QString> mIds;
};

} // namespace TC
