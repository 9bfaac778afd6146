#pragma once

#include "terminal/formula/FormulaDescription.h"
#include "terminal/formula/FormulaError.h"
#include "terminal/formula/FormulaProgram.h"

#include <QByteArray>
#include <QMap>

#include <cstddef>
#include <limits>
#include <optional>

namespace terminal {

/// What a run of a formula may take. A run that goes beyond ends with an error.
struct FormulaLimits {
    int milliseconds = 1000; ///< of the processor, for one run
    std::size_t bytes = 16u << 20; ///< memory of the Lua state
    std::size_t vectors = 500; ///< vectors made in one run
};

/// What a formula file knows of the request beside the bars. A number that is not known is no number.
struct FormulaInputs {
    double previousClose = std::numeric_limits<double>::quiet_NaN(); ///< PREVCLOSE
    double priceTick = std::numeric_limits<double>::quiet_NaN(); ///< PRICETICK
    double floatShares = std::numeric_limits<double>::quiet_NaN(); ///< FLOATSHARES
    double previousNetValue = std::numeric_limits<double>::quiet_NaN(); ///< PREVNAV
    QString underlying; ///< key of the underlying instrument; empty for none
    double underlyingClose = std::numeric_limits<double>::quiet_NaN(); ///< UPREVCLOSE
    MinuteBars underlyingBars; ///< of the day, for UCLOSE
    qint32 riseColor = 0x0000ff; ///< COLORRISE: red | green << 8 | blue << 16
    qint32 fallColor = 0x00ff00; ///< COLORFALL
};

/// A formula file and the values of its parameters.
struct LuaFormulaFile {
    QString name; ///< named in errors
    QByteArray text; ///< the file, UTF-8
    QMap<QString, QString> arguments; ///< values by parameter name; defaults for the others
};

/// Reads what a formula file says about itself. Nothing when it cannot be read, with the reason in `error` when given.
std::optional<FormulaDescription> describeLuaFormula(const LuaFormulaFile &file, FormulaError *error = nullptr);

/// Tries a formula file over a few bars. Nothing when all is well, else the first error, with its line.
std::optional<FormulaError> checkLuaFormula(const LuaFormulaFile &file);

/// What came of trying a formula file: what it says about itself, or an error.
struct LuaFormulaTrial {
    std::optional<FormulaDescription> description;
    FormulaError error;
    bool isOverLimit = false; ///< the error is one of time or memory
};
/// Reads what a file says about itself and tries it over a few bars, within limits.
LuaFormulaTrial tryLuaFormula(const LuaFormulaFile &file, const FormulaLimits &limits = {});

/// Makes the program of a formula file. Never null: a file with an error makes a program that tells `sink` and whose
/// points have no values. The same error is told once in a row. After an error of limits the program stays still.
///
/// The file's `run` is executed once; what it says about vectors is kept, and a tick computes the last point of each.
/// A file that reads single values of a vector is executed with every change, and before the first bars over none.
std::unique_ptr<FormulaProgram> makeLuaFormula(const LuaFormulaFile &file, const FormulaInputs &inputs = {},
                                               FormulaErrorSink sink = {}, const FormulaLimits &limits = {});

/// The file that a request names, with the values of its parameters; nothing when there is none. Any thread.
using LuaFormulaLookup = std::function<std::optional<LuaFormulaFile>(const TC::CFormulaParam &)>;
/// What is known of the instrument and the day of a request. Any thread.
using FormulaInputsOf = std::function<FormulaInputs(const TC::CFormulaParam &)>;

/// A maker for the formula service: null for a request that `lookup` knows no file of. Arguments of the request go
/// before those of the file; those that are no parameters of the formula are passed over.
FormulaProgramMaker luaFormulaMaker(LuaFormulaLookup lookup, FormulaInputsOf inputs = {},
                                    FormulaErrorSink sink = {}, const FormulaLimits &limits = {});

} // namespace terminal
