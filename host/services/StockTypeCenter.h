#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <string>

namespace kvservice {

/// What type an instrument is of. The chart view asks for these numbers:
/// 126, 100017 (long afternoon), 277, 10006 (growth board), 10019, 135 (convertible bonds), 100013, 105, 10008
/// (funds that publish an indicative net value), 100003 (volume counted in lots).
class TIMESHARE_EXPORT StockTypeCenter {
public:
    virtual ~StockTypeCenter() = default;

    /// Whether the instrument belongs to a numbered type.
    static bool isTypedStock(int type, const std::string &market, const std::string &code) {
        return TC::CSingletonT<StockTypeCenter>::instance().isOfType(type, market, code);
    }

    virtual bool isOfType(int type, const std::string &market, const std::string &code) = 0;
    virtual bool isIndex(const std::string &market, const std::string &code) = 0;
    virtual std::string convertibleBond(const std::string &market, const std::string &code) = 0;
};

} // namespace kvservice

namespace TC {

/// Whether the instrument is an index.
inline bool isIndexEx(const std::string &market, const std::string &code) {
    return CSingletonT<kvservice::StockTypeCenter>::instance().isIndex(market, code);
}
/// Code of the convertible bond of a share, or empty.
inline std::string getStockConvertibleBond(const std::string &market, const std::string &code) {
    return CSingletonT<kvservice::StockTypeCenter>::instance().convertibleBond(market, code);
}

} // namespace TC

namespace se {
using TC::isIndexEx;
} // namespace se
