#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/MarketFill.h"

#include <QString>

namespace terminal {

/// Imports a file of minute bars, trades or snapshots, whichever its headings show, or the columns that the user has
/// chosen for such headings: in whole, or not at all. `progress`
/// hears thousandths; answering false stops the import.
ImportOutcome importMarketFile(CMarketStore &store, ImportOptions options, const QString &path,
                               const Progress &progress = {});

} // namespace terminal
