#include "linkage/LinkageControls.h"

#include "host/toolkit/CSmallNoNormalButton.h"

namespace TC {

GZ::CSmallNoNormalButton *makeBarButton(const QString &text, int id, int width) {
    auto *button = new GZ::CSmallNoNormalButton(text, id);
    button->setFontKey(QStringLiteral("fnt_default_normal_fix"));
    button->setFixedSize(width, 22);
    return button;
}

} // namespace TC
