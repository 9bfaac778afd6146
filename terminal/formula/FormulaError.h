#pragma once

#include <QMetaType>
#include <QString>

#include <functional>

namespace terminal {

/// Why a formula or a script model gives no series, in words for its author.
struct FormulaError {
    QString formula; ///< name of the formula
    int line = 0; ///< line of its file, from 1; 0 when the error has no place
    QString text;
};

inline bool operator==(const FormulaError &a, const FormulaError &b) {
    return a.formula == b.formula && a.line == b.line && a.text == b.text;
}
inline bool operator!=(const FormulaError &a, const FormulaError &b) {
    return !(a == b);
}

/// Hears of errors, on the thread that computes. May be empty.
using FormulaErrorSink = std::function<void(const FormulaError &)>;

} // namespace terminal

Q_DECLARE_METATYPE(terminal::FormulaError)
