#pragma once

namespace TC {

class MainView;

/// Lets assistive technology find what the widgets of a view are. Once, or as often as wanted; it costs nothing while none is
/// there, and widgets are asked only when it asks.
void installChartAccessibility();

/// Tells assistive technology that the keyboard has moved the cross line: the view has another value, and the focus is on the
/// minute in its main graph. Nothing while there is none.
void announceCrossLine(MainView &view);

} // namespace TC
