#pragma once

#include <QCoreApplication>

namespace terminal {

/// The texts of the catalogue of formulas, whichever of its parts tells them.
struct FormulaWords {
    Q_DECLARE_TR_FUNCTIONS(FormulaCatalogue)
};

} // namespace terminal
