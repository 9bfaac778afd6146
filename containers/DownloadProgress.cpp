#include "containers/DownloadProgress.h"

#include <memory>
#include <utility>

namespace TC {

namespace {

/// What the service holds: a participant of the bus of its own, which may go on any thread.
class Sender : public GZ::CEventDeliverer {
public:
    using GZ::CEventDeliverer::CEventDeliverer;
    ~Sender() override { retire(); }
};

} // namespace

DownloadProgress::DownloadProgress(std::function<void(int, int)> onProgress)
    : mOnProgress(std::move(onProgress)) {}

SuppleProgressCallback DownloadProgress::callback() {
    return [sender = std::make_shared<Sender>(this)](int done, int total, const QString &, const QString &) {
        sender->deliverEvent(0, done, total, QString(), nullptr);
    };
}

bool DownloadProgress::handleEvent(int /*event*/, int first, int second, QString /*text*/, void * /*payload*/) {
    mOnProgress(first, second);
    return true;
}

} // namespace TC
