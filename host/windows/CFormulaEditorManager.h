#pragma once

#include "host/Export.h"
#include "host/records/Enumerations.h"
#include "host/services/ServiceContext.h"

#include <QString>

#include <functional>

class QWidget;

namespace TC {

/// The editor windows of formulas. User-interface thread.
class TIMESHARE_EXPORT CFormulaEditorManager {
public:
    using ApplyFunction =
        std::function<void(const QString &name, EFormulaLanguage language, corvane::ERunMode mode)>;

    /// Shows the editor of a formula, the one that is open already if there is one; with an empty name that of a new
    /// formula. `kind` is carried unchanged. A line, counted from 1, is marked, and the cursor put into it. The window
    /// closes by itself with its parent; answers it. Of a script model, whose text is a file of its own, the user is told
    /// which file that is, and the answer is null.
    /// `services` know the formula.
    static QWidget *createWindow(const QString &name, int kind, QWidget *parent, int line = 0,
                                 const ServiceContext &services = ServiceContext::processWide());

    /// Called when the user applies a formula, with the run mode chosen, after its text was kept. One function for
    /// all windows, installed by the host.
    static void setApplyFunction(ApplyFunction function);
};

} // namespace TC
