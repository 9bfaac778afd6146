#include "host/services/ServiceContext.h"

#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

using TC::CSingletonT;
using TC::ServiceContext;

namespace contexttest {

struct Clock {
    virtual ~Clock() = default;
    int hour = 0;
};
struct OwnClock : Clock {};
struct Stocks {};

} // namespace contexttest

using contexttest::Clock;
using contexttest::OwnClock;
using contexttest::Stocks;

TEST(ServiceContext, HoldsServicesByTheClassThatIsNamed) {
    ServiceContext context;
    EXPECT_FALSE(context.has<Clock>());
    OwnClock own;
    context.install<Clock>(&own);
    EXPECT_TRUE(context.has<Clock>());
    EXPECT_EQ(&context.get<Clock>(), &own);
    EXPECT_FALSE(context.has<Stocks>());
    EXPECT_FALSE(CSingletonT<Clock>::isInstalled()) << "the program's own are left alone";
}

TEST(ServiceContext, WhatItHasNotIsTheProgramsOwn) {
    Clock program;
    Clock own;
    CSingletonT<Clock>::install(&program);
    ServiceContext context;
    EXPECT_EQ(&context.get<Clock>(), &program);
    EXPECT_EQ(&ServiceContext::processWide().get<Clock>(), &program);
    context.install<Clock>(&own);
    EXPECT_EQ(&context.get<Clock>(), &own);
    EXPECT_EQ(&CSingletonT<Clock>::instance(), &program);
    context.install<Clock>(nullptr);
    EXPECT_EQ(&context.get<Clock>(), &program);
    CSingletonT<Clock>::install(nullptr);
}

TEST(ServiceContext, TheLastServiceOfAClassStands) {
    Clock first;
    Clock second;
    ServiceContext context;
    context.install<Clock>(&first);
    context.install<Clock>(&second);
    EXPECT_EQ(&context.get<Clock>(), &second);
    context.install<Clock>(nullptr);
    EXPECT_FALSE(context.has<Clock>());
}

TEST(ServiceContext, TwoHoldDifferentOnes) {
    Clock east;
    Clock west;
    ServiceContext first;
    ServiceContext second;
    first.install<Clock>(&east);
    second.install<Clock>(&west);
    EXPECT_EQ(&first.get<Clock>(), &east);
    EXPECT_EQ(&second.get<Clock>(), &west);
}

TEST(ServiceContext, AWidgetHasThatOfTheNearestAncestorThatWasGivenOne) {
    const ServiceContext outer;
    const ServiceContext inner;
    QWidget window;
    auto *page = new QWidget(&window);
    auto *view = new QWidget(page);
    auto *dialog = new QWidget(view, Qt::Dialog);
    EXPECT_EQ(&ServiceContext::of(dialog), &ServiceContext::processWide());
    EXPECT_EQ(&ServiceContext::of(nullptr), &ServiceContext::processWide());
    outer.giveTo(&window);
    EXPECT_EQ(&ServiceContext::of(dialog), &outer) << "a window of its own, too";
    inner.giveTo(view);
    EXPECT_EQ(&ServiceContext::of(dialog), &inner);
    EXPECT_EQ(&ServiceContext::of(view), &inner);
    EXPECT_EQ(&ServiceContext::of(page), &outer);
    ServiceContext::processWide().giveTo(view);
    EXPECT_EQ(&ServiceContext::of(dialog), &ServiceContext::processWide());
}

TEST(ServiceContext, AChildThatGoesWithItsWidgetStillHasItsContext) {
    struct Child : QWidget {
        explicit Child(QWidget *parent, const ServiceContext *&seen) : QWidget(parent), mSeen(seen) {}
        ~Child() override { mSeen = &ServiceContext::of(this); }
        const ServiceContext *&mSeen;
    };
    const ServiceContext context;
    const ServiceContext *seen = nullptr;
    auto view = std::make_unique<QWidget>();
    context.giveTo(view.get());
    new Child(view.get(), seen);
    view.reset();
    EXPECT_EQ(seen, &context);
}

TEST(ServiceContextDeathTest, AServiceThatNeitherHasIsNamed) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const ServiceContext context;
    EXPECT_DEATH(context.get<Stocks>(), "host service contexttest::Stocks is not installed");
}
