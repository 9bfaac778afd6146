#pragma once

#include "host/records/Enumerations.h"

#include <QString>

namespace TC {

/// The text of a formula, as the editor opens it.
struct CFormulaSource {
    QString mText;
    EFormulaLanguage mLanguage = EFormulaLanguage::Native;
    bool mIsUserMade = false; ///< it is the user's own text
    bool mHasBuiltin = false; ///< a built-in formula stands behind it, which can be restored
};

/// What a check of a formula's text found.
struct CFormulaFault {
    int mLine = 0; ///< from 1; 0 when the fault is in no line
    QString mMessage; ///< in words for the user; empty when the text is good

    bool isGood() const { return mMessage.isEmpty(); }
};

} // namespace TC
