#pragma once

#include <QString>

class QWidget;

namespace terminal {

class ChartView;

/// Whether a picture can be written there; answers an empty text or one line that says why not.
QString checkPicturePath(const QString &path);

/// Turns the event loop until a chart has everything that it asked for; false when that takes too long.
bool waitForChart(const ChartView &view);

/// Writes what a widget shows as a PNG file at its device pixel ratio. Answers an empty text or what went wrong.
QString writePicture(QWidget &widget, const QString &path);

} // namespace terminal
