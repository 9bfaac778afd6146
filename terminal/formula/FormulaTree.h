#pragma once

#include "terminal/formula/FormulaShelf.h"

namespace terminal {

/// The tree that menus offer: folders as the files have them, what the user added in a folder of its own, and the script
/// models in the last one.
TC::CFormulaCatalogDetailPtr formulaTree(const QVector<FormulaShelf::Place> &formulas,
                                         const QVector<TC::CFormulaDetailPtr> &scripts);

} // namespace terminal
