#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <type_traits>
#include <utility>
#include <vector>

class QWidget;

namespace TC {

/// The services of one source of data, for a program that shows several side by side.
///
/// A view that is made with a context asks it for everything, on every thread, and so do its panes, their data and the
/// dialogs that they open. What is not installed in it is the program's own, CSingletonT<T>::install(); a context that
/// holds nothing is the same as none.
///
///     TC::ServiceContext shanghai;
///     shanghai.install<TC::CHostClock>(&clock);
///     shanghai.install<TC::CStockManager>(&stocks);
///     shanghai.install<TC::CFormulaManager>(&formulas);
///     auto *view = new TC::CRealtimeMainWidget(parent, TC::EIndexViewType::Ordinary, shanghai);
///
/// All services are installed before the first view is made with it, and context and services go after the last such
/// view. It can be read on any thread then.
class TIMESHARE_EXPORT ServiceContext {
public:
    ServiceContext() = default;
    ServiceContext(const ServiceContext &) = delete;
    ServiceContext &operator=(const ServiceContext &) = delete;

    /// The context of whoever was given none: the program's own services.
    static const ServiceContext &processWide();
    /// The context of a widget: that of the nearest among it and its ancestors that was given one.
    static const ServiceContext &of(const QWidget *widget);
    /// Gives a widget a context, for whatever is made as its child from then on. User-interface thread.
    void giveTo(QWidget *widget) const;

    /// Installs a service that is not owned, or with null leaves it to the program's own again. The class is named:
    /// install<CStockManager>(&stocks).
    template <class T> void install(std::common_type_t<T> *service) { set(&CSingletonT<T>::place(), service); }
    /// The service: its own, else the program's. Ends the program with a message when there is neither.
    template <class T> T &get() const {
        void *own = find(&CSingletonT<T>::place());
        return own ? *static_cast<T *>(own) : CSingletonT<T>::instance();
    }
    /// Whether there is one, its own or the program's.
    template <class T> bool has() const {
        return find(&CSingletonT<T>::place()) || CSingletonT<T>::isInstalled();
    }

private:
    using Place = const std::atomic<void *> *; ///< of the program's own service: the name of a class here

    void set(Place place, void *service);
    void *find(Place place) const {
        for (const auto &service : mServices) {
            if (service.first == place) {
                return service.second;
            }
        }
        return nullptr;
    }

    std::vector<std::pair<Place, void *>> mServices; ///< few: walked through
};

} // namespace TC
