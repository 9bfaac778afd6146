#include "terminal/formula/FormulaDrawing.h"

#include "host/records/RPCFormulaResult.h"

#include <algorithm>

namespace terminal {
namespace {

void useOperand(const Operand &operand) {
    if (operand.node) {
        operand.node->use();
    }
}

bool holds(const Operand &condition, std::size_t i) {
    const double value = condition.at(i);
    return hasValue(value) && value != 0.0;
}

} // namespace

void FormulaDrawing::use() const {
    useOperand(values);
    for (const Color &each : colors) {
        useOperand(each.color);
        useOperand(each.where);
    }
    for (const Text &each : texts) {
        useOperand(each.where);
    }
    if (second) {
        useOperand(*second);
    }
}

int FormulaDrawing::colorAt(std::size_t i) const {
    const auto last =
        std::find_if(colors.rbegin(), colors.rend(), [i](const Color &each) { return holds(each.where, i); });
    const double color = last == colors.rend() ? kNoValue : last->color.at(i);
    return color >= 0.0 && color <= kLargestColor ? static_cast<int>(color) : se::kDefaultColor;
}

const std::string &FormulaDrawing::textAt(std::size_t i) const {
    static const std::string none;
    const auto last =
        std::find_if(texts.rbegin(), texts.rend(), [i](const Text &each) { return holds(each.where, i); });
    return last == texts.rend() ? none : last->text;
}

} // namespace terminal
