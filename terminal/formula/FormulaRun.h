#pragma once

#include "terminal/formula/FormulaDrawing.h"
#include "terminal/formula/LuaFormula.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace terminal {

/// How far a run of a formula file goes.
enum class RunDepth {
    Describe, ///< to the description
    Compute, ///< to the lines
};

/// One run of a formula file: what the file said about itself, and the vectors and lines that it made. After an error
/// it has what was there until then.
struct FormulaRun {
    /// Runs a file over bars. Never null.
    static std::unique_ptr<FormulaRun> of(const LuaFormulaFile &file, const FormulaInputs &inputs,
                                          const FormulaLimits &limits, const MinuteBars &bars, RunDepth depth);

    std::optional<FormulaError> error;
    bool overLimit = false; ///< the error is one of time or memory
    FormulaDescription description;
    bool isDescribed = false;
    VectorGraph graph;
    std::vector<FormulaDrawing> lines; ///< one for each line of the description; empty after an error
    VectorNode *underlying = nullptr; ///< UCLOSE
    bool readsValues = false; ///< the file asks for single values: other bars take another run

    FormulaInputs inputs;

    // While it runs.
    QMap<QString, QString> arguments; ///< of the request, by parameter name
    std::size_t vectorLimit = 0;
    std::deque<FormulaDrawing> drawings; ///< all that were made; Lua points to them
};

} // namespace terminal
