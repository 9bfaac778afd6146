#pragma once

/// \file
/// Golden pictures: what is drawn, compared with a picture that somebody has looked at and accepted.
///
/// The accepted pictures are tests/golden/images/NAME.png. A drawing that differs, or that has no accepted picture
/// yet, fails, and its pictures are kept in golden/ below the build directory: NAME.actual.png, NAME.expected.png
/// and NAME.difference.png. Run the test with TIMESHARE_ACCEPT_GOLDEN=1 in the environment to accept what it
/// draws, and look at every picture before committing it. Qt 6 lays texts out otherwise: where that is seen, its
/// pictures are tests/golden/images/qt6/NAME.png (tests/golden/images/qt6/README.md).

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>

#include <gtest/gtest.h>

#include <functional>

class QPainter;
class QWidget;

namespace tests {

/// How far two pictures may be apart.
struct GoldenTolerance {
    int channel = 8; ///< a pixel differs when one of its channels does by more
    double share = 0.0002; ///< of the pixels that may differ
};

struct GoldenDifference {
    int pixels = 0; ///< that differ
    int largest = 0; ///< difference of a channel
    bool accepted = false;
    QImage picture; ///< differing pixels in red on a pale copy; null when the sizes differ
};

/// Compares two pictures; of different sizes, they are never accepted.
GoldenDifference compareImages(const QImage &actual, const QImage &expected, const GoldenTolerance &tolerance);

/// Pixels of a picture that are like none within `reach` pixels of their place in another of the same size: a channel is
/// beyond all of those by more than letters lose that lie at another part of a pixel. All pixels where sizes differ.
int pixelsWithoutLike(const QImage &actual, const QImage &expected, int reach);

/// Whether a picture is the accepted one of that name: EXPECT_TRUE(matchesGolden(image, "name")).
::testing::AssertionResult matchesGolden(const QImage &actual, const QString &name,
                                         const GoldenTolerance &tolerance = {});

/// A drawing of a size in pixels, at a device pixel ratio.
QImage rendered(const QSize &size, double ratio, const QColor &background,
                const std::function<void(QPainter &)> &draw);
/// The same of a widget with its children, as large as it is.
QImage rendered(QWidget &widget, double ratio);

/// What stands on the screen where a widget of a shown window is, from all repaints so far; nothing is painted for it.
QImage onScreen(const QWidget &widget);

/// "name" at ratio 1, "name@2x" at ratio 2.
QString goldenName(const QString &name, double ratio);

} // namespace tests
