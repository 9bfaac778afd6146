#include "host/services/ServicePlaces.h"

#include <cstdio>
#include <cstdlib>
#include <cxxabi.h>
#include <map>
#include <memory>
#include <mutex>

namespace TC {

std::atomic<void *> &ServicePlaces::of(const std::type_info &type) {
    // By name: with hidden visibility each binary has a type_info of its own. Never destroyed: services may be asked for
    // until the very end.
    static auto &lock = *new std::mutex;
    static auto &places = *new std::map<std::string, std::atomic<void *>>;
    const std::lock_guard<std::mutex> hold(lock);
    return places.try_emplace(type.name(), nullptr).first->second;
}

std::string ServicePlaces::nameOf(const std::type_info &type) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return name ? name.get() : type.name();
}

void ServicePlaces::endWithout(const std::type_info &type) {
    std::fprintf(stderr, "host service %s is not installed\n", nameOf(type).c_str());
    std::abort();
}

} // namespace TC
