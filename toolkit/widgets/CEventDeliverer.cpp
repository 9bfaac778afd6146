#include "host/toolkit/CEventDeliverer.h"

#include "toolkit/widgets/CEventQueue.h"

#include <QWidget>

#include <vector>

namespace GZ {
namespace {

/// The broadcast under way: from its receiver the event goes no further up. User-interface thread.
struct Broadcast {
    const CEventDeliverer *mReceiver = nullptr;
    int mEvent = 0;
};
Broadcast gBroadcast;

/// An event that a participant is handling just now, and those further out. User-interface thread.
struct Handling {
    Handling(const CEventDeliverer &receiver, int event) : mReceiver(&receiver), mEvent(event) {
        std::swap(mOuter, sInnermost);
        sInnermost = this;
    }
    ~Handling() { sInnermost = mOuter; }
    Handling(const Handling &) = delete;
    Handling &operator=(const Handling &) = delete;

    static void passedOn(const CEventDeliverer *sender, int event) {
        for (Handling *at = sInnermost; at; at = at->mOuter) {
            if (at->mReceiver == sender && at->mEvent == event) {
                at->mPassedOn = true;
                return;
            }
        }
    }

    const CEventDeliverer *mReceiver;
    int mEvent;
    bool mPassedOn = false; ///< the receiver did itself
    Handling *mOuter = nullptr;
    static Handling *sInnermost;
};
Handling *Handling::sInnermost = nullptr;

void collectParticipants(QObject *object, std::vector<CEventDeliverer *> &participants) {
    if (auto *participant = dynamic_cast<CEventDeliverer *>(object)) {
        participants.push_back(participant);
    }
    for (QObject *child : object->children()) {
        collectParticipants(child, participants);
    }
}

} // namespace

CEventDeliverer::CEventDeliverer(CEventDeliverer *next) : mToken(std::make_shared<Token>()) {
    mToken->mParticipant = this;
    if (next) {
        mNext = next->mToken;
    }
}

CEventDeliverer::~CEventDeliverer() {
    retire();
}

void CEventDeliverer::retire() {
    std::lock_guard<std::recursive_mutex> hold(mToken->mHandling);
    mToken->mParticipant = nullptr;
}

CEventDeliverer *CEventDeliverer::nextParticipant() const {
    const std::shared_ptr<Token> next = mNext.lock();
    if (!next) {
        return nullptr;
    }
    std::lock_guard<std::recursive_mutex> hold(next->mHandling);
    return next->mParticipant;
}

bool CEventDeliverer::deliverEvent(int event, int first, int second, const QString &text, void *data) {
    if (!CEventQueue::isUserInterfaceThread()) {
        CEventQueue::instance().post(mToken, event, first, second, text, data);
        return false;
    }
    Handling::passedOn(this, event);
    CEventDeliverer *next = nextParticipant();
    return next && handOver(*next, event, first, second, text, data);
}

bool CEventDeliverer::handOver(CEventDeliverer &receiver, int event, int first, int second, const QString &text,
                               void *data) {
    const std::shared_ptr<Token> token = receiver.mToken;
    {
        const Handling handling(receiver, event);
        if (receiver.handleEvent(event, first, second, text, data)) {
            return true;
        }
        if (handling.mPassedOn) {
            return false;
        }
    }
    std::lock_guard<std::recursive_mutex> hold(token->mHandling);
    return token->mParticipant && token->mParticipant->deliverEvent(event, first, second, text, data);
}

bool CEventDeliverer::handleEvent(int event, int first, int second, QString text, void *data) {
    if (gBroadcast.mReceiver == this && gBroadcast.mEvent == event) {
        return false;
    }
    return deliverEvent(event, first, second, text, data);
}

void CEventDeliverer::broadcast(QWidget *root, int event, int first, int second, const QString &text,
                                void *data) {
    if (!root) {
        return;
    }
    std::vector<CEventDeliverer *> participants;
    collectParticipants(root, participants);
    std::vector<std::weak_ptr<Token>> tokens;
    for (const CEventDeliverer *participant : participants) {
        tokens.push_back(participant->mToken);
    }
    const Broadcast outer = gBroadcast;
    for (const std::weak_ptr<Token> &weak : tokens) {
        const std::shared_ptr<Token> token = weak.lock();
        if (token && token->mParticipant) { // a handler may have destroyed it
            gBroadcast = {token->mParticipant, event};
            token->mParticipant->handleEvent(event, first, second, text, data);
        }
    }
    gBroadcast = outer;
}

} // namespace GZ
