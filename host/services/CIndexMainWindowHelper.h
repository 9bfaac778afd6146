#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QString>

namespace TC {

/// The host's main window, as far as a chart asks for it. User-interface thread.
class TIMESHARE_EXPORT CIndexMainWindowHelper {
public:
    virtual ~CIndexMainWindowHelper() = default;

    /// A chart shows another instrument.
    virtual void instrumentChanged(const QString &key) = 0;
    /// Shows how an instrument stands beside the others of its sector.
    virtual void showContrast(const QString &key) = 0;
    /// Lets the user keep a formula in a file. The name is empty when a chart has none but its main formulas.
    virtual void exportFormula(const QString &name) = 0;
};

} // namespace TC
