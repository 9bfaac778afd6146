#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventWidgetT.h"

#include <QComboBox>

namespace GZ {

/// A combo box with an id. When the user picks an entry, it delivers eComboBoxChanged with its id, the index of the
/// entry and its text; changed by the program it delivers nothing.
class TIMESHARE_EXPORT CComboBox : public CEventWidgetT<QComboBox> {
    Q_OBJECT
public:
    explicit CComboBox(int id, QWidget *parent = nullptr);
    int id() const { return mId; }

private:
    int mId;
};

} // namespace GZ
