#pragma once

#include "terminal/formula/LuaFormula.h"

#include <QFile>

namespace tests {

/// The programs of the formula files that come with the terminal and stand outside all folders, as "REALTIME".
inline std::unique_ptr<terminal::FormulaProgram> makeBuiltInFormula(const TC::CFormulaParam &param) {
    QFile file(QStringLiteral(TIMESHARE_SOURCE_DIR "/formulas/%1.lua").arg(param.mFormulaName));
    if (!file.open(QIODevice::ReadOnly)) {
        return nullptr;
    }
    return terminal::makeLuaFormula({param.mFormulaName, file.readAll(), {}});
}

} // namespace tests
