#pragma once

#include <QString>
#include <QtGlobal>

namespace TC {

/// What the ranking of instruments is asked for with.
struct StageRequest {
    qint64 start = 0; ///< seconds since the epoch
    qint64 end = 0;
    int type = 0; ///< given by whoever opens the dialog, and handed on
    quint64 param = 0; ///< likewise
    int criterion = 0; ///< 0 to 7
    QString criterionText;

    /// The fields in this order, joined by commas.
    QString text() const;
};

} // namespace TC
