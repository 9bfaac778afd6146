#include "host/toolkit/CSmallNormalButton.h"

#include <QFontMetrics>
#include <QPainter>

namespace GZ {
namespace {

constexpr int kButtonTextMargin = 8; ///< on each side of the text
constexpr int kSmallButtonHeight = 20;
constexpr std::array<const char *, 4> kKeyEnds = {"nomal", "hover", "press", "disable"}; ///< by EState

} // namespace

CSmallNormalButton::CSmallNormalButton(int id, int border, int radius, QWidget *parent)
    : CEventButton(id, parent), mBorder(border),
      mRadius(radius), mTextColorKeys{QStringLiteral("tc_clr_depth_bottom_group_btn_txt_nomal"),
                                      QStringLiteral("tc_clr_depth_bottom_group_btn_txt_hover"),
                                      QStringLiteral("tc_clr_depth_bottom_group_btn_txt_press"),
                                      QStringLiteral("tc_clr_depth_bottom_group_btn_txt_disable")} {
    setAutoDefault(false); // Enter in a dialog is not for it
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

QSize CSmallNormalButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * kButtonTextMargin, kSmallButtonHeight};
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
