#include "toolkit/drawing/SeriesGeometry.h"

namespace TC {

namespace {

constexpr double kLongestDashed = 1e6; // no screen shows more than a part of that

} // namespace

DashPattern dashPattern(Qt::PenStyle pen, int unit) {
    DashPattern pattern;
    switch (pen) {
    case Qt::DashLine:
        pattern = {4, 2};
        break;
    case Qt::DotLine:
        pattern = {1, 2};
        break;
    case Qt::DashDotLine:
        pattern = {4, 2, 1, 2};
        break;
    case Qt::DashDotDotLine:
        pattern = {4, 2, 1, 2, 1, 2};
        break;
    default:
        break;
    }
    for (int &length : pattern) {
        length *= unit;
    }
    return pattern;
}

void appendDashes(const QPointF &from, const QPointF &to, const DashPattern &pattern, double phase, int width,
                  Strokes &dashes) {
    const double length = dashLength(from, to);
    double period = 0.0;
    for (const int part : pattern) {
        period += part;
    }
    if (pattern.isEmpty() || length <= 0.0 || length > kLongestDashed) {
        return;
    }
    const auto at = [&](double distance) {
        const QPointF point = from + (to - from) * (distance / length);
        return QPointF(std::rint(point.x()), std::rint(point.y()));
    };
    double begin = -std::fmod(phase, period);
    for (int part = 0; begin <= length; part = (part + 1) % pattern.size()) {
        const double end = begin + pattern[part];
        const double inkBegin = std::max(begin, 0.0);
        const double inkEnd = std::min(end - width, length);
        if (part % 2 == 0 && inkEnd >= inkBegin) {
            dashes.append({at(inkBegin), at(inkEnd)});
        }
        begin = end;
    }
}

QVarLengthArray<DiscRow, 32> discRows(int diameter) {
    QVarLengthArray<DiscRow, 32> rows;
    const double radius = diameter / 2.0;
    for (int row = 0; row < diameter; ++row) {
        const double dy = row + 0.5 - radius;
        // Slightly less than the circle, which takes the corners off small discs.
        const double half = std::sqrt(std::max(radius * radius - 0.5 - dy * dy, 0.0));
        const int first = std::max(static_cast<int>(std::ceil(radius - half - 0.5)), 0);
        rows.append({first, diameter - first});
    }
    return rows;
}

void rowsOfPolyline(const QPoint *points, int count, int firstColumn, int lastColumn, int *rows) {
    int column = firstColumn;
    for (int i = 0; i < count && column <= lastColumn; ++i) {
        const QPoint &from = points[std::max(i - 1, 0)];
        const QPoint &to = points[i];
        const double slope = to.x() > from.x() ? double(to.y() - from.y()) / (to.x() - from.x()) : 0.0;
        for (; column <= lastColumn && column <= to.x(); ++column) {
            rows[column - firstColumn] = nearestPixel(from.y() + slope * (column - from.x()));
        }
    }
}

} // namespace TC
