#include "host/toolkit/CEventButton.h"

#include "host/toolkit/Events.h"

namespace GZ {

CEventButton::CEventButton(int id, QWidget *parent) : CEventWidgetT<QPushButton>(parent), mId(id) {
    connect(this, &QPushButton::clicked, this, [this](bool checked) {
        deliverEvent(TC::eButtonClicked, mId, checked ? 1 : 0, QString(), nullptr);
    });
    CEventButton::onUiResourceChanged();
}

void CEventButton::setFontKey(const QString &key) {
    mFontKey = key;
    onUiResourceChanged();
}

void CEventButton::onUiResourceChanged() {
    setFont(CUiResource::instance().getFont(mFontKey));
    update();
}

void CEventButton::enterEvent(EnterEvent *event) {
    CEventWidgetT<QPushButton>::enterEvent(event);
    update();
}

void CEventButton::leaveEvent(QEvent *event) {
    CEventWidgetT<QPushButton>::leaveEvent(event);
    update();
}

} // namespace GZ
