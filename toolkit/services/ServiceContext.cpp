#include "host/services/ServiceContext.h"

#include <QVariant>
#include <QWidget>

#include <algorithm>

namespace TC {
namespace {

constexpr const char *kContextProperty = "timeshare_services";

} // namespace

const ServiceContext &ServiceContext::processWide() {
    static const auto &context = *new ServiceContext; // services may be asked for until the very end
    return context;
}

const ServiceContext &ServiceContext::of(const QWidget *widget) {
    for (; widget; widget = widget->parentWidget()) {
        const QVariant given = widget->property(kContextProperty);
        if (given.isValid()) {
            return *static_cast<const ServiceContext *>(given.value<void *>());
        }
    }
    return processWide();
}

void ServiceContext::giveTo(QWidget *widget) const {
    widget->setProperty(kContextProperty,
                        QVariant::fromValue(const_cast<void *>(static_cast<const void *>(this))));
}

void ServiceContext::set(Place place, void *service) {
    mServices.erase(std::remove_if(mServices.begin(), mServices.end(),
                                   [place](const auto &standing) { return standing.first == place; }),
                    mServices.end());
    if (service) {
        mServices.emplace_back(place, service);
    }
}

} // namespace TC
