#include "host/toolkit/CRadioButton.h"

namespace GZ {

CRadioButton::CRadioButton(const QString &text, int id, QWidget *parent)
    : CEventWidgetT<QRadioButton>(parent), mId(id) {
    setText(text);
    connect(this, &QRadioButton::clicked, this,
            [this] { deliverEvent(kPicked, mId, 1, objectName(), nullptr); });
}

} // namespace GZ
