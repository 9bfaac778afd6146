#include "host/toolkit/CComboBox.h"

#include "host/toolkit/Events.h"

namespace GZ {

CComboBox::CComboBox(int id, QWidget *parent) : CEventWidgetT<QComboBox>(parent), mId(id) {
    connect(this, qOverload<int>(&QComboBox::activated), this,
            [this](int index) { deliverEvent(TC::eComboBoxChanged, mId, index, itemText(index), nullptr); });
}

} // namespace GZ
