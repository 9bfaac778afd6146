// Formula files: any text, run over a few bars and ticks. The sandbox holds, and a tick gives what a whole run gives.

#include "terminal/formula/LuaFormula.h"

#include <cstdint>
#include <cstdlib>

namespace {

terminal::MinuteBars someBars() {
    terminal::MinuteBars bars;
    for (int i = 0; i < 12; ++i) {
        const double price = 10.0 + i * 5 % 7 * 0.01;
        bars.push_back({1583717460000 + i * 60000, i == 3 ? 0.0 : price, price + 0.02, price - 0.02,
                        price + 0.01, price, i == 5 ? 0.0 : 100.0 * i, 1000.0 * i});
    }
    return bars;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    terminal::LuaFormulaFile file;
    file.name = QStringLiteral("FUZZ");
    file.text = QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size));
    terminal::FormulaLimits limits;
    limits.milliseconds = 50;
    limits.bytes = 2u << 20;
    limits.vectors = 200;
    bool failed = false;
    const auto sink = [&failed](const terminal::FormulaError &) { failed = true; };
    const auto program = terminal::makeLuaFormula(file, {}, sink, limits);
    terminal::MinuteBars bars = someBars();
    program->evaluate(bars);
    bars.back().price += 0.05;
    const se::RPCFormulaInstantResult last = program->evaluateLast(bars);
    const se::RPCFormulaResult whole = terminal::makeLuaFormula(file, {}, sink, limits)->evaluate(bars);
    // A file that cannot be run twice in time may differ; any other may not.
    for (std::size_t line = 0; !failed && line < last.mValues.size(); ++line) {
        if (last.mValues[line] != whole.mValues[line].back()) {
            std::abort();
        }
    }
    return 0;
}
