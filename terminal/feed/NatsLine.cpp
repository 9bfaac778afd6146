#include "terminal/feed/NatsLine.h"

#include "terminal/feed/WireSubject.h"
#include "terminal/servers/RetryWait.h"
#include "terminal/threads/BehindWindow.h"

#include <nats/nats.h>

#include <chrono>
#include <utility>

namespace terminal {
namespace {

constexpr int kLookInterval = 100; ///< milliseconds between looks at the connection
constexpr int kFlushWait = 2000; ///< milliseconds
/// Milliseconds that the stream may take for one message, from try to try. A cluster gives each reading to one of its servers,
/// whether that is there or not: another try is another server.
constexpr int kStreamWaits[] = {250, 250, 500, 500, 1000, 2000};
constexpr int kMostWaiting = 1000000; ///< messages of one subject before the library drops some

struct MessageEnd {
    void operator()(natsMsg *message) const { natsMsg_Destroy(message); }
};
using Message = std::unique_ptr<natsMsg, MessageEnd>;

struct ContextEnd {
    void operator()(jsCtx *context) const { jsCtx_Destroy(context); }
};
using Context = std::unique_ptr<jsCtx, ContextEnd>;

struct SubscriptionEnd {
    void operator()(natsSubscription *subscription) const {
        natsSubscription_Unsubscribe(subscription);
        natsSubscription_Destroy(subscription);
    }
};
using KeptSubscription = std::unique_ptr<natsSubscription, SubscriptionEnd>;

QByteArray contentOf(natsMsg *message) {
    return {natsMsg_GetData(message), natsMsg_GetDataLength(message)};
}

/// Takes the messages up to a place in the stream, each of which comes within a wait.
bool takeUpTo(quint64 end, natsSubscription *subscription, int wait, const FeedLine::Take &take) {
    for (quint64 at = 0; at < end;) {
        natsMsg *next = nullptr;
        if (natsSubscription_NextMsg(&next, subscription, wait) != NATS_OK) {
            return false;
        }
        const Message message(next);
        jsMsgMetaData *place = nullptr;
        if (natsMsg_GetMetaData(&place, next) != NATS_OK) {
            return false;
        }
        at = place->Sequence.Stream;
        jsMsgMetaData_Destroy(place);
        take(contentOf(next));
    }
    return true;
}

/// All that the stream has of a subject; false when a part of it does not come within a wait.
bool readStream(natsConnection *connection, const QByteArray &subject, int wait, const FeedLine::Take &take) {
    jsOptions options;
    jsOptions_Init(&options);
    options.Wait = wait;
    jsCtx *made = nullptr;
    if (natsConnection_JetStream(&made, connection, &options) != NATS_OK) {
        return false;
    }
    const Context context(made);
    const QByteArray stream = minuteStream();
    natsMsg *lastMade = nullptr;
    jsErrCode code = jsErrCode(0);
    const natsStatus status =
        js_GetLastMsg(&lastMade, made, stream.constData(), subject.constData(), nullptr, &code);
    const Message last(lastMade);
    if (status == NATS_NOT_FOUND || code == JSStreamNotFoundErr || code == JSNoMessageFoundErr) {
        return true; // nothing is kept
    }
    if (status != NATS_OK) {
        return false;
    }
    jsSubOptions how;
    jsSubOptions_Init(&how);
    how.Stream = stream.constData();
    how.Ordered = true;
    natsSubscription *subscribed = nullptr;
    if (js_SubscribeSync(&subscribed, made, subject.constData(), nullptr, &how, &code) != NATS_OK) {
        return false;
    }
    const KeptSubscription subscription(subscribed);
    return takeUpTo(natsMsg_GetSequence(lastMade), subscribed, wait, take);
}

} // namespace

/// Who hears a subject; the library has a share in it of its own, until it has called for the last time.
struct NatsLine::Ear {
    Ear(Take toTake, std::shared_ptr<NatsSpentMessages> allSpent)
        : spent(std::move(allSpent)), take(std::move(toTake)) {}

    const std::shared_ptr<NatsSpentMessages> spent;
    std::mutex calling; ///< held during a call; guards what follows
    Take take; ///< empty when it is over

    static void onMessage(natsConnection *, natsSubscription *, natsMsg *message, void *ear) {
        const std::shared_ptr<Ear> &self = *static_cast<std::shared_ptr<Ear> *>(ear);
        {
            std::lock_guard<std::mutex> hold(self->calling);
            if (self->take) {
                self->take(contentOf(message));
            }
        }
        self->spent->add(message);
    }
    static void onLast(void *ear) { delete static_cast<std::shared_ptr<Ear> *>(ear); }
};

NatsLine::~NatsLine() {
    NatsLine::stop();
}

void NatsLine::start(StateListener listener) {
    mListener = std::move(listener);
    mThread = std::thread([this] { run(); });
}

void NatsLine::stop() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mIsStopping = true;
    }
    mStopSignal.notify_all();
    if (mThread.joinable()) {
        mThread.join();
    }
    std::map<int, Listening> listening;
    {
        std::lock_guard<std::mutex> hold(mLock);
        listening.swap(mListening);
    }
    for (auto &[id, one] : listening) {
        std::lock_guard<std::mutex> wait(one.ear->calling);
        one.ear->take = nullptr;
    }
    mSpent->giveBack();
}

bool NatsLine::waitToStop(int milliseconds) {
    std::unique_lock<std::mutex> hold(mLock);
    return mStopSignal.wait_for(hold, std::chrono::milliseconds(milliseconds), [this] { return mIsStopping; });
}

void NatsLine::run() {
    leaveProcessor();
    RetryWait wait;
    while (!waitToStop(0)) {
        LineFailure failure;
        if (const std::shared_ptr<NatsSession> session =
                NatsSession::open(mAddress, "timeshare-terminal", failure)) {
            const auto since = std::chrono::steady_clock::now();
            stay(session);
            if (std::chrono::steady_clock::now() - since > std::chrono::milliseconds(RetryWait::kLongest)) {
                wait.reset();
            }
            failure = {};
        }
        if (waitToStop(0)) {
            break;
        }
        mListener(failure);
        waitToStop(wait.next());
    }
    nats_ReleaseThreadMemory();
}

/// From the connection's beginning to its end.
void NatsLine::stay(const std::shared_ptr<NatsSession> &session) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mSession = session;
        for (auto &[id, listening] : mListening) {
            subscribe(listening);
        }
    }
    natsConnection_FlushTimeout(session->connection(), kFlushWait); // what is kept is read after that
    mListener({LineState::Connected, {}});
    while (session->isOpen() && !waitToStop(kLookInterval)) {
    }
    std::lock_guard<std::mutex> hold(mLock);
    mSession = nullptr;
    for (auto &[id, listening] : mListening) {
        unsubscribe(listening);
    }
}

void NatsLine::subscribe(Listening &listening) {
    auto *share = new std::shared_ptr<Ear>(listening.ear);
    if (natsConnection_Subscribe(&listening.subscription, mSession->connection(), listening.subject.constData(),
                                 Ear::onMessage, share) != NATS_OK) {
        listening.subscription = nullptr;
        delete share;
        return; // the connection has ended, which is seen soon
    }
    natsSubscription_SetOnCompleteCB(listening.subscription, Ear::onLast, share);
    natsSubscription_SetPendingLimits(listening.subscription, kMostWaiting, -1);
}

void NatsLine::unsubscribe(Listening &listening) {
    if (natsSubscription *subscription = std::exchange(listening.subscription, nullptr)) {
        natsSubscription_Unsubscribe(subscription);
        natsSubscription_Destroy(subscription);
    }
}

int NatsLine::listen(const QByteArray &subject, Take take) {
    std::lock_guard<std::mutex> hold(mLock);
    Listening &listening = mListening[++mLastId];
    listening.subject = subject;
    listening.ear = std::make_shared<Ear>(std::move(take), mSpent);
    if (mSession) {
        subscribe(listening);
    }
    return mLastId;
}

void NatsLine::forget(int id) {
    Listening gone;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const auto found = mListening.find(id);
        if (found == mListening.end()) {
            return;
        }
        gone = std::move(found->second);
        mListening.erase(found);
        unsubscribe(gone);
    }
    std::lock_guard<std::mutex> wait(gone.ear->calling);
    gone.ear->take = nullptr;
}

std::shared_ptr<NatsSession> NatsLine::session() {
    std::lock_guard<std::mutex> hold(mLock);
    return mSession;
}

bool NatsLine::readKept(const QByteArray &subject, const Take &take) {
    const std::shared_ptr<NatsSession> held = session();
    for (const int wait : kStreamWaits) {
        if (!held || session() != held) {
            return false;
        }
        if (readStream(held->connection(), subject, wait, take)) {
            return true;
        }
    }
    return false;
}

} // namespace terminal
