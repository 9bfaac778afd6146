#pragma once

#include <QObject>
#include <QTimer>

namespace terminal {

class ChartView;
class StatusLine;
class TerminalServices;

/// Shows the market's time in the status line, as it goes and is set: second by second while the instrument on the
/// chart is traded, otherwise minute by minute, and never more than once a second. While the clock stands still nothing
/// runs. On the user-interface thread.
class ShownTime : public QObject {
    Q_OBJECT
public:
    /// All of them outlive it.
    ShownTime(TerminalServices &services, const ChartView &view, StatusLine &line, QObject *parent = nullptr);
    ~ShownTime() override;

    /// Shows the time now, as when there is another instrument.
    void show();

private:
    TerminalServices &mServices;
    const ChartView &mView;
    StatusLine &mLine;
    QTimer mNext; ///< runs until another time is to be shown
    int mListening; ///< to the clock
};

} // namespace terminal
