#pragma once

#include "host/Export.h"
#include "host/records/Enumerations.h"

#include <QCoreApplication>
#include <QString>

class QAction;

namespace GZ {
class CBaseWidget;
} // namespace GZ

namespace TC {

class CStockInfo;
struct GraphSubject;

/// What the entries of a graph's menus do with overlaid instruments. The graph asks for an overlay by an event; the pane
/// puts it on.
class TIMESHARE_EXPORT OverlayCommands {
    Q_DECLARE_TR_FUNCTIONS(TC::OverlayCommands)
public:
    OverlayCommands(GZ::CBaseWidget &graph, const GraphSubject &subject) : mGraph(graph), mSubject(subject) {}

    /// Let the user pick an instrument, on an axis scale of its own or on that of the main one.
    void pickWithAxis() { openKeyboard(tr("叠加品种"), true); }
    void pickWithoutAxis() { openKeyboard(tr("叠加无坐标品种"), false); }
    /// An instrument was picked. One that is there already, or is the main one, changes nothing. The shortcuts "03"
    /// and "04" stand for an index.
    void overlayPicked(const CStockInfo &picked, ESmartKeyType type, bool withAxis);
    void takeAll();
    /// Overlays the counterpart of a share that is listed in two markets.
    void overlayCounterpart();
    /// The instrument of a paired view has changed: with overlays, its counterpart takes their place, or they go when
    /// it `wasPaired` and is no more.
    void followPair(bool wasPaired);
    /// Switches the setting that overlays the instrument's sector.
    void toggleSector();
    /// Overlays the index of the instrument's sector of a classification level; with any of them overlaid it only goes.
    void toggleSectorLevel(int level);
    /// Overlays what the instrument converts to or from, or takes it away.
    void toggleConvertible();

private:
    void ask(int change, const QString &key = {});
    bool hasRoom();
    void openKeyboard(const QString &title, bool withAxis);

    GZ::CBaseWidget &mGraph;
    const GraphSubject &mSubject;
};

} // namespace TC
