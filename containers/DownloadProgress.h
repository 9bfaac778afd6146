#pragma once

#include "host/services/CFormulaManager.h"
#include "host/toolkit/CEventDeliverer.h"

#include <functional>

namespace TC {

/// Brings the progress of a download to the user-interface thread, whatever thread the service tells it on.
class DownloadProgress : public GZ::CEventDeliverer {
public:
    /// `onProgress` hears of done and total, on the user-interface thread, as long as this object lives.
    explicit DownloadProgress(std::function<void(int, int)> onProgress);

    /// For the service. May be called on any thread, and may outlive this object.
    SuppleProgressCallback callback();

    bool handleEvent(int event, int first, int second, QString text, void *payload) override;

private:
    std::function<void(int, int)> mOnProgress;
};

} // namespace TC
