#pragma once

#include "host/toolkit/CUiResource.h"
#include "terminal/app/BackgroundJob.h"
#include "terminal/market/MinuteBar.h"

#include <QDialog>
#include <QString>

class QLabel;
class QTableWidget;

namespace terminal {

class TerminalServices;

/// The minutes of a stretch of an instrument: open, high, low and last price, change against the minute before, volume
/// and amount. They are read in the background. Not modal.
class StretchQuotesDialog : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit StretchQuotesDialog(TerminalServices &services, QWidget *parent = nullptr);
    ~StretchQuotesDialog() override;

    /// Lists the minutes between two times, both included, in seconds since the epoch.
    void list(const QString &key, qint64 start, qint64 end);
    bool isReading() const { return mJob.isRunning(); }
    QTableWidget *table() const { return mTable; }
    QString message() const;

    void onUiResourceChanged() override;

private:
    void showRows();
    void setCell(int row, int column, const QString &text, const char *colorKey = nullptr);

    TerminalServices &mServices;
    QTableWidget *mTable;
    QLabel *mMessage;
    QString mKey;
    MinuteBars
        mBars; ///< of the stretch, with the minute in front of it first when there is one; the job's while it runs
    qint64 mStart = 0; ///< milliseconds since the epoch
    BackgroundJob mJob; ///< last: it ends first
};

} // namespace terminal
