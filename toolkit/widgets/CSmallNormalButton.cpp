#include "host/toolkit/CSmallNormalButton.h"

#include "host/toolkit/Events.h"

#include <QFontMetrics>
#include <QPainter>

namespace GZ {
namespace {

constexpr int kTextMargin = 8; ///< on each side of the text
constexpr int kHeight = 20;
constexpr std::array<const char *, 4> kKeyEnds = {"nomal", "hover", "press", "disable"}; ///< by EState

} // namespace

CSmallNormalButton::CSmallNormalButton(int id, int border, int radius, QWidget *parent)
    : CEventWidgetT<QPushButton>(parent), mId(id), mBorder(border),
      mRadius(radius), mTextColorKeys{QStringLiteral("tc_clr_depth_bottom_group_btn_txt_nomal"),
                                      QStringLiteral("tc_clr_depth_bottom_group_btn_txt_hover"),
                                      QStringLiteral("tc_clr_depth_bottom_group_btn_txt_press"),
                                      QStringLiteral("tc_clr_depth_bottom_group_btn_txt_disable")} {
    setAutoDefault(false); // Enter in a dialog is not for it
    connect(this, &QPushButton::clicked, this, [this](bool checked) {
        deliverEvent(TC::eButtonClicked, mId, checked ? 1 : 0, QString(), nullptr);
    });
    CSmallNormalButton::onUiResourceChanged();
}

void CSmallNormalButton::setTextColorKeys(const QString &normal, const QString &hovered, const QString &pressed,
                                          const QString &disabled) {
    mTextColorKeys = {normal, hovered, pressed, disabled};
    update();
}

void CSmallNormalButton::setBackgroundKeys(const QString &prefix) {
    mBackgroundPrefix = prefix;
    update();
}

void CSmallNormalButton::setFontKey(const QString &key) {
    mFontKey = key;
    onUiResourceChanged();
}

QSize CSmallNormalButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * kTextMargin, kHeight};
}

void CSmallNormalButton::onUiResourceChanged() {
    setFont(CUiResource::instance().getFont(mFontKey));
    update();
}

void CSmallNormalButton::enterEvent(QEvent *event) {
    CEventWidgetT<QPushButton>::enterEvent(event);
    update();
}

void CSmallNormalButton::leaveEvent(QEvent *event) {
    CEventWidgetT<QPushButton>::leaveEvent(event);
    update();
}

CSmallNormalButton::EState CSmallNormalButton::state() const {
    if (!isEnabled()) {
        return eDisabled;
    }
    return isDown() || isChecked() ? ePressed : underMouse() ? eHovered : eNormal;
}

void CSmallNormalButton::paintEvent(QPaintEvent *) {
    const CUiResource &theme = CUiResource::instance();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(theme.getColor(mBackgroundPrefix + QLatin1String(kKeyEnds[state()])));
    painter.setPen(mBorder > 0 ? QPen(theme.getColor(QStringLiteral("clr_edit_border")), mBorder)
                               : QPen(Qt::NoPen));
    const double inset = mBorder / 2.0; // the line lies inside
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), mRadius, mRadius);
    painter.setPen(theme.getColor(mTextColorKeys[state()]));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

} // namespace GZ
