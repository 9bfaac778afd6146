#pragma once

#include "terminal/formula/VectorGraph.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace terminal {

constexpr int kLargestColor = 0xffffff; ///< white; red | green << 8 | blue << 16

/// A line of a formula's result: its values and how its points are drawn.
struct FormulaDrawing {
    struct Color {
        Operand color; ///< red | green << 8 | blue << 16, or -1
        Operand where; ///< a condition
    };
    struct Text {
        std::string text; ///< UTF-8
        Operand where; ///< a condition
    };

    explicit FormulaDrawing(const Operand &values) : values(values) {}

    /// Has all its vectors computed.
    void use() const;
    /// Colour of a point, se::kDefaultColor when it has none of its own.
    int colorAt(std::size_t i) const;
    /// Text of a point; empty when it has none.
    const std::string &textAt(std::size_t i) const;

    Operand values;
    int style = -1; ///< number of the draw style, -1 for that of the line's description
    std::vector<Color> colors; ///< the last that applies counts
    std::vector<Text> texts; ///< the last that applies counts
    std::optional<Operand> second; ///< second values of the points
};

} // namespace terminal
