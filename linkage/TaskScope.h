#pragma once

#include "host/records/CInstrumentDetail.h"
#include "host/records/CTaskDetail.h"

#include <vector>

namespace TC {

class CRealtimeUiParam;

/// The tasks of an instrument as they are now that a view follows: of the accounts and strategies chosen for it, else of
/// the accounts of the view, else of all. They have a command and an item with an account; the newest is the last. Any
/// thread, while nobody changes the view parameters.
std::vector<kvservice::IDataPtr> followedTasks(const CRealtimeUiParam &view,
                                               const CInstrumentDetailPtr &instrument);

} // namespace TC
