#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace terminal {

class ChartView;
class QuoteListDialog;
class TerminalServices;

/// The lists of instruments that the window opens: the sectors of an instrument, and the user's own lists. The dialogs
/// are made on first use, once each.
class QuoteLists : public QObject {
    Q_OBJECT
public:
    /// `window` becomes the parent of the dialogs.
    QuoteLists(TerminalServices &services, const ChartView &view, QWidget *window);
    ~QuoteLists() override;

    void showSectors(const QString &key);
    void showSelfStocks();

Q_SIGNALS:
    void chosen(const QString &key);
    /// Why something was not done.
    void refused(const QString &reason);

private:
    QuoteListDialog *makeDialog(const char *name, const QString &title);
    void makeSelfStocks();
    void refreshSelfStocks();

    TerminalServices &mServices;
    const ChartView &mView;
    QWidget *mWindow;
    QuoteListDialog *mSectors = nullptr;
    QuoteListDialog *mSelfStocks = nullptr;
};

} // namespace terminal
