#pragma once

#include "host/Export.h"

#include <QString>

namespace GZ {

/// Style sheets of controls, in the colours of the current theme.
struct TIMESHARE_EXPORT CStyleSheetCenter {
    enum EControl : int { eMenu = 15 };

    /// The style sheet of a control type, see EControl. Empty for an unknown type.
    static QString getStyle(int controlType);
};

} // namespace GZ
