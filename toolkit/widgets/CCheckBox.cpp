#include "host/toolkit/CCheckBox.h"

#include "host/toolkit/Events.h"
#include "toolkit/widgets/CheckIndicator.h"

#include <QStyle>
#include <QStyleOptionButton>

namespace GZ {

CCheckBox::CCheckBox(const QString &text, int id, QWidget *parent) : CEventWidgetT<QCheckBox>(parent), mId(id) {
    setText(text);
    connect(this, &QCheckBox::clicked, this, [this](bool checked) {
        deliverEvent(TC::eCheckBoxToggled, mId, checked ? 1 : 0, objectName(), nullptr);
    });
}

QSize CCheckBox::sizeHint() const {
    const int box = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this);
    const int gap = style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
    const int textWidth = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    return {box + (text().isEmpty() ? 0 : gap + textWidth), QCheckBox::sizeHint().height()};
}

void CCheckBox::paintEvent(QPaintEvent *) {
    QStyleOptionButton option;
    initStyleOption(&option);
    paintCheckable(*this, option, false);
}

} // namespace GZ
