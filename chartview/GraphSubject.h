#pragma once

#include "host/records/Enumerations.h"

#include <QString>
#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeData;
class CRealtimeUiParam;

/// What a graph shows, and how. The graph alone changes it; its parts read it.
struct GraphSubject {
    boost::shared_ptr<CRealtimeData> data;
    boost::shared_ptr<CRealtimeUiParam> uiParam;
    int id = 0; ///< told in the events of the graph
    EIndexDisplayType displayType = EIndexDisplayType::Main;
    EIndexViewType viewType = EIndexViewType::Ordinary;
    QString stock; ///< key of the graph's instrument
    bool paired = false; ///< a paired view with automatic overlay
    bool replay = false;
    bool history = false; ///< a past day
    bool createNewWork = true; ///< the host has groups of work

    bool isMain() const { return displayType == EIndexDisplayType::Main; }
};

} // namespace TC
