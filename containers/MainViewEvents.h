#pragma once

#include "containers/CRealtimeMainWidget.h"

#include <optional>

namespace TC {

/// What a view does with the events of its panes, graphs and dialogs and of the host: one table, in MainViewEvents.cpp.
struct CRealtimeMainWidget::Events {
    /// An event of the bus as it arrives.
    struct Arrived {
        int mNumber;
        int mFirst;
        int mSecond;
        QString mText;
        void *mData;
    };
    struct Rule;
    static const Rule kRules[];

    /// Answers whether the event ends here; nothing for one that is not in the table.
    static std::optional<bool> handle(CRealtimeMainWidget &view, const Arrived &event);

    static void closePane(CRealtimeMainWidget &view, const Arrived &event);
    static void showChosen(CRealtimeMainWidget &view, const Arrived &event);
    static void moveRegionBound(CRealtimeMainWidget &view, const Arrived &event);
    static void scaleDays(CRealtimeMainWidget &view, const Arrived &event);
};

} // namespace TC
