#pragma once

#include <QString>

class QWidget;

namespace terminal {

/// How an export went, in words for the user.
struct ExportOutcome {
    QString text;
    bool isError = false;
};

/// Asks for a file and writes the text of a formula to it. An empty text when the user has changed his mind.
ExportOutcome askFormulaExport(const QString &formula, QWidget *parent);
/// Writes the text of a formula or a script model to a file, whole or not at all.
ExportOutcome exportFormula(const QString &formula, const QString &path);

} // namespace terminal
