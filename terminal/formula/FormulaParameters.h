#pragma once

#include "host/services/CFormulaOperateManager.h"
#include "terminal/formula/FormulaDescription.h"
#include "terminal/formula/LuaFormula.h"

#include <QJsonObject>

namespace terminal {

// The values of parameters: what was kept in the configuration, what the record of a formula has, and what the user may
// set. Kept values are fields by the name of the parameter.

/// The record of a formula with the values that were kept; the default stands for a number that the parameter cannot
/// have.
TC::CFormulaDetailPtr recordOf(const FormulaDescription &description, bool isVisible, const QJsonObject &kept);
/// The record of a script model with the values that were kept.
TC::CFormulaDetailPtr recordOf(const TC::CFormulaDetail &script, const QJsonObject &kept);

/// The parameters of a formula with the values of its record.
TC::CFormulaParameters parametersOf(const FormulaDescription &description, const TC::CFormulaDetail &record);
/// The parameters of a script model, and the values of its record.
TC::CFormulaParameters parametersOf(const TC::CFormulaDetail &defaults, const TC::CFormulaDetail &record);

/// Puts values that the user wants into the kept ones; those of unknown names are passed over. Answers why a value
/// cannot be that of its parameter, or nothing.
QString setValues(QJsonObject &kept, const FormulaDescription &description,
                  const TC::CFormulaParameters &values);
/// The same for a script model: what a value may be, the model alone knows, and tells it when it runs.
QString setValues(QJsonObject &kept, const TC::CFormulaDetail &defaults, const TC::CFormulaParameters &values);

/// The values of a record as a formula file takes them.
QMap<QString, QString> argumentsOf(const TC::CFormulaDetail &record);

} // namespace terminal
