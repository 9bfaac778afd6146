#pragma once

#include "host/toolkit/CBaseWidget.h"
#include "terminal/app/ChartSources.h"

#include <QDate>
#include <QList>
#include <QSet>
#include <QString>
#include <boost/shared_ptr.hpp>

namespace TC {
class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeMainWidget;
class CRealtimeUiParam;
} // namespace TC

namespace terminal {

/// The terminal's side of one chart view: sets the instrument and the trading day, and hears what the view delivers.
class ChartView : public GZ::CBaseWidget {
    Q_OBJECT
public:
    explicit ChartView(ChartSources sources, QWidget *parent = nullptr);

    /// Shows an instrument of the catalogue; a null day is the running one. False, and nothing changed, for an
    /// unknown instrument.
    bool show(const QString &key, const QDate &day);
    /// Withdraws what is under way and asks for everything anew, as after a theme or the store changed.
    void reload();

    QString instrument() const { return mInstrument; }
    /// The newest trading day shown.
    QDate day() const;
    /// Whether a past day was asked for.
    bool isPastDay() const { return mPastDay.isValid(); }
    /// Whether every series that was asked for has arrived, in all panes and for all days.
    bool isComplete() const;
    /// Points of the price series of the newest day.
    int pointCount() const;

    /// Shows the trades of all accounts that the trade service has, or of none.
    void showTrades(bool shown);
    /// Whether trades of accounts are shown.
    bool areTradesShown() const;
    /// Asks for everything anew, from the replay service or from the market again.
    void setReplay(bool replay);
    bool isReplay() const { return mReplay; }
    /// Number of formula panes under the chart, 0 to 9; those added have the default formulas.
    void setFormulaPanes(int count);
    int formulaPanes() const;
    /// Moves the cross line one position, or shows it.
    void moveCursor(bool left);
    void moveToHome();
    void moveToEnd();
    /// Turns the cross line off when it is shown; whether it was.
    bool hideCrossLine();

    TC::CRealtimeMainWidget *main() const { return mMain; }
    boost::shared_ptr<TC::CRealtimeUiParam> uiParam() const;
    /// Of the newest day of the main pane.
    TC::CRealtimeGraphWidget *graph() const;
    boost::shared_ptr<TC::CRealtimeData> data() const;

    bool handleEvent(int event, int first, int second, QString text, void *payload) override;
    void onUiResourceChanged() override;
    using QWidget::show;

Q_SIGNALS:
    /// The last value of the chart has changed.
    void changed();
    /// The history of the chart's instrument is wanted.
    void downloadAsked();
    /// The replay service has a range: seconds since the epoch.
    void replayAsked(qint64 start, qint64 end);
    void replayControlAsked();
    /// The parameters of a formula are wanted.
    void parametersAsked(const QString &formula);
    /// What is shown of trades is to be chosen.
    void tradeSettingsAsked();
    /// The settings of a pane are wanted whose formula has no parameters.
    void noSettings();
    void filterChanged(bool on);
    /// The quotes of a stretch are wanted: seconds since the epoch.
    void stretchQuotesAsked(qint64 start, qint64 end);
    /// A ranking over a span is wanted, see readStageQuestion().
    void rankingAsked(const QString &question);

private:
    /// A formula was replaced in one day's graph: brings the other days of its pane, and the title, in step.
    void spreadReplacedFormula();
    /// The settings of a pane are the parameters of its first formula that has some; those of the main pane else what is
    /// shown of trades.
    void askPaneSettings(int pane);
    /// Repaints the trades when they are those of an instrument shown.
    void onTradesChanged(const QSet<QString> &instruments);
    /// Tells the view how far the keys may walk: it counts the points of a running day itself, those of a past one not.

    const ChartSources mSources;
    TC::CRealtimeMainWidget *mMain;
    QString mInstrument;
    QDate mPastDay; ///< null for the running day
    bool mIsReloadDue = false; ///< the theme has changed
    bool mReplay = false;
};

} // namespace terminal
