#include "terminal/market/RowInstruments.h"

#include "terminal/market/MarketSessions.h"
#include "terminal/market/RowFields.h"

#include <QFileInfo>

namespace terminal {
namespace {

constexpr size_t kMostInstruments = 200000; ///< of one file

} // namespace

BarFault checkMarket(const ImportOptions &options) {
    if (options.market.isEmpty() || knownMarkets().contains(options.market)) {
        return {};
    }
    return {1, QStringLiteral("unknown market \"%1\"; give --market with one of %2")
                   .arg(options.market, knownMarkets().join(QLatin1Char(' ')))};
}

RowInstruments::RowInstruments(const ImportOptions &options, const QString &path)
    : mOptions(options), mOfFile(instrumentOfFileName(QFileInfo(path).fileName())) {
    const InstrumentName given = readSymbol(options.code, {});
    if (!given.market.isEmpty() && !given.code.isEmpty()) { // a code may be given with its exchange
        mOptions.code = given.code;
        mOptions.market = options.market.isEmpty() ? given.market : options.market;
    }
}

BarFault RowInstruments::find(int line, std::string_view symbol, std::string_view exchange, size_t &number) {
    const std::string_view last(mLast.constData(), static_cast<size_t>(mLast.size()));
    if (mNames.empty() || symbol != last) {
        mLast = QByteArray(symbol.data(), static_cast<int>(symbol.size()));
        const auto known = mNumbers.constFind(mLast);
        if (known == mNumbers.constEnd()) {
            InstrumentName met;
            const BarFault fault = name(line, readSymbol(fieldText(symbol), fieldText(exchange)), met);
            if (!fault.isNone()) {
                return fault;
            }
            if (mNames.size() == kMostInstruments) {
                return {line, QStringLiteral("more than %1 instruments: split it").arg(kMostInstruments)};
            }
            mLastNumber = mNames.size();
            mNumbers[mLast] = mLastNumber;
            mNames.push_back(met);
        } else {
            mLastNumber = *known;
        }
    }
    number = mLastNumber;
    return {};
}

BarFault RowInstruments::name(int line, InstrumentName told, InstrumentName &name) const {
    if (!mOptions.code.isEmpty() && !mNames.empty()) {
        return {line, QStringLiteral("a second instrument \"%1\"; --code names one only").arg(told.code)};
    }
    if (told.code.isEmpty()) {
        told = mOfFile;
    } else if (told.market.isEmpty() && told.code == mOfFile.code) {
        told.market = mOfFile.market;
    }
    name = {mOptions.market.isEmpty() ? told.market : mOptions.market,
            mOptions.code.isEmpty() ? told.code : mOptions.code};
    if (name.market.isEmpty()) {
        return {line, QStringLiteral("the file does not tell the market; give --market with one of %1")
                          .arg(knownMarkets().join(QLatin1Char(' ')))};
    }
    if (name.code.isEmpty()) {
        return {line, QStringLiteral("the file does not tell the instrument; give --code")};
    }
    return {};
}

} // namespace terminal
