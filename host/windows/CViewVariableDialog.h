#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace TC {

/// Shows the variables of a formula at the cursor. Not modal.
class CViewVariableDialog : public QDialog {
    Q_OBJECT
public:
    explicit CViewVariableDialog(QWidget *parent = nullptr);
    void setText(const QString &text);
    QString text() const;

private:
    QPlainTextEdit *mText;
};

} // namespace TC
