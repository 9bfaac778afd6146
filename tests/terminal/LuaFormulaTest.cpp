#include "terminal/formula/LuaFormula.h"

#include <gtest/gtest.h>

namespace terminal {
namespace {

TEST(LuaFormulaTest, Smoke) {
    EXPECT_EQ(checkLuaFormula({"X", "formula{name='X', lines={{'A'}}} function run() return MA(CLOSE,5) end", {}})
                  .value_or(FormulaError())
                  .text.toStdString(),
              "");
}

} // namespace
} // namespace terminal
