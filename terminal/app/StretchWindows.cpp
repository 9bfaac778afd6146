#include "terminal/app/StretchWindows.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/StageRankingDialog.h"
#include "terminal/app/StretchQuotesDialog.h"

namespace terminal {

StretchWindows::StretchWindows(TerminalServices &services, ChartView &view, QWidget *window)
    : QObject(window), mServices(services), mView(view), mWindow(window) {
    connect(&view, &ChartView::stretchQuotesAsked, this, &StretchWindows::showQuotes);
    connect(&view, &ChartView::rankingAsked, this, &StretchWindows::showRanking);
}

void StretchWindows::showQuotes(qint64 start, qint64 end) {
    if (!mQuotes) {
        mQuotes = new StretchQuotesDialog(mServices, mWindow);
    }
    mQuotes->list(mView.instrument(), start, end);
    mQuotes->show();
    mQuotes->raise();
}

void StretchWindows::showRanking(const QString &question) {
    const std::optional<StageQuestion> read = readStageQuestion(question);
    if (!read) {
        return;
    }
    if (!mRanking) {
        mRanking = new StageRankingDialog(mServices, mWindow);
        connect(mRanking, &StageRankingDialog::chosen, this, &StretchWindows::chosen);
    }
    mRanking->rank(*read);
    mRanking->show();
    mRanking->raise();
}

} // namespace terminal
