#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace tests {

/// Least contrast at which small text is read with ease, by the guidelines for accessible content (WCAG 2.1, 1.4.3).
constexpr double kReadable = 4.5;

/// Relative luminance, by the same guidelines: 0 of black, 1 of white.
inline double luminance(const QColor &color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Contrast of two opaque colours, from 1 to 21.
inline double contrast(const QColor &one, const QColor &other) {
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

/// What is seen of a colour on an opaque ground.
inline QColor blended(const QColor &color, const QColor &ground) {
    const double share = color.alphaF();
    const auto mixed = [share](double over, double under) { return over * share + under * (1.0 - share); };
    return QColor::fromRgbF(mixed(color.redF(), ground.redF()), mixed(color.greenF(), ground.greenF()),
                            mixed(color.blueF(), ground.blueF()));
}

} // namespace tests
