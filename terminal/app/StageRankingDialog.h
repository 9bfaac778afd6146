#pragma once

#include "host/toolkit/CUiResource.h"
#include "terminal/app/BackgroundJob.h"
#include "terminal/app/StageQuestion.h"
#include "terminal/market/StageRanking.h"

#include <QDate>
#include <QDialog>
#include <QVector>

class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace terminal {

class StageRankingModel;
class TerminalServices;

/// The ranking of all instruments over a span by one of eight numbers, the largest first; a click on a heading ranks by
/// another one. The numbers are worked out in the background, which can be stopped. A double click or Enter chooses an
/// instrument. Not modal.
class StageRankingDialog : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit StageRankingDialog(TerminalServices &services, QWidget *parent = nullptr);
    ~StageRankingDialog() override;

    /// Ranks; a ranking that is under way is given up.
    void rank(const StageQuestion &question);
    /// Whether a ranking is under way.
    bool isRanking() const { return mJob.isRunning(); }
    QTableView *table() const { return mTable; }
    QString message() const;

    void onUiResourceChanged() override;

Q_SIGNALS:
    /// An instrument and the day of the span.
    void chosen(const QString &key, const QDate &day);

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void choose(int row);
    void showProgress();
    void showRows();
    void setRanking(bool ranking);

    TerminalServices &mServices;
    StageRankingModel *mModel;
    QTableView *mTable;
    QLabel *mMessage;
    QProgressBar *mProgress;
    QPushButton *mStop;
    StageQuestion mQuestion;
    QVector<StageRow> mRows; ///< the job's, as long as it runs
    BackgroundJob mJob; ///< last: it ends first
};

} // namespace terminal
