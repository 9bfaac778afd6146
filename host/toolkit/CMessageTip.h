#pragma once

#include "host/Export.h"

#include <QString>

class QWidget;

namespace GZ {

/// A short message in a bubble beside a widget. It blocks nothing, takes no focus, and goes by itself.
class TIMESHARE_EXPORT CMessageTip {
public:
    /// Shows a text at a side of a widget: Qt::AlignBottom (64) beneath it, Qt::AlignTop above, Qt::AlignLeft or
    /// Qt::AlignRight beside; any other value is beneath. It goes after `seconds`, at a click on it, and with the
    /// widget, and wraps at `width` pixels. There is one tip at a time. A widget that is null or not seen shows none.
    static void showTip(QWidget *widget, int side, const QString &text, int seconds, int width);
};

} // namespace GZ
