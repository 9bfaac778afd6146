#pragma once

#include "host/Export.h"
#include "host/toolkit/CUiResource.h"

#include <QDialog>

class QPlainTextEdit;

namespace TC {

/// Shows the variables of a formula at the cursor. Not modal.
class TIMESHARE_EXPORT CViewVariableDialog : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit CViewVariableDialog(QWidget *parent = nullptr);
    void setText(const QString &text);
    QString text() const;
    void onUiResourceChanged() override;

private:
    QPlainTextEdit *mText;
};

} // namespace TC
