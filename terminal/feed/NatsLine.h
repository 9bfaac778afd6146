#pragma once

#include "terminal/feed/FeedLine.h"
#include "terminal/feed/NatsSession.h"
#include "terminal/feed/NatsSpentMessages.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

struct __natsSubscription;

namespace terminal {

/// The line to a NATS server.
class NatsLine : public FeedLine {
public:
    explicit NatsLine(FeedAddress address) : mAddress(std::move(address)) {}
    ~NatsLine() override;

    void start(StateListener listener) override;
    void stop() override;
    int listen(const QByteArray &subject, Take take) override;
    void forget(int id) override;
    bool readKept(const QByteArray &subject, const Take &take) override;

private:
    struct Ear;
    struct Listening {
        QByteArray subject;
        std::shared_ptr<Ear> ear;
        __natsSubscription *subscription = nullptr;
    };

    void run();
    void stay(const std::shared_ptr<NatsSession> &session);
    bool waitToStop(int milliseconds);
    void subscribe(Listening &listening);
    static void unsubscribe(Listening &listening);
    std::shared_ptr<NatsSession> session();

    const FeedAddress mAddress;
    const std::shared_ptr<NatsSpentMessages> mSpent = std::make_shared<NatsSpentMessages>(); ///< of all ears
    StateListener mListener;
    std::thread mThread;
    std::mutex mLock; ///< guards what follows
    std::condition_variable mStopSignal;
    bool mIsStopping = false;
    std::shared_ptr<NatsSession> mSession; ///< null while there is no server
    std::map<int, Listening> mListening; ///< by id
    int mLastId = 0;
};

} // namespace terminal
