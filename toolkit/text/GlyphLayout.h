#pragma once

#include <QFont>
#include <QHash>
#include <QPointF>
#include <QRawFont>
#include <QVarLengthArray>
#include <QVector>

#include <unordered_map>

class QPainter;
class QRect;

namespace GZ {

constexpr int kPlaceSteps = 64; ///< parts of a pixel that Qt counts places in when it lays texts out

/// A character by itself. Lengths are in pixels.
struct Glyph {
    int font = -1; ///< in the layout's table; negative for a character that needs shaping
    quint32 index = 0;
    qreal advance = 0;
    qreal ascent = 0;
    qreal descent = 0;
};

/// A text as it is laid out, in pixels. The glyphs belong to the layout.
struct GlyphLine {
    QVarLengthArray<const Glyph *, 64> glyphs;
    QVarLengthArray<qreal, 64> lefts; ///< of the glyphs
    qreal advance = 0;

    /// The left end of the baseline of the line in a rectangle: horizontally by the alignment, vertically centred.
    QPointF originIn(const QRect &rect, Qt::Alignment alignment) const;
};

/// Lays texts of one font out, each character and each pair of neighbours being shaped once.
class GlyphLayout {
public:
    explicit GlyphLayout(const QFont &font) : mFont(font) {}

    const QFont &font() const { return mFont; }
    /// Lays a text out; false when it needs shaping, or is long.
    bool layOut(const QString &text, GlyphLine &line);
    /// Draws a line with the painter's pen from the left end of its baseline.
    void draw(QPainter &painter, const QPointF &origin, const GlyphLine &line) const;
    /// Whether more is kept than a window's texts have need of.
    bool isFull() const;
    /// Ends all lines.
    void clear();

private:
    /// A character in the run of a script: it may have another glyph in each.
    struct Letter {
        QChar character;
        QChar::Script script;
        quint64 key() const { return quint64(script) << 16 | character.unicode(); }
    };
    using Letters = QVarLengthArray<Letter, 64>;

    static bool split(const QString &text, Letters &letters);
    const Glyph &glyphOf(const Letter &letter);
    qreal stepBetween(const Letter &letter, const Letter &next);
    int indexOfFont(const QRawFont &font);

    QFont mFont;
    QVector<QRawFont> mRawFonts; ///< the font, and those that stand in for it
    std::unordered_map<quint64, Glyph> mGlyphs; ///< a glyph stays where it is, as in no QHash of Qt 6
    QHash<quint64, qreal> mSteps; ///< by both letters
};

} // namespace GZ
