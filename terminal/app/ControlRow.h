#pragma once

#include <QDate>
#include <QVector>
#include <QWidget>

class QComboBox;
class QPushButton;

namespace terminal {

class ControlFold;

/// The row of controls over the chart. It shows what it is told and tells what the user asks for; what it shows never
/// changes by a setter's own signal. Where it has no room for all of them, the last ones are folded into a menu.
class ControlRow : public QWidget {
    Q_OBJECT
public:
    static constexpr int kMostPanes = 5; ///< formula panes that the box begins with

    /// `hasPace` says whether the pace of the market is the terminal's to set.
    explicit ControlRow(QWidget *parent = nullptr, bool hasPace = true);

    /// Names the instrument on the button that opens the smart keyboard.
    void setInstrument(const QString &text);
    /// The days to choose from, the newest first; the running one is named so.
    void setDays(const QVector<QDate> &dates, const QDate &running, const QDate &shown);
    /// The day that stands so many days after the one shown, before it when negative; null when there is none.
    QDate dayAfterShown(int days) const;
    /// More panes than the box offers are offered from then on.
    void setPanes(int count);
    int panes() const;
    void setTradesShown(bool shown);
    void setFormulasShown(bool shown);
    void setPaused(bool paused);
    void setPace(double pace);
    void setDownloading(bool underWay);
    /// Takes the colours of the theme; the window has taken them before.
    void applyTheme();

    QComboBox *days() const { return mDays; }
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void keyboardAsked();
    void dayChosen(const QDate &day);
    void panesChosen(int count);
    void tradesToggled(bool shown);
    void tradeDetailsAsked();
    void formulasToggled(bool shown);
    void selfStocksAsked();
    void pauseToggled(bool paused);
    void paceChosen(double pace);
    void themeToggled();
    void importAsked();
    void downloadAsked();

private:
    QPushButton *addButton(const QString &text, const char *name, bool checkable = false);
    QComboBox *addBox(const char *name);
    void connectAll();
    void colorButtons();
    void check(QPushButton *button, bool checked);

    QPushButton *mInstrument;
    QComboBox *mDays;
    QVector<QDate> mDates; ///< in it
    QDate mRunning;
    QComboBox *mPanes;
    QPushButton *mTrades;
    QPushButton *mTradeDetails;
    QPushButton *mFormulas;
    QPushButton *mSelfStocks;
    QPushButton *mPause;
    QComboBox *mPace;
    QPushButton *mTheme;
    QPushButton *mImport;
    QPushButton *mDownload;
    ControlFold *mFold;
};

} // namespace terminal
