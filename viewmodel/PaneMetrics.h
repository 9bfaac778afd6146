#pragma once

/// \file
/// Sizes of a pane that more than one of its parts is laid out by.

namespace TC {

/// Width of an axis strip, in pixels.
constexpr int kAxisStripWidth = 50;

} // namespace TC
