// What script models write: results in pieces of any size, and tracebacks.

#include "terminal/formula/ScriptModelReader.h"

#include "tests/fuzz/FuzzInput.h"

#include <cstdlib>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    const int points = input.upTo(5);
    const int piece = 1 + input.byte();
    const QByteArray text = QByteArray::fromStdString(input.rest());

    terminal::ScriptModelReader reader(points);
    for (int start = 0; start < text.size(); start += piece) {
        check(reader.take(text.mid(start, piece)) == !reader.failure());
    }
    check(reader.finish() == !reader.failure());
    check(reader.lines().size() <= size_t(terminal::ScriptModelReader::kMostLines));

    const std::vector<se::TimePosition> times(static_cast<size_t>(points));
    const se::RPCFormulaMetaResult meta = reader.meta();
    const se::RPCFormulaResult result = reader.result(times);
    check(meta.mLineNames.size() == size_t(meta.mLineCount) &&
          result.mValues.size() == size_t(meta.mLineCount));
    for (const std::vector<double> &line : result.mValues) {
        check(line.size() == times.size());
    }
    const terminal::ScriptModelProgress &progress = reader.progress();
    check(progress.done >= 0 && progress.done <= progress.total);
    check(terminal::readPythonError(text, QStringLiteral("A.py")).line >= 0);
    return 0;
}
