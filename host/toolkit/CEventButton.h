#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventWidgetT.h"
#include "host/toolkit/CUiResource.h"
#include "host/toolkit/QtCompat.h"

#include <QPushButton>
#include <QString>

namespace GZ {

/// What all buttons of the toolkit have in common: an id, a font of the theme, another look under the mouse. A click
/// delivers eButtonClicked with the button's id, 1 when it is checked and 0 otherwise, and no text.
class TIMESHARE_EXPORT CEventButton : public CEventWidgetT<QPushButton>, public CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit CEventButton(int id, QWidget *parent = nullptr);

    int id() const { return mId; }
    void setId(int id) { mId = id; }
    void setFontKey(const QString &key);
    void onUiResourceChanged() override;

protected:
    void enterEvent(EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    int mId;
    QString mFontKey = QStringLiteral("fnt_default_normal");
};

} // namespace GZ
