#pragma once

#include "host/toolkit/CUiResource.h"
#include "terminal/app/QuoteList.h"

#include <QDialog>
#include <QString>
#include <QTimer>
#include <QVector>

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace terminal {

class TerminalServices;

/// Lists of instruments with their prices and the change of the day, the largest change first, as the market runs. A
/// double click or Enter chooses an instrument. Not modal.
class QuoteListDialog : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit QuoteListDialog(TerminalServices &services, QWidget *parent = nullptr);

    /// The lists to choose from; the list shown before stays when it is among them. An instrument stands out.
    void setLists(const QVector<QuoteList> &lists, const QString &outstanding = {});
    /// Whether instruments can be taken off a list.
    void setRemovable(bool removable);
    QComboBox *names() const { return mNames; }
    QTreeWidget *rows() const { return mRows; }

    void onUiResourceChanged() override;

Q_SIGNALS:
    void chosen(const QString &key);
    void removeAsked(const QString &list, const QString &key);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void fill();
    void refresh();

    TerminalServices &mServices;
    QVector<QuoteList> mLists;
    QString mOutstanding;
    QComboBox *mNames;
    QTreeWidget *mRows;
    QLabel *mHint;
    QPushButton *mRemove;
    QTimer mTimer; ///< while the dialog shows
};

} // namespace terminal
