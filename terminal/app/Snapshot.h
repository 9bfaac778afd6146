#pragma once

#include "terminal/app/ChartSources.h"

#include <QString>
#include <QWidget>

namespace terminal {

class ChartView;

/// What a picture of a chart shows: the chart, and above it what has to be known of it, when there is something.
class SnapshotSheet : public QWidget {
public:
    SnapshotSheet(ChartSources sources, const QString &note);

    ChartView &view() { return *mView; }

private:
    ChartView *mView; ///< a child
};

/// Whether a picture can be written there; answers an empty text or one line that says why not.
QString checkPicturePath(const QString &path);

/// Turns the event loop until a chart has everything that it asked for; false when that takes too long.
bool waitForChart(const ChartView &view);

/// Writes what a widget shows as a PNG file at its device pixel ratio. Answers an empty text or what went wrong.
QString writePicture(QWidget &widget, const QString &path);

} // namespace terminal
