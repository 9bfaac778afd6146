#pragma once

#include <QMap>
#include <QString>

namespace TC {
class CRealtimeMainWidget;
}

namespace terminal {

class ConfigService;

/// Remembers what is checked in the dialog of the trades, but for the view by strategies, which always begins off: a
/// dialog reads it the other way round than it tells it.
class TradeDetailsMemory {
public:
    /// Gives the chart what was remembered. Both have to outlive this.
    TradeDetailsMemory(ConfigService &config, TC::CRealtimeMainWidget &chart);

    /// Remembers what is checked now, when it is another than before.
    void keep();

private:
    ConfigService &mConfig;
    TC::CRealtimeMainWidget &mChart;
    QMap<QString, bool> mKept;
};

} // namespace terminal
