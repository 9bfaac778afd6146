#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QString>
#include <QVector>

namespace terminal {

/// A value that the user of a formula can change: a number, or a text.
struct FormulaParameter {
    QString name;
    bool isText = false;
    double value = 0.0; ///< default of a number
    double min = -1e12; ///< smallest number that is taken
    double max = 1e12; ///< largest number that is taken
    QString textValue; ///< default of a text
    QString text; ///< what it means
};

/// A line of a formula.
struct FormulaLine {
    QString name;
    int style = 0; ///< number of the draw style
    qint32 color = se::kDefaultColor; ///< red | green << 8 | blue << 16
    bool fixedColor = false; ///< the line keeps its colour, whatever its points say
    se::ELineAxis axis = se::eLineShared;
    int precision = -1; ///< decimals of its values, -1 for those of the instrument
};

/// What a formula file says about itself.
struct FormulaDescription {
    QString name;
    int type = 0; ///< 0 a pane of its own, 1 on the main chart, 2 in place of the main chart
    QString text; ///< the name in words
    QString source; ///< author or textbook of the definition
    QVector<FormulaParameter> parameters;
    QVector<FormulaLine> lines;

    /// The same as the chart reads it.
    se::RPCFormulaMetaResult meta() const;
};

/// Number of a draw style by its name in a formula file ("LINE", "COLORSTICK", ...), -1 for an unknown name.
int drawStyleOf(const QString &name);

} // namespace terminal
