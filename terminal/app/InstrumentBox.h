#pragma once

#include "terminal/app/InstrumentSearch.h"

#include <QLineEdit>
#include <QListWidget>

namespace terminal {

/// The box in which an instrument is typed, with the matching ones in a list beneath it. Up and down choose in the
/// list, Enter takes what is chosen, Escape gives the box its former text back.
class InstrumentBox : public QLineEdit {
    Q_OBJECT
public:
    /// The list lies over `window`, which the box is inside of.
    explicit InstrumentBox(QWidget *window);

    void setSearch(const InstrumentSearch &search) { mSearch = search; }
    /// Shows an instrument as the current one.
    void setCurrent(const QString &shown);
    /// Starts typing with a first text, in place of what stands there.
    void startTyping(const QString &text);
    QListWidget *matches() const { return mMatches; }

signals:
    void chosen(const QString &key);
    /// Enter was pressed on a text that no instrument answers.
    void unknown(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void showMatches(const QString &text);
    void moveChoice(int rows);
    void take(const QString &key);
    void restore();

    InstrumentSearch mSearch;
    QListWidget *mMatches;
    QString mCurrent;
};

} // namespace terminal
