#include "toolkit/theme/ThemePicture.h"

#include "toolkit/theme/ThemeWords.h"

#include <QColor>
#include <QJsonArray>
#include <QPainter>
#include <QPainterPath>
#include <QVector>

#include <algorithm>

namespace GZ {
namespace {

constexpr int kLargestSide = 512;

bool readNumbers(const QJsonValue &list, QVector<qreal> &numbers) {
    for (const QJsonValue &entry : list.toArray()) {
        if (!entry.isDouble()) {
            return false;
        }
        numbers.append(std::clamp(entry.toDouble(), -1e4, 1e4));
    }
    return true;
}

/// The colour under a key; absent keys leave it invalid.
bool readColor(const QJsonObject &shape, const QString &key, QColor &color) {
    return !shape.contains(key) || readThemeColor(shape.value(key).toString(), color);
}

QPolygonF corners(const QVector<qreal> &numbers) {
    QPolygonF polygon;
    for (int i = 0; i + 1 < numbers.size(); i += 2) {
        polygon.append(QPointF(numbers[i], numbers[i + 1]));
    }
    return polygon;
}

bool outline(const QJsonObject &shape, QPainterPath &path) {
    QVector<qreal> at;
    if (!readNumbers(shape.value(QStringLiteral("at")), at)) {
        return false;
    }
    const QString kind = shape.value(QStringLiteral("kind")).toString();
    if (kind == QLatin1String("polygon") || kind == QLatin1String("polyline")) {
        if (at.size() < 4 || at.size() % 2) {
            return false;
        }
        path.addPolygon(corners(at));
        if (kind == QLatin1String("polygon")) {
            path.closeSubpath();
        }
        return true;
    }
    if (at.size() != 4) {
        return false;
    }
    const QRectF rect(at[0], at[1], at[2], at[3]);
    if (kind == QLatin1String("rect")) {
        const qreal radius = shape.value(QStringLiteral("radius")).toDouble();
        path.addRoundedRect(rect, radius, radius);
        return true;
    }
    if (kind == QLatin1String("ellipse")) {
        path.addEllipse(rect);
        return true;
    }
    return false;
}

bool drawShape(QPainter &painter, const QJsonObject &shape) {
    QPainterPath path;
    QColor fill;
    QColor bottom;
    QColor line;
    if (!outline(shape, path) || !readColor(shape, QStringLiteral("fill"), fill) ||
        !readColor(shape, QStringLiteral("fillBottom"), bottom) ||
        !readColor(shape, QStringLiteral("line"), line)) {
        return false;
    }
    if (fill.isValid()) {
        const QRectF bounds = path.boundingRect();
        QLinearGradient gradient(bounds.topLeft(), bounds.bottomLeft());
        gradient.setColorAt(0, fill);
        gradient.setColorAt(1, bottom.isValid() ? bottom : fill);
        painter.fillPath(path, gradient);
    }
    if (line.isValid()) {
        const qreal width = shape.value(QStringLiteral("lineWidth")).toDouble(1.0);
        painter.strokePath(path, QPen(line, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    }
    return true;
}

} // namespace

bool readThemeColor(const QString &text, QColor &color) {
    const bool sized = text.size() == 7 || text.size() == 9;
    const QColor read = sized && text.startsWith(QLatin1Char('#')) ? QColor(text) : QColor();
    if (!read.isValid()) {
        return false;
    }
    color = read;
    return true;
}

QImage ThemePicture::render(const QJsonObject &description, int ratio, QString *error) {
    const int width = description.value(QStringLiteral("width")).toInt();
    const int height = description.value(QStringLiteral("height")).toInt();
    if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) {
        *error = ThemeWords::tr("“width”和“height”应为1到512的整数");
        return {};
    }
    QImage image(width * ratio, height * ratio, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QJsonArray shapes = description.value(QStringLiteral("shapes")).toArray();
    for (int i = 0; i < shapes.size(); ++i) {
        if (!drawShape(painter, shapes[i].toObject())) {
            *error = ThemeWords::tr("第%1个图形无法识别").arg(i + 1);
            return {};
        }
    }
    return image;
}

} // namespace GZ
