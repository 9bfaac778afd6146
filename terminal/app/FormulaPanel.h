#pragma once

#include <QWidget>

class QKeyEvent;
class QLineEdit;
class QPoint;
class QTreeWidget;
class QTreeWidgetItem;

namespace terminal {

/// The tree of the formula catalogue, with a box that narrows it, from which the arrow keys and Enter go to what was found.
/// A double click or Enter asks for a formula; the menu
/// of a formula has its parameters and its text. One button asks for the ordinary chart, another for a new formula.
class FormulaPanel : public QWidget {
    Q_OBJECT
public:
    explicit FormulaPanel(QWidget *parent = nullptr);

    /// Reads the catalogue anew; the open folders stay open.
    void refresh();
    QTreeWidget *tree() const { return mTree; }
    QLineEdit *filter() const { return mFilter; }
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void asked(const QString &formula);
    void parametersAsked(const QString &formula);
    void editAsked(const QString &formula);

private:
    /// Hides what does not have the text in its name; a folder with nothing left goes too.
    bool narrow(QTreeWidgetItem *item, const QString &text);
    void narrowAll();
    void ask(const QTreeWidgetItem *item);
    void selectFirst();
    bool handleFilterKey(QKeyEvent *event);
    void showMenu(const QPoint &at);

    QLineEdit *mFilter;
    QTreeWidget *mTree;
};

} // namespace terminal
