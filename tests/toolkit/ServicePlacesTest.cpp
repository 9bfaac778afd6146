#include "host/services/ServicePlaces.h"

#include "host/Version.h"
#include "host/services/CSingletonT.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using TC::CSingletonT;
using TC::ServicePlaces;

namespace placestest {

struct Service {
    int value = 0;
};
struct OtherService {};

} // namespace placestest

using placestest::OtherService;
using placestest::Service;

TEST(ServicePlaces, EachClassHasOnePlace) {
    EXPECT_EQ(&ServicePlaces::of(typeid(Service)), &ServicePlaces::of(typeid(Service)));
    EXPECT_NE(&ServicePlaces::of(typeid(Service)), &ServicePlaces::of(typeid(OtherService)));
}

TEST(ServicePlaces, InstallingAnswersWhatStoodThere) {
    Service first;
    Service second;
    EXPECT_FALSE(CSingletonT<Service>::isInstalled());
    EXPECT_EQ(CSingletonT<Service>::install(&first), nullptr);
    EXPECT_TRUE(CSingletonT<Service>::isInstalled());
    EXPECT_FALSE(CSingletonT<OtherService>::isInstalled());
    EXPECT_EQ(CSingletonT<Service>::install(&second), &first);
    EXPECT_EQ(&CSingletonT<Service>::instance(), &second);
    EXPECT_EQ(ServicePlaces::of(typeid(Service)).load(), &second) << "the place that others find";
    EXPECT_EQ(CSingletonT<Service>::install(nullptr), &second);
    EXPECT_FALSE(CSingletonT<Service>::isInstalled());
}

TEST(ServicePlaces, ThreadsFindTheSamePlace) {
    std::vector<std::atomic<void *> *> found(4);
    std::vector<std::thread> threads;
    for (auto &place : found) {
        threads.emplace_back([&place] { place = &ServicePlaces::of(typeid(OtherService)); });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const auto *place : found) {
        EXPECT_EQ(place, &ServicePlaces::of(typeid(OtherService)));
    }
}

TEST(ServicePlaces, NamesAreReadable) {
    EXPECT_EQ(ServicePlaces::nameOf(typeid(Service)), "placestest::Service");
}

TEST(ServicePlacesDeathTest, AMissingServiceIsNamed) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(CSingletonT<OtherService>::instance(),
                 "host service placestest::OtherService is not installed");
}

TEST(Version, TheLibraryTellsTheReleaseOfItsHeaders) {
    EXPECT_EQ(TC::libraryVersion(), std::to_string(TIMESHARE_VERSION_MAJOR) + "." +
                                        std::to_string(TIMESHARE_VERSION_MINOR) + "." +
                                        std::to_string(TIMESHARE_VERSION_PATCH));
}
