#pragma once

#include <QString>

#include <optional>

namespace TC {

class CRealtimeMainWidget;
struct MainViewParts;

/// An event of the bus as it arrives.
struct ArrivedEvent {
    int mNumber;
    int mFirst;
    int mSecond;
    QString mText;
    void *mData;
};

/// What a view does with the events of its panes, graphs and dialogs and of the host: one table. Answers whether the event
/// ends here; nothing for one that is not in the table.
std::optional<bool> handleMainViewEvent(CRealtimeMainWidget &view, MainViewParts &parts,
                                        const ArrivedEvent &event);

} // namespace TC
