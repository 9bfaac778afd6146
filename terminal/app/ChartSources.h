#pragma once

#include "host/records/RPCUiPortfolioDetail.h"

#include <QDate>
#include <QString>

#include <functional>

namespace terminal {

/// What a chart view has from the terminal beside the services that are installed.
struct ChartSources {
    /// The positions of a portfolio by its key.
    std::function<TC::RPCUiPortfolioDetail(const QString &key)> positions;
    /// Is told what is requested next: an instrument, and its day, null for the running one.
    std::function<void(const QString &key, const QDate &day)> announce;
};

} // namespace terminal
