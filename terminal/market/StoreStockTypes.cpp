#include "terminal/market/StoreStockTypes.h"

#include "host/records/CInstrumentDetail.h"

namespace terminal {
namespace {

constexpr int kMainlandShare = 100001; ///< type number

bool isMainlandShare(const Instrument &instrument) {
    return instrument.kind == InstrumentKind::Stock &&
           (instrument.market == QLatin1String("SH") || instrument.market == QLatin1String("SZ"));
}

QString keyOf(const std::string &market, const std::string &code) {
    return QString::fromStdString(TC::vmStockKey(market, code));
}

} // namespace

bool StoreStockTypes::isOfType(int type, const std::string &market, const std::string &code) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(keyOf(market, code));
    return instrument &&
           (instrument->types.contains(type) || (type == kMainlandShare && isMainlandShare(*instrument)));
}

bool StoreStockTypes::isIndex(const std::string &market, const std::string &code) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(keyOf(market, code));
    return instrument && instrument->isIndex();
}

std::string StoreStockTypes::convertibleBond(const std::string &market, const std::string &code) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const QString share = keyOf(market, code);
    for (const QString &key : catalogue->convertibles.value(share)) {
        const Instrument *bond = catalogue->find(key);
        if (bond && bond->kind == InstrumentKind::ConvertibleBond) {
            return bond->code.toStdString();
        }
    }
    return {};
}

} // namespace terminal
