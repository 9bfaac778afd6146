#pragma once

#include <QSize>

namespace terminal {

/// The window can be made as small as this, in pixels; what has no room in it folds away.
constexpr QSize kSmallestWindow(480, 320);

/// Views that a wall has at most.
constexpr int kMostWallViews = 36;

} // namespace terminal
