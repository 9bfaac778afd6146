#pragma once

#include "host/Export.h"

#include <QString>
#include <QVector>

#include <limits>

namespace TC {

/// One parameter of a formula: what it is set to, and what it may be set to.
struct TIMESHARE_EXPORT CFormulaParameter {
    QString mName;
    QString mText; ///< what it means, for the user; may be empty
    bool mIsText = false; ///< a text parameter: mStrValue counts, otherwise mValue
    double mValue = 0.0;
    double mDefault = 0.0;
    double mMin = -std::numeric_limits<double>::max(); ///< smallest value allowed
    double mMax = std::numeric_limits<double>::max(); ///< largest value allowed
    QString mStrValue;
    QString mStrDefault;
};

using CFormulaParameters = QVector<CFormulaParameter>;

} // namespace TC
