#include "host/toolkit/CCommonDialog.h"

#include "host/toolkit/CPushButton.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/QtCompat.h"
#include "host/toolkit/ThemeColor.h"
#include "toolkit/windows/DialogFrame.h"
#include "toolkit/windows/DialogLook.h"

#include <QFontMetrics>
#include <QHoverEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace GZ {
namespace {

constexpr int kTitleHeight = 26;
constexpr int kFrame = 3; ///< takes the mouse for resizing; its outermost pixel is drawn
constexpr int kTitleMargin = 6; ///< of the button, on both sides
constexpr int kTextMargin = 10;

} // namespace

CCommonDialog::CCommonDialog(QWidget *parent)
    : CEventWidgetT<QDialog>(parent),
      mTitleButton(new CPushButton(QStringLiteral("img_title_close"), kCloseButton, this)),
      mLayout(new QVBoxLayout(this)) {
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_Hover); // told of the mouse over its children as well
    setModal(false);
    mTitleButton->setAutoRaise(true);
    mTitleButton->setAutoDefault(false);
    mLayout->setContentsMargins(kFrame, kTitleHeight, kFrame, kFrame);
    mLayout->setSpacing(0);
    onUiResourceChanged();
}

CCommonDialog::~CCommonDialog() = default;

void CCommonDialog::setInnerWidget(QWidget *inner) {
    if (inner == mInner) {
        return;
    }
    delete mInner;
    mInner = inner;
    if (inner) {
        mLayout->addWidget(inner);
    }
}

int CCommonDialog::titleButtonMargin() {
    return kTitleMargin;
}

bool CCommonDialog::handleEvent(int event, int first, int second, QString text, void *data) {
    if (event == TC::eButtonClicked && first == kCloseButton) {
        done(kCloseButton);
        return true;
    }
    return CEventDeliverer::handleEvent(event, first, second, text, data);
}

void CCommonDialog::reject() {
    handleEvent(TC::eButtonClicked, kCloseButton, 0, QString(), nullptr);
}

void CCommonDialog::onUiResourceChanged() {
    applyDialogLook(*this);
    update();
}

bool CCommonDialog::event(QEvent *event) {
    if (event->type() == QEvent::HoverMove) {
        showEdgeCursor(hoverPosition(*static_cast<QHoverEvent *>(event)));
    }
    return CEventWidgetT<QDialog>::event(event);
}

void CCommonDialog::changeEvent(QEvent *event) {
    CEventWidgetT<QDialog>::changeEvent(event);
    if (event->type() == QEvent::WindowTitleChange || event->type() == QEvent::ActivationChange) {
        update(0, 0, width(), kTitleHeight);
    }
}

void CCommonDialog::resizeEvent(QResizeEvent *event) {
    CEventWidgetT<QDialog>::resizeEvent(event);
    mTitleButton->move(width() - kTitleMargin - mTitleButton->width(), kTitleMargin);
}

void CCommonDialog::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(rect(), themeColor("clr_dialog_bg"));
    painter.fillRect(0, 0, width(), kTitleHeight, themeColor("clr_dialog_title_bg"));
    painter.setPen(themeColor(isActiveWindow() ? "clr_text_default" : "clr_text_light_default"));
    const int textWidth = mTitleButton->x() - 2 * kTextMargin;
    painter.drawText(QRect(kTextMargin, 0, textWidth, kTitleHeight), Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(windowTitle(), Qt::ElideRight, textWidth));
    painter.setPen(themeColor("clr_dialog_border"));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

Qt::Edges CCommonDialog::edgesAt(const QPoint &at) const {
    return minimumSize() == maximumSize() ? Qt::Edges() : frameEdgesAt(at, size(), kFrame);
}

void CCommonDialog::showEdgeCursor(const QPoint &at) {
    if (mMoving || mResizing) {
        return;
    }
    if (const Qt::Edges edges = edgesAt(at)) {
        setCursor(frameCursor(edges));
    } else {
        unsetCursor();
    }
}

void CCommonDialog::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    mResizing = edgesAt(event->pos());
    mMoving = !mResizing && event->pos().y() < kTitleHeight;
    mPressedAt = GZ::globalPosition(*event);
    mPressedGeometry = geometry();
}

void CCommonDialog::mouseMoveEvent(QMouseEvent *event) {
    const QPoint moved = GZ::globalPosition(*event) - mPressedAt;
    if (mMoving) {
        move(mPressedGeometry.topLeft() + moved);
    } else if (mResizing) {
        const QSize least = minimumSize().expandedTo(minimumSizeHint());
        setGeometry(draggedFrame(mPressedGeometry, mResizing, moved, least, maximumSize()));
    }
}

void CCommonDialog::mouseReleaseEvent(QMouseEvent *event) {
    mMoving = false;
    mResizing = Qt::Edges();
    showEdgeCursor(event->pos());
}

} // namespace GZ
