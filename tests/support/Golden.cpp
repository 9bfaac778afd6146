#include "tests/support/Golden.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cstdlib>

namespace tests {
namespace {

const char *const kAcceptVariable = "TIMESHARE_ACCEPT_GOLDEN";

QString goldenPath(const QString &name) {
    return QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/golden/images/%1.png").arg(name);
}

QString keptPath(const QString &name, const char *kind) {
    return QStringLiteral(TIMESHARE_BINARY_DIR "/golden/%1.%2.png").arg(name, QLatin1String(kind));
}

/// Writes a picture and answers a line that says where.
std::string keep(const QImage &image, const QString &name, const char *kind) {
    if (image.isNull()) {
        return std::string();
    }
    const QString path = keptPath(name, kind);
    QDir().mkpath(QStringLiteral(TIMESHARE_BINARY_DIR "/golden"));
    const bool written = image.save(path);
    return std::string(written ? "\n  " : "\n  not written: ") + kind + ": " + path.toStdString();
}

::testing::AssertionResult accept(const QImage &actual, const QString &name) {
    const QString path = goldenPath(name);
    if (!QDir().mkpath(QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/golden/images")) || !actual.save(path)) {
        return ::testing::AssertionFailure() << "cannot write " << path.toStdString();
    }
    return ::testing::AssertionSuccess() << "accepted " << path.toStdString();
}

int channelDifference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

QRgb pale(QRgb color) {
    const int gray = 192 + qGray(color) / 4;
    return qRgb(gray, gray, gray);
}

} // namespace

GoldenDifference compareImages(const QImage &actual, const QImage &expected, const GoldenTolerance &tolerance) {
    GoldenDifference difference;
    if (actual.size() != expected.size() || actual.isNull()) {
        return difference;
    }
    const QImage left = actual.convertToFormat(QImage::Format_ARGB32);
    const QImage right = expected.convertToFormat(QImage::Format_ARGB32);
    difference.picture = QImage(left.size(), QImage::Format_RGB32);
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const int apart = channelDifference(left.pixel(x, y), right.pixel(x, y));
            const bool differs = apart > tolerance.channel;
            difference.pixels += differs ? 1 : 0;
            difference.largest = std::max(difference.largest, apart);
            difference.picture.setPixel(x, y, differs ? qRgb(255, 0, 0) : pale(right.pixel(x, y)));
        }
    }
    const double allowed = tolerance.share * left.width() * left.height();
    difference.accepted = difference.pixels <= allowed;
    return difference;
}

::testing::AssertionResult matchesGolden(const QImage &actual, const QString &name,
                                         const GoldenTolerance &tolerance) {
    if (qEnvironmentVariableIntValue(kAcceptVariable) == 1) {
        return accept(actual, name);
    }
    const QImage expected(goldenPath(name));
    if (expected.isNull()) {
        return ::testing::AssertionFailure() << "no accepted picture " << goldenPath(name).toStdString()
                                             << "; look at the actual one, then run again with "
                                             << kAcceptVariable << "=1" << keep(actual, name, "actual");
    }
    const GoldenDifference difference = compareImages(actual, expected, tolerance);
    if (difference.accepted) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << name.toStdString() << ": " << difference.pixels << " pixels differ, a channel by up to "
           << difference.largest << "; sizes " << actual.width() << "x" << actual.height() << " and "
           << expected.width() << "x" << expected.height() << keep(actual, name, "actual")
           << keep(expected, name, "expected") << keep(difference.picture, name, "difference");
}

QImage rendered(const QSize &size, double ratio, const QColor &background,
                const std::function<void(QPainter &)> &draw) {
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(background);
    QPainter painter(&image);
    draw(painter);
    return image;
}

QImage rendered(QWidget &widget, double ratio) {
    return rendered(widget.size(), ratio, Qt::transparent, [&](QPainter &painter) { widget.render(&painter); });
}

QImage onScreen(const QWidget &window) {
    return QGuiApplication::primaryScreen()
        ->grabWindow(window.winId())
        .toImage()
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QString goldenName(const QString &name, double ratio) {
    return ratio == 1.0 ? name : QStringLiteral("%1@%2x").arg(name).arg(ratio);
}

} // namespace tests
