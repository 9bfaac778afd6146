#pragma once

#include <QList>
#include <QObject>

class QMenu;
class QToolButton;
class QWidget;

namespace terminal {

/// Folds the controls of a row away that have no room in it, the last ones first. What is folded away stands in the menu
/// of a button at the end of the row: a button as an entry, a box as a menu of its choices, under its accessible name.
///
/// The first control always stays. A control is only ever hidden by this.
class ControlFold : public QObject {
    Q_OBJECT
public:
    /// The controls stand in the row's layout, in this order; the button is added behind them.
    ControlFold(QWidget *row, QList<QWidget *> controls);

    /// How many of the controls stand in the row.
    int shown() const { return mShown; }
    /// Whether everything stands in the row.
    bool isOpen() const { return mShown == mControls.size(); }
    QToolButton *button() const { return mButton; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fold();
    int roomFor(int count) const;
    void fillMenu();

    QWidget *mRow;
    const QList<QWidget *> mControls;
    QToolButton *mButton;
    QMenu *mMenu;
    int mShown;
};

} // namespace terminal
