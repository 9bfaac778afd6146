#pragma once

#include "host/services/CFormulaManager.h"
#include "host/toolkit/CEventDeliverer.h"

#include <functional>

namespace TC {

class CRealtimeUiParam;

/// Fetches missing minutes of a view's day, and brings the progress to the user-interface thread, whatever thread the
/// service tells it on.
class HistoryDownload : public GZ::CEventDeliverer {
public:
    /// `onProgress` hears of done and total, on the user-interface thread, as long as this object lives.
    explicit HistoryDownload(std::function<void(int, int)> onProgress);

    /// Asks for the day that the view shows. Every call is a download of its own.
    void start(const CRealtimeUiParam &view);

    bool handleEvent(int event, int first, int second, QString text, void *payload) override;

private:
    /// For the service. May be called on any thread, and may outlive this object.
    SuppleProgressCallback callback();

    std::function<void(int, int)> mOnProgress;
};

} // namespace TC
