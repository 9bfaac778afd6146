#include "host/toolkit/CMediumNormalButton.h"

namespace GZ {
namespace {

// Borders of the image.
constexpr int kLeft = 10;
constexpr int kRight = 35;
constexpr int kTop = 3;
constexpr int kBottom = 20;

} // namespace

CMediumNormalButton::CMediumNormalButton(const QString &text, int id, QWidget *parent)
    : CPushButton(QStringLiteral("img_btn_medium_normal"), id, kLeft, kRight, kTop, kBottom, parent) {
    setText(text);
}

} // namespace GZ
