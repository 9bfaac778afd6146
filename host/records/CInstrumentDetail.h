#pragma once

#include "host/records/Enumerations.h"

#include <QString>

#include <memory>
#include <string>

namespace TC {

/// The instrument that another one derives from or converts to. An empty field counts as absent.
struct CUnderlyingInfo {
    std::string mCode;
    std::string mMarket;
};

/// One instrument of the catalogue. Owned by the host and read-only for the chart view.
struct CInstrumentDetail {
    std::string mMarket; ///< market word, such as "SH"
    std::string mCode; ///< instrument code, such as "600000"
    std::string mName; ///< display name, UTF-8
    std::string mProductId; ///< product of a futures contract, such as "TF"
    double mLastClose = kUnsetValue;
    double mFloatShares = 0.0;
    double mPriceTick = 0.01; ///< smallest price step; kUnsetValue when unknown
    std::shared_ptr<CUnderlyingInfo> mUnderlying;
};

using CInstrumentDetailPtr = std::shared_ptr<CInstrumentDetail>;

/// Key of an instrument: market word followed by code, as in "SH600000".
inline std::string vmStockKey(const std::string &market, const std::string &code) {
    return market + code;
}

// Reading a record. Each answers the empty text, or the unset value, for a null record.

inline std::string getDetailMarket(const CInstrumentDetailPtr &detail) {
    return detail ? detail->mMarket : std::string();
}
inline std::string getDetailCode(const CInstrumentDetailPtr &detail) {
    return detail ? detail->mCode : std::string();
}
inline std::string getDetailKey(const CInstrumentDetailPtr &detail) {
    return detail ? vmStockKey(detail->mMarket, detail->mCode) : std::string();
}
inline QString getDetailQsMarket(const CInstrumentDetailPtr &detail) {
    return QString::fromStdString(getDetailMarket(detail));
}
inline QString getDetailQsCode(const CInstrumentDetailPtr &detail) {
    return QString::fromStdString(getDetailCode(detail));
}
inline QString getDetailQsKey(const CInstrumentDetailPtr &detail) {
    return QString::fromStdString(getDetailKey(detail));
}
inline QString getDetailQsName(const CInstrumentDetailPtr &detail) {
    return detail ? QString::fromStdString(detail->mName) : QString();
}
/// Last close of the record; kUnsetValue when there is no record.
inline double getDetailLastClose(const CInstrumentDetailPtr &detail) {
    return detail ? detail->mLastClose : kUnsetValue;
}
/// Smallest price step; kUnsetValue when there is no record.
inline double getDetailPriceTick(const CInstrumentDetailPtr &detail) {
    return detail ? detail->mPriceTick : kUnsetValue;
}

} // namespace TC
