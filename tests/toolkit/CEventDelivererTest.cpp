#include "host/toolkit/CEventDeliverer.h"
#include "host/toolkit/CBaseWidget.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace {

using GZ::CEventDeliverer;

struct Heard {
    int mEvent;
    int mFirst;
    int mSecond;
    QString mText;
    void *mData;
};

/// Keeps what it hears, and takes or passes it on as told.
template <class Base> class Listener : public Base {
public:
    using Base::Base;
    using Base::retire;
    bool handleEvent(int event, int first, int second, QString text, void *data) override {
        mHeard.push_back({event, first, second, text, data});
        if (mThen) {
            mThen();
        }
        return mTakes || Base::handleEvent(event, first, second, text, data);
    }
    std::vector<Heard> mHeard;
    std::function<void()> mThen;
    bool mTakes = false;
};

using Participant = Listener<CEventDeliverer>;
using Widget = Listener<GZ::CBaseWidget>;

TEST(CEventDeliverer, DeliversToTheNextParticipantWithAllArguments) {
    Participant next;
    next.mTakes = true;
    CEventDeliverer sender(&next);
    int payload = 0;
    EXPECT_TRUE(sender.deliverEvent(3029, 1, -2, QStringLiteral("文"), &payload));
    ASSERT_EQ(next.mHeard.size(), 1u);
    EXPECT_EQ(next.mHeard[0].mEvent, 3029);
    EXPECT_EQ(next.mHeard[0].mFirst, 1);
    EXPECT_EQ(next.mHeard[0].mSecond, -2);
    EXPECT_EQ(next.mHeard[0].mText, QStringLiteral("文"));
    EXPECT_EQ(next.mHeard[0].mData, &payload);
}

TEST(CEventDeliverer, TheSenderItselfDoesNotHear) {
    Participant next;
    Participant sender(&next);
    sender.deliverEvent(1, 0, 0, QString(), nullptr);
    EXPECT_TRUE(sender.mHeard.empty());
}

TEST(CEventDeliverer, WhatNobodyTakesTravelsToTheTopAndIsFalse) {
    Participant top;
    Participant middle(&top);
    CEventDeliverer sender(&middle);
    EXPECT_FALSE(sender.deliverEvent(7, 0, 0, QString(), nullptr));
    EXPECT_EQ(middle.mHeard.size(), 1u);
    EXPECT_EQ(top.mHeard.size(), 1u);
}

TEST(CEventDeliverer, WhatIsTakenGoesNoFurther) {
    Participant top;
    Participant middle(&top);
    middle.mTakes = true;
    CEventDeliverer sender(&middle);
    EXPECT_TRUE(sender.deliverEvent(7, 0, 0, QString(), nullptr));
    EXPECT_TRUE(top.mHeard.empty());
}

/// Answers that it does not consume an event, after doing something with it.
class Indifferent : public CEventDeliverer {
public:
    using CEventDeliverer::CEventDeliverer;
    bool handleEvent(int event, int first, int second, QString text, void *data) override {
        ++mHeard;
        if (mThen) {
            mThen();
        }
        if (mPassesOn) {
            deliverEvent(event, first, second, text, data);
        }
        return false;
    }
    int mHeard = 0;
    bool mPassesOn = false;
    std::function<void()> mThen;
};

TEST(CEventDeliverer, WhatIsNotTakenTravelsOnByItself) {
    Participant top;
    top.mTakes = true;
    Indifferent middle(&top);
    CEventDeliverer sender(&middle);
    int payload = 0;
    EXPECT_TRUE(sender.deliverEvent(13, 4, 5, QStringLiteral("文"), &payload)) << "the top has taken it";
    EXPECT_EQ(middle.mHeard, 1);
    ASSERT_EQ(top.mHeard.size(), 1u);
    EXPECT_EQ(top.mHeard[0].mFirst, 4);
    EXPECT_EQ(top.mHeard[0].mSecond, 5);
    EXPECT_EQ(top.mHeard[0].mText, QStringLiteral("文"));
    EXPECT_EQ(top.mHeard[0].mData, &payload);
}

TEST(CEventDeliverer, WhoPassesOnByHandAndDoesNotTakeItSendsItOnce) {
    Participant top;
    Indifferent middle(&top);
    middle.mPassesOn = true;
    CEventDeliverer sender(&middle);
    EXPECT_FALSE(sender.deliverEvent(13, 0, 0, QString(), nullptr));
    EXPECT_EQ(top.mHeard.size(), 1u);
}

TEST(CEventDeliverer, AnotherEventOnTheWayDoesNotCountAsPassedOn) {
    Participant top;
    Indifferent middle(&top);
    middle.mThen = [&] { middle.deliverEvent(99, 0, 0, QString(), nullptr); };
    CEventDeliverer sender(&middle);
    sender.deliverEvent(13, 0, 0, QString(), nullptr);
    ASSERT_EQ(top.mHeard.size(), 2u);
    EXPECT_EQ(top.mHeard[0].mEvent, 99);
    EXPECT_EQ(top.mHeard[1].mEvent, 13);
}

TEST(CEventDeliverer, AReceiverThatGoesWhileItHandlesAnEventTakesItAlong) {
    /// Destroys itself.
    class Mortal : public CEventDeliverer {
    public:
        using CEventDeliverer::CEventDeliverer;
        bool handleEvent(int, int, int, QString, void *) override {
            delete this;
            return false;
        }
    };
    Participant top;
    auto *middle = new Mortal(&top);
    CEventDeliverer sender(middle);
    EXPECT_FALSE(sender.deliverEvent(13, 0, 0, QString(), nullptr));
    EXPECT_TRUE(top.mHeard.empty());
}

TEST(CEventDeliverer, WithoutANextParticipantNothingHappens) {
    CEventDeliverer sender;
    EXPECT_FALSE(sender.deliverEvent(7, 0, 0, QString(), nullptr));
}

TEST(CEventDeliverer, TheNextParticipantMayGoFirst) {
    auto next = std::make_unique<Participant>();
    CEventDeliverer sender(next.get());
    next.reset();
    EXPECT_FALSE(sender.deliverEvent(7, 0, 0, QString(), nullptr));
}

TEST(CEventDeliverer, WhoHasRetiredHearsNothing) {
    Participant next;
    CEventDeliverer sender(&next);
    next.retire();
    EXPECT_FALSE(sender.deliverEvent(7, 0, 0, QString(), nullptr));
    EXPECT_TRUE(next.mHeard.empty());
}

TEST(CEventDeliverer, AHandlerMayDestroyTheSender) {
    Participant next;
    auto sender = std::make_unique<CEventDeliverer>(&next);
    next.mThen = [&] { sender.reset(); };
    sender->deliverEvent(7, 0, 0, QString(), nullptr);
    EXPECT_EQ(sender, nullptr);
    EXPECT_EQ(next.mHeard.size(), 1u);
}

TEST(CEventWidgetT, TheNextParticipantIsTheNearestAncestorThatTakesPart) {
    Widget top;
    QWidget between(&top);
    Widget sender(&between);
    sender.deliverEvent(7, 0, 0, QString(), nullptr);
    EXPECT_EQ(top.mHeard.size(), 1u);
}

TEST(CEventWidgetT, FollowsANewParent) {
    Widget first;
    Widget second;
    Widget sender(&first);
    sender.setParent(&second);
    sender.deliverEvent(7, 0, 0, QString(), nullptr);
    EXPECT_TRUE(first.mHeard.empty());
    EXPECT_EQ(second.mHeard.size(), 1u);
    sender.setParent(nullptr);
    EXPECT_FALSE(sender.deliverEvent(7, 0, 0, QString(), nullptr));
    EXPECT_EQ(second.mHeard.size(), 1u);
}

TEST(Broadcast, ReachesEveryParticipantFromTheTopDown) {
    std::vector<int> order;
    Widget root;
    QWidget plain(&root);
    Widget inner(&plain);
    Widget leaf(&inner);
    Widget sibling(&root);
    root.mThen = [&] { order.push_back(0); };
    inner.mThen = [&] { order.push_back(1); };
    leaf.mThen = [&] { order.push_back(2); };
    sibling.mThen = [&] { order.push_back(3); };
    CEventDeliverer::broadcast(&root, 207, 1, 2, QStringLiteral("t"), nullptr);
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3}));
}

TEST(Broadcast, TakingItStopsNobodyElse) {
    Widget root;
    Widget child(&root);
    root.mTakes = true;
    CEventDeliverer::broadcast(&root, 207, 0, 0, QString(), nullptr);
    EXPECT_EQ(child.mHeard.size(), 1u);
}

TEST(Broadcast, ReceiversDoNotPassItUp) {
    Widget host;
    Widget root(&host);
    Widget child(&root);
    CEventDeliverer::broadcast(&root, 207, 0, 0, QString(), nullptr);
    EXPECT_TRUE(host.mHeard.empty());
    EXPECT_EQ(root.mHeard.size(), 1u);
    EXPECT_EQ(child.mHeard.size(), 1u);
}

TEST(Broadcast, OtherEventsThatItCausesTravelAsEver) {
    Widget host;
    Widget root(&host);
    root.mThen = [&] { root.deliverEvent(3029, 0, 0, QString(), nullptr); };
    CEventDeliverer::broadcast(&root, 207, 0, 0, QString(), nullptr);
    ASSERT_EQ(host.mHeard.size(), 1u);
    EXPECT_EQ(host.mHeard[0].mEvent, 3029);
}

TEST(Broadcast, AReceiverMayDestroyTheOthers) {
    Widget root;
    auto *child = new Widget(&root);
    auto *grandchild = new Widget(child);
    int heard = 0;
    grandchild->mThen = [&] { ++heard; };
    child->mThen = [&] { delete grandchild; };
    CEventDeliverer::broadcast(&root, 207, 0, 0, QString(), nullptr);
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(child->mHeard.size(), 1u);
}

TEST(Broadcast, BelowNothingIsHarmless) {
    CEventDeliverer::broadcast(nullptr, 207, 0, 0, QString(), nullptr);
    QWidget plain;
    CEventDeliverer::broadcast(&plain, 207, 0, 0, QString(), nullptr);
}

} // namespace
