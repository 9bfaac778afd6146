#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventButton.h"

#include <array>

namespace GZ {

/// A small button with a text on a flat ground. A click delivers eButtonClicked with the button's id, 1 when it is
/// checked and 0 otherwise, and no text.
class TIMESHARE_EXPORT CSmallNormalButton : public CEventButton {
    Q_OBJECT
public:
    /// The ground has a line around it of `border` pixels, none for 0, and corners of that radius.
    CSmallNormalButton(int id, int border, int radius, QWidget *parent = nullptr);

    /// Colours of the text, by key, as it lies there, under the mouse, pressed, and disabled.
    void setTextColorKeys(const QString &normal, const QString &hovered, const QString &pressed,
                          const QString &disabled);
    /// Colours of the ground: keys that begin so and end as those of the text do, with "nomal", "hover", "press" and
    /// "disable".
    void setBackgroundKeys(const QString &prefix);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    enum EState { eNormal, eHovered, ePressed, eDisabled };
    EState state() const;

    int mBorder;
    int mRadius;
    std::array<QString, 4> mTextColorKeys; ///< by EState
    QString mBackgroundPrefix = QStringLiteral("tc_clr_conciseStyle_depth_bottom_group_btn_");
};

} // namespace GZ
