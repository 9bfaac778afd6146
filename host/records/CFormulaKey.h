#pragma once

#include <QHash>
#include <QString>

#include <tuple>

namespace TC {

/// Identifies one series inside a chart. Orders by instrument, then by formula.
struct CFormulaKey {
    QString mStock; ///< instrument key
    QString mFormula; ///< name of the formula (not of its file)

    CFormulaKey() = default;
    CFormulaKey(QString stock, QString formula) : mStock(std::move(stock)), mFormula(std::move(formula)) {}
};

inline bool operator<(const CFormulaKey &a, const CFormulaKey &b) {
    if (a.mStock != b.mStock) { // which is seen at once of texts that are shared, as those of keys are
        return a.mStock < b.mStock;
    }
    return a.mFormula != b.mFormula && a.mFormula < b.mFormula;
}
inline bool operator==(const CFormulaKey &a, const CFormulaKey &b) {
    return a.mStock == b.mStock && a.mFormula == b.mFormula;
}
inline bool operator!=(const CFormulaKey &a, const CFormulaKey &b) {
    return !(a == b);
}
/// What Qt's hashes count in.
using KeyHash = decltype(::qHash(QString()));
inline KeyHash qHash(const CFormulaKey &key, KeyHash seed = 0) {
    return ::qHash(key.mStock + QStringLiteral("__") + key.mFormula, seed);
}

} // namespace TC
