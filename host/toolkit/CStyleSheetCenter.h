#pragma once

#include <QString>

namespace GZ {

/// Style sheets of controls, in the colours of the current theme.
struct CStyleSheetCenter {
    /// The style sheet of a control type; 15 is a menu. Empty for an unknown type.
    static QString getStyle(int controlType);
};

} // namespace GZ
