#pragma once

#include "terminal/formula/FormulaMessages.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace terminal {

/// The messages of formulas and models in rows of time, formula, line, text and count. It comes up by itself with an
/// error that is not in it yet, without taking the focus, and goes when the user closes or clears it.
class MessagePanel : public QWidget {
    Q_OBJECT
public:
    explicit MessagePanel(FormulaMessages &messages, QWidget *parent = nullptr);

    QTreeWidget *rows() const { return mRows; }

Q_SIGNALS:
    /// A row was double clicked; `line` is 0 where the error has no place.
    void formulaChosen(const QString &formula, int line);

private:
    void refresh();
    QWidget *makeHead();

    FormulaMessages &mMessages;
    QLabel *mTitle = nullptr;
    QTreeWidget *mRows = nullptr;
};

} // namespace terminal
