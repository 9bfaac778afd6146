// Styles that are marks at the points: dots, texts, numbers, images.

#include "host/drawing/CDrawStyle.h"

#include "host/toolkit/CUiResource.h"
#include "host/toolkit/Text.h"
#include "toolkit/drawing/ChartCanvas.h"
#include "toolkit/drawing/DrawLook.h"
#include "toolkit/drawing/DrawSizes.h"

#include <QFontMetrics>
#include <QPixmap>

namespace TC {
namespace {

constexpr int kMarkDistance = 2; // pixels between a point and the text or image at it
constexpr int kMostDecimals = 4;

/// Calls `draw(index, column, row)` for the drawn points of a span whose row lies inside the rectangle.
template <class Draw>
void forEachPlaced(const ChartCanvas &canvas, const SeriesLine &points, const ValueScale &scale, int start,
                   int end, int last, Draw draw) {
    const IndexSpan span = heldSpan(start, end, points.size(), last);
    if (points.isHidden() || !scale.isUsable() || !canvas.isUsable()) {
        return;
    }
    for (int i = span.first; i <= span.last; ++i) {
        const double row = points.has(i) ? scale.rowOf(points.value(i)) : -1.0;
        if (points.has(i) && canvas.holdsRow(row)) {
            draw(i, columnOfIndex(canvas.rect(), last, i), row);
        }
    }
}

/// Writes texts in the font of the theme, inside a rectangle.
class TextWriter {
public:
    TextWriter(QPainter *painter, const QRect &rect)
        : mPainter(painter), mRect(rect), mClip(painter, rect, true),
          mFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text"))), mMetrics(mFont) {
        mPainter->setFont(mFont);
    }

    int height() const { return mMetrics.height(); }

    /// A text whose middle is a column and whose last row is `bottom`, moved aside where it would stick out.
    void write(const QString &text, int column, double bottom, QRgb color) {
        const int width = mMetrics.horizontalAdvance(text);
        const int left = std::max(std::min(column - width / 2, mRect.right() + 1 - width), mRect.left());
        const int lowest = std::clamp(static_cast<int>(bottom), mRect.top() + height() - 1,
                                      std::max(mRect.bottom(), mRect.top() + height() - 1));
        mPainter->setPen(QColor::fromRgba(color));
        mPainter->drawText(left, lowest - mMetrics.descent(), text);
    }

private:
    QPainter *mPainter;
    QRect mRect;
    ClipScope mClip;
    QFont mFont;
    QFontMetrics mMetrics;
};

/// A number with as many decimals as it needs, up to four.
QString numberText(double number) {
    QString text = GZ::formatDoubleNumber(number, kMostDecimals, 0, false, QString());
    while (text.contains(QLatin1Char('.')) && text.endsWith(QLatin1Char('0'))) {
        text.chop(1);
    }
    if (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text;
}

/// Writes `textOf(points, index)` over each point.
template <class TextOf>
void drawTexts(QPainter *painter, const QRect &rect, const CDrawStyle::Series &series,
               const CDrawStyle::Range &range, int line, int start, int end, int last, TextOf textOf) {
    const SeriesLine points(series, line);
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    const ChartCanvas canvas(painter, rect);
    if (!canvas.isUsable() || points.isHidden()) {
        return;
    }
    TextWriter writer(painter, rect);
    forEachPlaced(canvas, points, ValueScale(rect, range), start, end, last,
                  [&](int i, int column, double row) {
                      const QString text = textOf(points, i);
                      if (!text.isEmpty()) {
                          writer.write(text, column, row - kMarkDistance, points.color(i, ofTheme));
                      }
                  });
}

} // namespace

void CDrawStyle::drawCircleDot(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, int, bool, bool) {
    const SeriesLine points(series, line);
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    ChartCanvas canvas(painter, rect);
    const int diameter = dotDiameter(stepOfAxis(rect, last));
    const auto disc = discRows(canvas.grid().strokeWidth(diameter));
    forEachPlaced(canvas, points, ValueScale(rect, range), start, end, last,
                  [&](int i, int column, double row) {
                      const QPointF corner = canvas.device(column - diameter / 2, row - diameter / 2);
                      canvas.fillDisc(corner, disc, points.color(i, ofTheme));
                  });
}

void CDrawStyle::drawText(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                          int line, int start, int end, int last, int) {
    drawTexts(painter, rect, series, range, line, start, end, last,
              [](const SeriesLine &points, int i) { return GZ::sToQs(points.text(i)); });
}

void CDrawStyle::drawNumber(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                            int line, int start, int end, int last, int, bool) {
    drawTexts(painter, rect, series, range, line, start, end, last, [](const SeriesLine &points, int i) {
        return numberText(points.hasSecond(i) ? points.second(i) : points.value(i));
    });
}

void CDrawStyle::drawTextEx(QPainter *painter, const QRect &rect, const Series &series, const Range &, int line,
                            int last, int) {
    const SeriesLine points(series, line);
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    const ChartCanvas canvas(painter, rect);
    const IndexSpan span = heldSpan(0, last, points.size(), last);
    if (!canvas.isUsable() || points.isHidden() || span.isEmpty()) {
        return;
    }
    TextWriter writer(painter, rect);
    for (int i = span.first; i <= span.last; ++i) {
        if (points.has(i) && !points.text(i).empty()) {
            const double share = std::clamp(points.value(i), 0.0, 1.0);
            const double middle = rect.top() + share * (rect.height() - 1);
            writer.write(GZ::sToQs(points.text(i)), columnOfIndex(rect, last, i), middle + writer.height() / 2,
                         points.color(i, ofTheme));
        }
    }
}

void CDrawStyle::drawIcon(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                          int line, int start, int end, int last, const QPixmap &image, int) {
    const SeriesLine points(series, line);
    const ChartCanvas canvas(painter, rect);
    if (image.isNull() || !canvas.isUsable()) {
        return;
    }
    const ClipScope clip(painter, rect, true);
    const int width = static_cast<int>(image.width() / image.devicePixelRatio());
    forEachPlaced(
        canvas, points, ValueScale(rect, range), start, end, last, [&](int i, int column, double row) {
            if (points.value(i) != 0.0) {
                painter->drawPixmap(column - width / 2, static_cast<int>(row) + 1 + kMarkDistance, image);
            }
        });
}

} // namespace TC
