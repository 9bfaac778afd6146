#pragma once

#include "host/Export.h"
#include "host/toolkit/CPushButton.h"

namespace GZ {

/// A button of the medium size with a text, as it stands in dialogs.
class TIMESHARE_EXPORT CMediumNormalButton : public CPushButton {
    Q_OBJECT
public:
    CMediumNormalButton(const QString &text, int id, QWidget *parent = nullptr);
};

} // namespace GZ
