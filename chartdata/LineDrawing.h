#pragma once

class QPainter;

namespace TC {

struct ChartLook;
struct SceneLine;
struct SceneSeries;

/// Draws one line of a series by its style; a style that is none draws nothing.
void drawLine(QPainter &painter, const SceneSeries &series, const SceneLine &line, const ChartLook &look);

} // namespace TC
