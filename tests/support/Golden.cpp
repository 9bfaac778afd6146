#include "tests/support/Golden.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cstdlib>

namespace tests {
namespace {

const char *const kAcceptVariable = "TIMESHARE_ACCEPT_GOLDEN";

/// Where the picture is that all versions of Qt are to draw.
QString sharedPath(const QString &name) {
    return QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/golden/images/%1.png").arg(name);
}

/// Where that of Qt 6 is when its texts lie otherwise.
QString ownPath(const QString &name) {
    return QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/golden/images/qt6/%1.png").arg(name);
}

bool hasOwn(const QString &name) {
    return QT_VERSION_MAJOR == 6 && QFile::exists(ownPath(name));
}

QString goldenPath(const QString &name) {
    return hasOwn(name) ? ownPath(name) : sharedPath(name);
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

/// Qt 6 takes a picture of its own only where it does not draw that of all.
::testing::AssertionResult accept(const QImage &actual, const QString &name, const GoldenTolerance &tolerance) {
    const bool alike = compareImages(actual, QImage(sharedPath(name)), tolerance).accepted;
    if (QT_VERSION_MAJOR == 6 && alike) {
        QFile::remove(ownPath(name));
        return ::testing::AssertionSuccess();
    }
    const QString path = QT_VERSION_MAJOR == 6 ? ownPath(name) : sharedPath(name);
    if (!QDir().mkpath(QFileInfo(path).path()) || !actual.save(path)) {
        return ::testing::AssertionFailure() << "cannot write " << path.toStdString();
    }
    return ::testing::AssertionSuccess() << "accepted " << path.toStdString();
}

const QRgb *rowOf(const QImage &image, int y) {
    return reinterpret_cast<const QRgb *>(image.constScanLine(y));
}

int channelDifference(QRgb a, QRgb b) {
    if (a == b) {
        return 0;
    }
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

/// How far a pixel is beyond all pixels of an image around a place, in the channel where that is most.
int beyondAll(QRgb pixel, const QImage &image, const QRect &around) {
    const QRect room = around & image.rect();
    int beyond = 0;
    for (const int shift : {0, 8, 16, 24}) {
        const auto channel = [shift](QRgb of) { return int(of >> shift & 255); };
        int least = 255;
        int most = 0;
        for (int y = room.top(); y <= room.bottom(); ++y) {
            for (int x = room.left(); x <= room.right(); ++x) {
                least = std::min(least, channel(image.pixel(x, y)));
                most = std::max(most, channel(image.pixel(x, y)));
            }
        }
        beyond = std::max({beyond, least - channel(pixel), channel(pixel) - most});
    }
    return beyond;
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
        const QRgb *a = rowOf(left, y);
        const QRgb *b = rowOf(right, y);
        auto *shown = reinterpret_cast<QRgb *>(difference.picture.scanLine(y));
        for (int x = 0; x < left.width(); ++x) {
            const int apart = channelDifference(a[x], b[x]);
            const bool differs = apart > tolerance.channel;
            difference.pixels += differs ? 1 : 0;
            difference.largest = std::max(difference.largest, apart);
            shown[x] = differs ? qRgb(255, 0, 0) : pale(b[x]);
        }
    }
    const double allowed = tolerance.share * left.width() * left.height();
    difference.accepted = difference.pixels <= allowed;
    return difference;
}

int pixelsWithoutLike(const QImage &actual, const QImage &expected, int reach) {
    if (actual.size() != expected.size()) {
        return actual.width() * actual.height();
    }
    constexpr int kBlend = 64; // of 255
    const QImage left = actual.convertToFormat(QImage::Format_ARGB32);
    const QImage right = expected.convertToFormat(QImage::Format_ARGB32);
    int count = 0;
    for (int y = 0; y < left.height(); ++y) {
        const QRgb *a = rowOf(left, y);
        const QRgb *b = rowOf(right, y);
        for (int x = 0; x < left.width(); ++x) {
            const QRect around(x - reach, y - reach, 2 * reach + 1, 2 * reach + 1);
            count += channelDifference(a[x], b[x]) > kBlend && beyondAll(a[x], right, around) > kBlend;
        }
    }
    return count;
}

::testing::AssertionResult matchesGolden(const QImage &actual, const QString &name,
                                         const GoldenTolerance &tolerance) {
    if (qEnvironmentVariableIntValue(kAcceptVariable) == 1) {
        return accept(actual, name, tolerance);
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

QImage onScreen(const QWidget &widget) {
    const QPoint at = widget.mapTo(widget.window(), QPoint());
    return QGuiApplication::primaryScreen()
        ->grabWindow(widget.window()->winId(), at.x(), at.y(), widget.width(), widget.height())
        .toImage()
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QString goldenName(const QString &name, double ratio) {
    return ratio == 1.0 ? name : QStringLiteral("%1@%2x").arg(name).arg(ratio);
}

} // namespace tests
