#pragma once

#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"

#include <QList>
#include <QString>

#include <array>

namespace GZ {

class CSmallNormalButton;

/// Buttons side by side in one frame, one of which is checked. A click on one checks it and delivers eButtonClicked
/// with its id and 1.
class TIMESHARE_EXPORT CPushButtonGroup : public CBaseWidget {
    Q_OBJECT
public:
    /// The frame and the lines between the buttons have the colour of that key.
    explicit CPushButtonGroup(const QString &borderKey, QWidget *parent = nullptr);

    /// Adds a button at the right, `width` pixels wide and as high as the group.
    void addButton(int id, const QString &text, int width);
    /// Checks a button and delivers nothing; an unknown id changes nothing.
    void setCheckedId(int id);
    int checkedId() const; ///< -1 when none is
    /// Colours of the texts, by key, as the buttons lie there, under the mouse, pressed or checked, and disabled.
    void setTextColorKeys(const QString &normal, const QString &hovered, const QString &pressed,
                          const QString &disabled);
    /// Colours of the grounds, see CSmallNormalButton::setBackgroundKeys().
    void setBackgroundKeys(const QString &prefix);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void dress(CSmallNormalButton *button) const;
    void placeButtons();

    QList<CSmallNormalButton *> mButtons;
    QList<int> mWidths; ///< of the buttons
    std::array<QString, 4> mTextColorKeys;
    QString mBackgroundPrefix;
    QWidget *mFrame; ///< drawn over the buttons
};

} // namespace GZ
