// What formula files say about themselves: the fields of `formula { ... }`, or a whole file. What is taken is within its
// bounds, and what is refused is said why.

#include "terminal/formula/LuaFormula.h"
#include "terminal/formula/ShortText.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// One character more than is kept, the mark of the cut; twice as many in capitals at the most.
bool isShort(const QString &text) {
    return text.size() <= 2 * (terminal::kLongestShortText + 1);
}

void checkDescription(const terminal::FormulaDescription &description) {
    check(!description.name.trimmed().isEmpty() && isShort(description.name));
    check(description.type >= 0 && description.type <= 2);
    check(isShort(description.text) && isShort(description.source));
    check(!description.lines.isEmpty() && description.lines.size() <= 64 &&
          description.parameters.size() <= 64);
    for (const terminal::FormulaParameter &parameter : description.parameters) {
        check(!parameter.name.isEmpty() && isShort(parameter.text) && isShort(parameter.textValue));
        check(parameter.isText || (parameter.value >= parameter.min && parameter.value <= parameter.max));
    }
    for (const terminal::FormulaLine &line : description.lines) {
        check(!line.name.isEmpty() && isShort(line.name));
        check(line.precision >= -1 && line.precision <= 8 && line.style >= 0);
    }
    check(description.meta().mLineCount == description.lines.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<int>(size));
    for (const QByteArray &text : {content, "formula {" + content + "}\nfunction run() return CLOSE end\n"}) {
        terminal::FormulaError error;
        const auto description = terminal::describeLuaFormula({QStringLiteral("FUZZ"), text, {}}, &error);
        check(description.has_value() == error.text.isEmpty());
        if (description) {
            checkDescription(*description);
        }
    }
    return 0;
}
