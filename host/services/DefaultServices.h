#pragma once

#include "host/Export.h"

#include <memory>
#include <string>
#include <vector>

namespace TC {

class ServiceContext;

/// Names of the services that the library may ask for and that nobody has installed, such as "TC::CStockManager", in
/// alphabetical order. User-interface thread.
TIMESHARE_EXPORT std::vector<std::string> missingServices();
/// The same for a view of a context: what neither the context nor the program has.
TIMESHARE_EXPORT std::vector<std::string> missingServices(const ServiceContext &services);

/// Services for a host that has nothing to say in them. There is one for each service but the clock, the instruments and
/// the series (CHostClock, CStockManager, CFormulaManager), which are the host's own. They stand for a program without
/// trades, replay, strategies, sectors, user-defined indexes and shared histories; sessions are those of the built-in
/// table, the catalogue of formulas holds the two of the main chart, and what the user sets is kept in memory.
///
/// A host installs its own services first, makes one of these, then its views; it goes after the last of them.
/// User-interface thread.
class TIMESHARE_EXPORT DefaultServices {
public:
    /// Installs those for which nothing is installed.
    DefaultServices();
    /// Takes those away that still stand.
    ~DefaultServices();
    DefaultServices(const DefaultServices &) = delete;
    DefaultServices &operator=(const DefaultServices &) = delete;

private:
    struct Services;
    const std::unique_ptr<Services> mServices;
};

} // namespace TC
