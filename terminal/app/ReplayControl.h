#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace terminal {

class ChartView;
class ReplayPanel;
class ReplayService;

/// Plays the chart again and brings the market back. The panel is made on first use.
class ReplayControl : public QObject {
    Q_OBJECT
public:
    /// `window` becomes the parent of the panel.
    ReplayControl(ReplayService &service, ChartView &view, QWidget *window);

    /// Plays between two times in seconds since the epoch.
    void start(qint64 start, qint64 end);
    /// Shows the panel, when something has been played, where it covers little of the chart.
    void showPanel();
    void end();

Q_SIGNALS:
    void told(const QString &text);

private:
    ReplayService &mService;
    ChartView &mView;
    QWidget *mWindow;
    ReplayPanel *mPanel = nullptr;
};

} // namespace terminal
