#pragma once

#include <QImage>
#include <QJsonObject>
#include <QString>

namespace GZ {

/// A small picture that a theme describes by shapes.
///
/// The description is an object with "width" and "height" in pixels and a list "shapes", drawn in order. A shape
/// has a "kind" ("rect", "ellipse", "polygon", "polyline"), numbers "at" (x, y, width, height for the first two
/// kinds, x and y of each corner for the others), and any of the colours "fill", "fillBottom" (then the fill
/// runs from the one down to the other) and "line", of "lineWidth" (1 unless told) and of the corner "radius".
struct ThemePicture {
    /// The picture at `ratio` device pixels per pixel. A null image when the description is wrong; then `error`
    /// says why.
    static QImage render(const QJsonObject &description, int ratio, QString *error);
};

/// A colour as "#rrggbb" or "#aarrggbb"; false, and nothing changed, for any other text.
bool readThemeColor(const QString &text, class QColor &color);

} // namespace GZ
