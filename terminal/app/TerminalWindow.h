#pragma once

#include "host/toolkit/CUiResource.h"
#include "terminal/app/InstrumentSearch.h"
#include "terminal/app/TerminalServices.h"

#include <QDate>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;

namespace terminal {

class ChartPane;
class ImportDialog;
class InstrumentBox;
class MessagePanel;

/// The terminal's window: the chart of one instrument's day, the controls over it and the status line beneath, with the messages
/// of formulas and models over it when there are any.
///
/// Typing anywhere goes to the instrument box. Page up and page down go to the trading day before and after, space
/// pauses the exchange and lets it go on, Ctrl+O imports files, Ctrl+T changes the theme.
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
    /// "dark" or "light"; remembered for the next start.
    void setThemeName(const QString &name);

    ChartPane *pane() const { return mPane; }
    InstrumentBox *box() const { return mBox; }
    QComboBox *days() const { return mDays; }
    MessagePanel *messages() const { return mMessages; }
    QString status() const;

    void onUiResourceChanged() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildControls(QWidget *row);
    void buildStatus(QWidget *row);
    void applyTheme();
    void refreshSearch();
    void refreshDays();
    void shiftDay(int days);
    void editFormula(const QString &formula);
    void onImported(const QString &key, const QDate &day, const QString &text);
    void onSecond();
    void tellMessages();
    void say(const QString &text, bool isError = false);

    TerminalServices &mServices;
    InstrumentSearch mSearch;
    ChartPane *mPane;
    MessagePanel *mMessages;
    InstrumentBox *mBox = nullptr;
    QComboBox *mDays = nullptr;
    QPushButton *mPause = nullptr;
    QComboBox *mPace = nullptr;
    QPushButton *mTheme = nullptr;
    QPushButton *mImport = nullptr;
    QLabel *mStatus = nullptr;
    QLabel *mClock = nullptr;
    QPointer<ImportDialog> mImportDialog;
    QTimer mSecond; ///< shows the market's time, and notices a new trading day
    QDate mRunningDay;
    int mMessagesTold = 0;
    bool mErrorShown = false;
};

} // namespace terminal
