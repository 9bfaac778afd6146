#pragma once

#include "terminal/formula/VectorGraph.h"

#include <QString>

#include <vector>

namespace terminal {

/// A function of formulas that makes a vector. Operators have their sign as name, a minus in front is `-x`.
struct VectorFunction {
    const char *name;
    /// A letter for each argument: `v` a vector or number, `n` a whole number from 1 on, `t` one from 2 on, `z` one
    /// from 0 on, `m` one from 1 to the argument before it. A last `+` stands for any number of further arguments
    /// like the last one.
    const char *arguments;
    /// Makes the vector, or answers a number when all arguments of a function point by point are numbers. The
    /// arguments are what the letters say.
    Operand (*make)(VectorGraph &graph, const std::vector<Operand> &arguments);
};

/// Largest `N` of a function.
constexpr double kLongestWindow = 100000.0;

/// All functions, with the definitions that docs/formulas.md tells.
const std::vector<VectorFunction> &vectorFunctions();
/// The function of a name; null for an unknown one.
const VectorFunction *vectorFunction(const char *name);

/// A series of the bars.
struct BarSeries {
    const char *name;
    VectorNode *(*make)(VectorGraph &graph);
};
const std::vector<BarSeries> &barSeries();

} // namespace terminal
