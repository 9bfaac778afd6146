#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventWidgetT.h"
#include "host/toolkit/CUiResource.h"

namespace GZ {

/// Base of the widgets of a view: takes part in the event bus, follows the theme.
class TIMESHARE_EXPORT CBaseWidget : public CEventWidgetT<QWidget>, public CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit CBaseWidget(QWidget *parent = nullptr);
    ~CBaseWidget() override;

    /// Repaints; a derived widget renews what it keeps of the theme first.
    void onUiResourceChanged() override;

protected:
    /// Ignores it. A double click is no further press.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
};

} // namespace GZ
