#pragma once

#include <QWidget>

class QDateTime;
class QLabel;

namespace terminal {

/// The line beneath the chart: what the terminal has to say, an error in a colour of its own, and the market's time.
class StatusLine : public QWidget {
    Q_OBJECT
public:
    explicit StatusLine(QWidget *parent = nullptr);

    void say(const QString &text, bool isError = false);
    /// Says an error, if there is one, that stays when another instrument is shown.
    void sayLasting(const QString &error);
    /// Takes an error away that does not last.
    void clearError();
    /// Without seconds while nothing is traded.
    void setMarketTime(const QDateTime &time, bool isTrading);
    /// What is wrong with the market that comes from a server; stays beside all else until it is empty.
    void setTrouble(const QString &text);
    QString text() const;

private:
    QLabel *mText;
    QLabel *mTrouble;
    QLabel *mClock;
    bool mIsErrorShown = false; ///< one that does not last
};

} // namespace terminal
