#pragma once

#include "terminal/formula/LuaFormula.h"

#include <QString>

namespace terminal {

/// 09:31 of Monday, 9 March 2020 at UTC+8.
constexpr qint64 kFormulaMorning = 1583717460000;

/// A minute that opens, runs and ends at a price.
inline MinuteBar flatBar(int minute, double price, double volume = 100.0) {
    return {kFormulaMorning + minute * 60000LL, price, price, price, price, price, volume, volume * price};
}

inline MinuteBars barsOfPrices(std::initializer_list<double> prices) {
    MinuteBars bars;
    for (const double price : prices) {
        bars.push_back(flatBar(static_cast<int>(bars.size()), price));
    }
    return bars;
}

/// A formula of one line whose `run` has this body.
inline LuaFormulaFile formulaOf(const QString &body, const QString &lines = QStringLiteral("{\"LINE\"}")) {
    const QString text = QStringLiteral("formula { name = \"TEST\", lines = {%1} }\nfunction run()\n%2\nend\n");
    return {QStringLiteral("TEST"), text.arg(lines, body).toUtf8(), {}};
}

/// Keeps the errors that it is told.
class ErrorLog {
public:
    FormulaErrorSink sink() {
        return [this](const FormulaError &error) { errors.push_back(error); };
    }
    std::vector<FormulaError> errors;
};

} // namespace terminal
