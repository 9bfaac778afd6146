#include "host/toolkit/CGroupBox.h"

#include <QVBoxLayout>

namespace GZ {
namespace {

constexpr int kMargin = 2; ///< pixels between the frame and the widget

} // namespace

CGroupBox::CGroupBox(const QString &title, QWidget *parent)
    : CEventWidgetT<QGroupBox>(parent), mLayout(new QVBoxLayout(this)) {
    setTitle(title);
    mLayout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
}

void CGroupBox::setInnerWidget(QWidget *inner) {
    if (inner == mInner) {
        return;
    }
    delete mInner;
    mInner = inner;
    if (inner) {
        mLayout->addWidget(inner);
    }
}

} // namespace GZ
