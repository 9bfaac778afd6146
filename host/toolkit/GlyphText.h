#pragma once

#include "host/Export.h"

#include <Qt>

#include <memory>

class QColor;
class QFont;
class QPainter;
class QRect;
class QString;

namespace GZ {

/// Plain texts of one line in one font, measured and drawn from glyphs that are looked up once: the pixels of
/// QPainter::drawText() in a fraction of its time, for texts that change with every move of the mouse. A text that
/// needs shaping, such as one with combining marks or from right to left, is left to QPainter.
///
/// Of one thread.
class TIMESHARE_EXPORT GlyphText {
public:
    explicit GlyphText(const QFont &font);
    ~GlyphText();
    GlyphText(const GlyphText &) = delete;
    GlyphText &operator=(const GlyphText &) = delete;
    /// The texts in a font of the current theme, by its key; kept for each thread until the theme changes.
    static GlyphText &ofTheme(const QString &fontKey);

    const QFont &font() const;
    /// Pixels that a line takes, as QFontMetrics::height() tells them.
    int height() const;
    /// Pixels that a text takes, as QFontMetrics::horizontalAdvance() tells them.
    int width(const QString &text);
    /// Draws a text with the painter's pen, placed in a rectangle like QPainter::drawText() places it: horizontally by
    /// Qt::AlignLeft, AlignHCenter or AlignRight, vertically centred. It is not cut at the rectangle's edges.
    void draw(QPainter &painter, const QRect &rect, Qt::Alignment alignment, const QString &text);
    /// The same over an opaque ground of one colour that has been painted: characters are copied with their ground, which
    /// is quicker still. It is cut at the upper and the lower edge of the rectangle.
    void drawOn(QPainter &painter, const QColor &ground, const QRect &rect, Qt::Alignment alignment,
                const QString &text);

private:
    struct Private;
    std::unique_ptr<Private> mPrivate;
};

} // namespace GZ
