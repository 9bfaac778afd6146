#pragma once

#include <QDate>
#include <QObject>
#include <QString>

class QWidget;

namespace terminal {

class ChartView;
class StageRankingDialog;
class StretchQuotesDialog;
class TerminalServices;

/// The windows that follow from a stretch of the chart: its quotes, and the ranking of instruments over it. They open
/// when the chart asks for them.
class StretchWindows : public QObject {
    Q_OBJECT
public:
    /// The windows stand over `window`, which owns them.
    StretchWindows(TerminalServices &services, ChartView &view, QWidget *window);

    void showQuotes(qint64 start, qint64 end);
    void showRanking(const QString &question);
    /// Null before they were opened.
    StretchQuotesDialog *quotes() const { return mQuotes; }
    StageRankingDialog *ranking() const { return mRanking; }

Q_SIGNALS:
    /// An instrument of the ranking was chosen, and the day that it is of.
    void chosen(const QString &key, const QDate &day);

private:
    TerminalServices &mServices;
    ChartView &mView;
    QWidget *mWindow;
    StretchQuotesDialog *mQuotes = nullptr;
    StageRankingDialog *mRanking = nullptr;
};

} // namespace terminal
