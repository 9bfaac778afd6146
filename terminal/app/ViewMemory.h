#pragma once

#include "terminal/app/Heartbeat.h"
#include "terminal/config/SavedView.h"

#include <QObject>

class QWidget;

namespace terminal {

class ChartView;
class ConfigService;
class SimulatedClock;

/// Keeps how the user has arranged the window, the choice of his trades included, and brings it back. A change is written
/// within a third of a second, so that neither the end of the program nor a kill loses it. Nothing is written before
/// start().
class ViewMemory : public QObject {
    Q_OBJECT
public:
    /// All of them have to outlive it.
    ViewMemory(ConfigService &config, ChartView &view, const SimulatedClock &clock, QWidget &window);
    ~ViewMemory() override;

    /// What was kept; nothing at a first start.
    const std::optional<SavedView> &kept() const { return mKept; }
    /// Brings the panes, the overlays, the choice of trades and the window's place back. Before the first instrument is shown.
    void restoreView();
    /// Brings back what needs an instrument on the chart: the days, and a formula in place of the ordinary chart.
    void restoreChart();

    /// Begins to notice changes.
    void start();
    bool isStarted() const { return mIsStarted; }
    /// Writes what has changed.
    void keep();

private:
    void restoreTrades();
    SavedView current() const;

    ConfigService &mConfig;
    ChartView &mView;
    const SimulatedClock &mClock;
    QWidget &mWindow;
    std::optional<SavedView> mKept;
    bool mIsStarted = false;
    Heartbeat mLook;
};

} // namespace terminal
