#include "terminal/formula/FormulaMessages.h"

#include "host/services/CHostClock.h"
#include "terminal/formula/ShortText.h"

#include <algorithm>

namespace terminal {
namespace {

/// Puts a message in front; true when its error was not in the list.
bool putFirst(QList<FormulaMessage> &messages, FormulaMessage message) {
    const auto known = std::find_if(messages.begin(), messages.end(), [&message](const FormulaMessage &other) {
        return other.error == message.error;
    });
    const bool isNew = known == messages.end();
    if (!isNew) {
        message.count += known->count;
        messages.erase(known);
    }
    messages.prepend(message);
    if (messages.size() > FormulaMessages::kMost) {
        messages.removeLast();
    }
    return isNew;
}

} // namespace

FormulaErrorSink FormulaMessages::sink() {
    return [this](const FormulaError &error) { post(error); };
}

void FormulaMessages::post(const FormulaError &error) {
    const FormulaMessage message{QDateTime(), {shortened(error.formula), error.line, shortened(error.text)}, 1};
    bool wasEmpty = false;
    {
        std::lock_guard<std::mutex> hold(mLock);
        wasEmpty = mWaiting.isEmpty();
        putFirst(mWaiting, message);
    }
    if (wasEmpty) {
        QMetaObject::invokeMethod(this, "drain", Qt::QueuedConnection);
    }
}

void FormulaMessages::drain() {
    QList<FormulaMessage> waiting;
    {
        std::lock_guard<std::mutex> hold(mLock);
        waiting.swap(mWaiting);
    }
    // Told before the market has a clock, a fault of a file waits here until the event loop turns.
    const QDateTime now = waiting.isEmpty() ? QDateTime() : TC::hostNow();
    bool isNew = false;
    for (auto message = waiting.rbegin(); message != waiting.rend(); ++message) {
        message->time = now;
        isNew = putFirst(mMessages, *message) || isNew;
    }
    if (!waiting.isEmpty()) {
        Q_EMIT changed(isNew);
    }
}

void FormulaMessages::clear() {
    mMessages.clear();
    Q_EMIT changed(false);
}

} // namespace terminal
