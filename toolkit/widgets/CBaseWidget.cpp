#include "host/toolkit/CBaseWidget.h"

namespace GZ {

CBaseWidget::CBaseWidget(QWidget *parent) : CEventWidgetT<QWidget>(parent) {}

CBaseWidget::~CBaseWidget() = default;

void CBaseWidget::onUiResourceChanged() {
    update();
}

} // namespace GZ
