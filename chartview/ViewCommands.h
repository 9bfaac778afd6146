#pragma once

#include "host/Export.h"

#include <QString>

namespace GZ {
class CBaseWidget;
} // namespace GZ

namespace TC {

struct GraphSubject;

/// What the entries of a graph's menus do with what the view draws, and with the host's windows about its instrument.
class TIMESHARE_EXPORT ViewCommands {
public:
    ViewCommands(GZ::CBaseWidget &graph, const GraphSubject &subject) : mGraph(graph), mSubject(subject) {}

    void toggleVolume();
    void toggleGradient();
    /// Switches the filter of repeated instruments; only while the formula of the user's trades is shown.
    void toggleFilter();
    /// Adds the instrument to one of the user's lists; false when there is none.
    bool addSelfStock();
    /// Asks the host for the analysis of the instrument's sector.
    void showContrast();
    /// Sets the range of the market replay to that of a region's text, which may have a key as its fourth field.
    void setReplayRange(const QString &text);

private:
    GZ::CBaseWidget &mGraph;
    const GraphSubject &mSubject;
};

} // namespace TC
