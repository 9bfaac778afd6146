#include "terminal/app/ShownTime.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/StatusLine.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/market/MarketDate.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kClockStep = 1000; ///< milliseconds

} // namespace

ShownTime::ShownTime(TerminalServices &services, const ChartView &view, StatusLine &line, QObject *parent)
    : QObject(parent), mServices(services), mView(view), mLine(line),
      mListening(services.clock().changes().add(
          [this] { QMetaObject::invokeMethod(this, &ShownTime::show, Qt::QueuedConnection); })) {
    mNext.setSingleShot(true);
    connect(&mNext, &QTimer::timeout, this, &ShownTime::show);
}

ShownTime::~ShownTime() {
    mServices.clock().changes().remove(mListening);
}

void ShownTime::show() {
    const SimulatedClock &clock = mServices.clock();
    const qint64 now = clock.now();
    const bool isTrading = mServices.isTrading(mView.instrument());
    mLine.setMarketTime(marketDateTime(now), isTrading);
    const qint64 step = std::max<qint64>(isTrading ? kClockStep : kMinuteLength,
                                         static_cast<qint64>(kClockStep * clock.pace()));
    if (const std::optional<qint64> left = clock.realTimeUntil(now - now % step + step)) {
        mNext.start(static_cast<int>(*left));
    } else {
        mNext.stop();
    }
}

} // namespace terminal
