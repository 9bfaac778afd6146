#include "terminal/feeder/NatsSink.h"

#include "terminal/feed/WireSubject.h"

#include <nats/nats.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace terminal {
namespace {

constexpr int kServerWait = 3000; ///< milliseconds
constexpr qint64 kNanosecond = 1000000000;
constexpr qint64 kKeptDays = 5; ///< a Friday's night session belongs to Monday
constexpr qint64 kKeptPerInstrument = 20000; ///< messages: a day with many revisions and starts of the feed

} // namespace

/// What the stream has answered. The library may call after the sink has gone.
struct NatsSink::Receipts {
    std::mutex lock; ///< guards what follows
    std::condition_variable change;
    quint64 taken = 0;
    bool isRefused = false;

    /// One that lasts as long as the program.
    static Receipts *make() {
        static std::mutex all;
        static std::vector<std::unique_ptr<Receipts>> made;
        std::lock_guard<std::mutex> hold(all);
        made.push_back(std::make_unique<Receipts>());
        return made.back().get();
    }
    static void onAnswer(jsCtx *, natsMsg *message, jsPubAck *taken, jsPubAckErr *, void *receipts) {
        auto *self = static_cast<Receipts *>(receipts);
        {
            std::lock_guard<std::mutex> hold(self->lock);
            self->taken += taken ? 1 : 0;
            self->isRefused = self->isRefused || !taken;
        }
        self->change.notify_all();
        natsMsg_Destroy(message);
    }
};

std::unique_ptr<NatsSink> NatsSink::open(const FeedAddress &address, LineFailure &failure, int copies) {
    std::unique_ptr<NatsSession> session = NatsSession::open(address, "timeshare-feed", failure);
    if (!session) {
        return nullptr;
    }
    std::unique_ptr<NatsSink> sink(new NatsSink(std::move(session)));
    const QString wrong = sink->openStream(copies);
    if (!wrong.isEmpty()) {
        failure = {LineState::Connecting, wrong};
        return nullptr;
    }
    return sink;
}

QString NatsSink::openStream(int copies) {
    mReceipts = Receipts::make();
    jsOptions options;
    jsOptions_Init(&options);
    options.Wait = kServerWait;
    options.PublishAsync.AckHandler = Receipts::onAnswer;
    options.PublishAsync.AckHandlerClosure = mReceipts;
    options.PublishAsync.StallWait = kServerWait;
    natsStatus status = natsConnection_JetStream(&mStreams, mSession->connection(), &options);
    const QByteArray name = minuteStream();
    const QByteArray subjects = minuteSubjects();
    const char *subject = subjects.constData();
    jsStreamConfig config;
    jsStreamConfig_Init(&config);
    config.Name = name.constData();
    config.Subjects = &subject;
    config.SubjectsLen = 1;
    config.Replicas = copies;
    config.MaxAge = kKeptDays * 86400 * kNanosecond;
    config.MaxMsgsPerSubject = kKeptPerInstrument;
    jsErrCode code = jsErrCode(0);
    if (status == NATS_OK) {
        status = js_AddStream(nullptr, mStreams, &config, nullptr, &code);
        if (status != NATS_OK && code == JSStreamNameExistErr) {
            status = NATS_OK; // made with more copies, say: as the operator wants it
        }
    }
    return status == NATS_OK
               ? QString()
               : QStringLiteral("the stream %1 cannot be made: %2 (%3)")
                     .arg(QString::fromLatin1(name), QString::fromUtf8(natsStatus_GetText(status)))
                     .arg(int(code));
}

NatsSink::~NatsSink() {
    natsConnection_Close(mSession->connection());
    jsCtx_Destroy(mStreams);
}

bool NatsSink::send(const QByteArray &subject, const QByteArray &bytes) {
    return natsConnection_Publish(mSession->connection(), subject.constData(), bytes.constData(),
                                  bytes.size()) == NATS_OK;
}

bool NatsSink::keep(const QByteArray &subject, const QByteArray &bytes) {
    ++mKept;
    return js_PublishAsync(mStreams, subject.constData(), bytes.constData(), bytes.size(), nullptr) == NATS_OK;
}

bool NatsSink::confirm() {
    if (natsConnection_FlushTimeout(mSession->connection(), kServerWait) != NATS_OK) {
        return false;
    }
    std::unique_lock<std::mutex> hold(mReceipts->lock);
    mReceipts->change.wait_for(hold, std::chrono::milliseconds(kServerWait),
                               [this] { return mReceipts->isRefused || mReceipts->taken >= mKept; });
    return !mReceipts->isRefused && mReceipts->taken >= mKept;
}

} // namespace terminal
