#include "terminal/feed/FeedLine.h"

#ifdef TIMESHARE_WITH_NATS
#include "terminal/feed/NatsLine.h"
#endif

namespace terminal {

std::unique_ptr<FeedLine> makeNatsLine(const FeedAddress &address) {
#ifdef TIMESHARE_WITH_NATS
    return std::make_unique<NatsLine>(address);
#else
    Q_UNUSED(address)
    return nullptr;
#endif
}

} // namespace terminal
