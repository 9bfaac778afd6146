#pragma once

#include "host/toolkit/CUiResource.h"
#include "terminal/app/Heartbeat.h"
#include "terminal/app/InstrumentSearch.h"
#include "terminal/app/TerminalServices.h"

#include <QDate>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class QComboBox;

namespace terminal {

class ChartView;
class ControlRow;
class DownloadTeller;
class FormulaPanel;
class ImportDialog;
class MessagePanel;
class QuoteLists;
class ReplayControl;
class SmartKeyboard;
class ShownTime;
class StatusLine;
class ViewMemory;

/// The terminal's window: the chart of one instrument, the controls over it, the formulas beside it and the status line
/// beneath, with the messages of formulas and models over it when there are any.
///
/// How the user has arranged it comes back at the next start; see ViewMemory.
///
/// Typing anywhere opens the smart keyboard. The arrows, Home and End walk the cross line, up and down show fewer and
/// more days, Escape takes the cross line away. Page up and page down go to the trading day before and after, space
/// pauses the exchange and lets it go on, Ctrl+O imports files, Ctrl+D downloads history, Ctrl+T changes the theme,
/// Ctrl+I shows the formulas, Ctrl+E the dialog of what is shown of the trades, Ctrl+L the user's own lists of
/// instruments, Ctrl+H the variables of the selected formula pane at the cross line.
class TerminalWindow : public QWidget, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit TerminalWindow(TerminalServices &services, QWidget *parent = nullptr);
    ~TerminalWindow() override;

    /// Shows an instrument; a null day is the running one, or the newest stored one where none runs. False, with the
    /// reason in the status line, when that cannot be.
    bool showInstrument(const QString &key, const QDate &day = {});
    /// Opens the dialog of imports, or brings it forward, with these files in it. What it imports is shown.
    ImportDialog *openImport(const QStringList &files = {});
    void setPaused(bool paused);
    void setPace(double pace);
    /// Takes the pace of the time before; the user has given none.
    void restorePace();
    /// Whether the window stands where it stood the time before.
    bool isPlaceRestored() const;
    /// "dark" or "light"; remembered for the next start.
    void setThemeName(const QString &name);

    /// Shows or hides the trades of the user's accounts on the chart; remembered for the next start.
    void setTradesShown(bool shown);
    /// Opens the dialog in which the user chooses what is shown of his trades, or brings it forward. What is checked in
    /// it is remembered for the next start, but for the view by strategies.
    void openTradeDetails();
    /// Shows or hides the tree of formulas.
    void setFormulasShown(bool shown);
    /// Number of formula panes under the chart, 0 to 5; remembered for the next start.
    void setFormulaPanes(int count);

    ChartView *view() const { return mView; }
    FormulaPanel *formulas() const { return mFormulas; }
    QComboBox *days() const;
    MessagePanel *messages() const { return mMessages; }
    /// Shows the variables of the selected formula pane at the cross line, hidden ones too; without a cross line those
    /// of the newest point.
    void showVariables();
    /// Opens the smart keyboard for another instrument or a formula, with a first text.
    void openSmartKeyboard(const QString &text = {});
    QString status() const;

    /// Lists the user's own instruments.
    void showSelfStocks();
    /// Plays the chart again, between two times in seconds since the epoch.
    void startReplay(qint64 start, qint64 end);
    /// Writes the text of a formula to a file; the status line tells how that went.
    void exportFormula(const QString &formula, const QString &path);

    void onUiResourceChanged() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    /// Closes the editors of formulas too; one with a text that is not saved asks, and may stay.
    void closeEvent(QCloseEvent *event) override;

private:
    void layOut();
    void connectControls();
    void connectChart();
    void refreshControls();
    void keepPanes(int count);
    void refreshSearch();
    void refreshDays();
    void shiftDay(int days);
    void onImported(const QString &key, const QDate &day, const QString &text);
    void toggleTheme();
    bool handleCommandKey(int key);
    bool handleCursorKey(int key);
    void onBeat();
    void tellMessages();
    void say(const QString &text, bool isError = false);

    TerminalServices &mServices;
    InstrumentSearch mSearch;
    ChartView *mView;
    FormulaPanel *mFormulas;
    MessagePanel *mMessages;
    ControlRow *mControls;
    StatusLine *mStatus;
    QuoteLists *mLists;
    DownloadTeller *mDownloads;
    ReplayControl *mReplay;
    SmartKeyboard *mKeyboard;
    std::unique_ptr<ViewMemory> mMemory;
    QPointer<ImportDialog> mImportDialog;
    ShownTime *mTime;
    Heartbeat mHeartbeat{Heartbeat::kInterval,
                         mServices.longestRest()}; ///< notices messages and a new trading day
    QDate mRunningDay;
    bool mIsDayChosen = false; ///< another than the latest
    int mMessagesTold = 0;
};

} // namespace terminal
