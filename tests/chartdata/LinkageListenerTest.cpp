#include "chartdata/LinkageListener.h"

#include "tests/fakehost/FakeHost.h"

#include <gtest/gtest.h>

#include <thread>

using namespace TC;

namespace {

using Keys = std::vector<std::string>;

class Listener : public ::testing::Test {
protected:
    void change(const Keys &keys) { mHost.mLinkage.sigLinkageChanged(keys); }
    void changeElsewhere(const Keys &keys) {
        std::thread([&] { change(keys); }).join();
    }
    fakehost::FakeHost mHost;
    std::vector<Keys> mHeard;
};

TEST_F(Listener, HearsAtOnceOnTheThreadOfTheUserInterface) {
    LinkageListener listener(CSingletonT<CLinkageManager>::instance(),
                             [this](const Keys &keys) { mHeard.push_back(keys); });
    change({"SH600000"});
    EXPECT_EQ(mHeard, std::vector<Keys>{{"SH600000"}});
    EXPECT_TRUE(listener.takeUntold().empty());
}

TEST_F(Listener, KeepsWhatChangesElsewhereOnceAnInstrument) {
    LinkageListener listener(CSingletonT<CLinkageManager>::instance(),
                             [this](const Keys &keys) { mHeard.push_back(keys); });
    changeElsewhere({"SH600000", "SZ000001"});
    changeElsewhere({"SZ000001", "SZ000002"});
    EXPECT_TRUE(mHeard.empty());
    EXPECT_EQ(listener.takeUntold(), (Keys{"SH600000", "SZ000001", "SZ000002"}));
    EXPECT_TRUE(listener.takeUntold().empty());
}

TEST_F(Listener, HearsNothingOnceItIsCut) {
    LinkageListener listener(CSingletonT<CLinkageManager>::instance(),
                             [this](const Keys &keys) { mHeard.push_back(keys); });
    listener.cut();
    change({"SH600000"});
    EXPECT_TRUE(mHeard.empty());
    EXPECT_TRUE(mHost.mLinkage.sigLinkageChanged.empty());
}

TEST_F(Listener, MayGoWhileItHears) {
    auto listener =
        std::make_unique<LinkageListener>(CSingletonT<CLinkageManager>::instance(), [](const Keys &) {});
    LinkageListener other(CSingletonT<CLinkageManager>::instance(), [&](const Keys &keys) {
        listener.reset();
        mHeard.push_back(keys);
    });
    change({"SH600000"});
    change({"SZ000001"});
    EXPECT_EQ(mHeard.size(), 2u);
    std::unique_ptr<LinkageListener> itself;
    itself = std::make_unique<LinkageListener>(CSingletonT<CLinkageManager>::instance(),
                                               [&](const Keys &) { itself.reset(); });
    change({"SZ000002"});
    EXPECT_EQ(itself, nullptr);
}

} // namespace
