#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace terminal {

/// Opens the smart keyboard over the window and tells what the user has picked.
class SmartKeyboard : public QObject {
    Q_OBJECT
public:
    explicit SmartKeyboard(QWidget *window);

    /// Opens it for another instrument or a formula, with a first text.
    void open(const QString &text);

Q_SIGNALS:
    void instrumentPicked(const QString &key);
    void formulaPicked(const QString &name);
    /// Something was picked, and the keyboard has gone.
    void closed();

private:
    QWidget *mWindow;
};

} // namespace terminal
