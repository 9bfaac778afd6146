#pragma once

#include "terminal/market/BarFault.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/ImportedInstrument.h"

#include <QByteArray>
#include <QHash>

#include <string_view>
#include <vector>

namespace terminal {

/// A fault when the user has named a market that is not known.
BarFault checkMarket(const ImportOptions &options);

/// Tells which instrument a row of a file is of: by its symbol and exchange, by what the user has said, and by the
/// name of the file, in which a symbol with its exchange may stand.
class RowInstruments {
public:
    RowInstruments(const ImportOptions &options, const QString &path);

    /// Number of the row's instrument, in the order in which they were met; a fault when the market or the code are not
    /// told, or there are more than the one that the user has named.
    BarFault find(int line, std::string_view symbol, std::string_view exchange, size_t &number);
    const std::vector<InstrumentName> &names() const { return mNames; }

private:
    BarFault name(int line, InstrumentName told, InstrumentName &name) const;

    ImportOptions mOptions;
    const InstrumentName mOfFile;
    std::vector<InstrumentName> mNames;
    QHash<QByteArray, size_t> mNumbers; ///< by symbol as it stands in the file
    QByteArray mLast;
    size_t mLastNumber = 0;
};

} // namespace terminal
