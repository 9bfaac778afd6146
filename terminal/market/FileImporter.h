#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/ImportTarget.h"
#include "terminal/market/MarketFill.h"

#include <QString>

namespace terminal {

/// Imports a file of minute bars, trades or snapshots, whichever its headings show, or the columns that the user has
/// chosen for such headings: in whole, or not at all. `progress`
/// hears thousandths; answering false stops the import.
/// With a target the file goes there, and the store tells what is known of instruments and calendars.
ImportOutcome importMarketFile(CMarketStore &store, ImportOptions options, const QString &path,
                               const Progress &progress = {}, const ImportTargetMaker &target = {});

} // namespace terminal
