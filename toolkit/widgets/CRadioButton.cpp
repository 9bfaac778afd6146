#include "host/toolkit/CRadioButton.h"

#include "host/toolkit/Events.h"
#include "toolkit/widgets/CheckIndicator.h"

#include <QStyleOptionButton>

namespace GZ {

CRadioButton::CRadioButton(const QString &text, int id, QWidget *parent)
    : CEventWidgetT<QRadioButton>(parent), mId(id) {
    setText(text);
    connect(this, &QRadioButton::clicked, this,
            [this] { deliverEvent(TC::eRadioButtonPicked, mId, 1, objectName(), nullptr); });
}

void CRadioButton::paintEvent(QPaintEvent *) {
    QStyleOptionButton option;
    initStyleOption(&option);
    paintCheckable(*this, option, true);
}

} // namespace GZ
