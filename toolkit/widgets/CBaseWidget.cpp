#include "host/toolkit/CBaseWidget.h"

namespace GZ {

CBaseWidget::CBaseWidget(QWidget *parent) : CEventWidgetT<QWidget>(parent) {}

CBaseWidget::~CBaseWidget() = default;

void CBaseWidget::onUiResourceChanged() {
    update();
}

void CBaseWidget::mouseDoubleClickEvent(QMouseEvent *event) {
    QWidget::mousePressEvent(event); // that of QWidget itself: an override is not called
}

} // namespace GZ
