#include "toolkit/text/GlyphLayout.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRect>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace GZ {
namespace {

constexpr int kLongest = 256; ///< characters of a text that is worth composing
constexpr int kMostGlyphs = 1024;
constexpr int kMostSteps = 16384;
constexpr qreal kNoStep = -1.0;

/// Whether a character stands for itself wherever it is in a line.
bool isPlain(QChar character) {
    if (character >= QLatin1Char(' ') && character <= QLatin1Char('~')) {
        return true;
    }
    switch (character.direction()) {
    case QChar::DirL:
    case QChar::DirEN:
    case QChar::DirES:
    case QChar::DirET:
    case QChar::DirCS:
    case QChar::DirWS:
    case QChar::DirON:
        break;
    default:
        return false;
    }
    const QChar::Script script = character.script();
    return (script == QChar::Script_Common || script == QChar::Script_Latin || script == QChar::Script_Han) &&
           !character.isSurrogate() && !character.isMark() && character.isPrint();
}

/// Another number for every number, so that all of its bits count in the hash of Qt.
quint64 spread(quint64 key) {
    return key * 0x9e3779b97f4a7c15U;
}

/// Whether glyphs of two fonts are the same. Qt opens a font anew for every script.
bool isSameFace(const QRawFont &one, const QRawFont &other) {
    return one == other ||
           (one.pixelSize() == other.pixelSize() && one.style() == other.style() &&
            one.weight() == other.weight() && one.hintingPreference() == other.hintingPreference() &&
            one.fontTable("head") == other.fontTable("head"));
}

/// What Qt makes of a character or two.
struct Shaped {
    QVector<QRawFont> fonts; ///< of the glyphs
    QVector<quint32> glyphs;
    QVector<QPointF> places;
    qreal advance = 0;
    qreal ascent = 0;
    qreal descent = 0;

    /// Takes the first glyph away, and the room in front of the next.
    void removeFirst() {
        const qreal room = places.value(1, QPointF(advance, 0)).x();
        fonts.removeFirst();
        glyphs.removeFirst();
        places.removeFirst();
        for (QPointF &place : places) {
            place.rx() -= room;
        }
        advance -= room;
    }
};

/// Shapes a text as it is in the run of a script. For that, a letter of the script stands before it.
Shaped shape(const QFont &font, QChar::Script script, QString text) {
    const bool led = text[0].script() == QChar::Script_Common && script != QChar::Script_Common;
    if (led) {
        text.prepend(script == QChar::Script_Han ? QChar(0x4e2d) : QLatin1Char('x'));
    }
    QTextLayout layout(text, font);
    QTextOption option;
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    Shaped shaped;
    for (const QGlyphRun &run : layout.glyphRuns()) {
        shaped.glyphs += run.glyphIndexes();
        shaped.places += run.positions();
        shaped.fonts += QVector<QRawFont>(run.glyphIndexes().size(), run.rawFont());
    }
    shaped.advance = line.horizontalAdvance();
    shaped.ascent = line.ascent();
    shaped.descent = line.descent();
    if (led && !shaped.glyphs.isEmpty()) {
        shaped.removeFirst();
    }
    return shaped;
}

} // namespace

QPointF GlyphLine::originIn(const QRect &rect, Qt::Alignment alignment) const {
    qreal ascent = 0;
    qreal descent = 0;
    for (const Glyph *glyph : glyphs) {
        ascent = std::max(ascent, glyph->ascent);
        descent = std::max(descent, glyph->descent);
    }
    const qreal spare = rect.width() - advance;
    const qreal left = alignment & Qt::AlignRight ? spare : alignment & Qt::AlignHCenter ? spare / 2 : 0;
    return {std::trunc((rect.x() + left) * kPlaceSteps) / kPlaceSteps,
            rect.y() + (rect.height() - ascent - descent) / 2 + ascent};
}

bool GlyphLayout::isFull() const {
    return int(mGlyphs.size()) > kMostGlyphs || mSteps.size() > kMostSteps;
}

void GlyphLayout::clear() {
    mGlyphs.clear();
    mSteps.clear();
}

int GlyphLayout::indexOfFont(const QRawFont &font) {
    const auto isFace = [&font](const QRawFont &other) { return isSameFace(font, other); };
    const auto known = std::find_if(mRawFonts.cbegin(), mRawFonts.cend(), isFace);
    if (known != mRawFonts.cend()) {
        return static_cast<int>(known - mRawFonts.cbegin());
    }
    mRawFonts.append(font);
    return mRawFonts.size() - 1;
}

/// Gives every character the script of its run: digits and signs follow what stands before them, at the beginning
/// what comes. False when one of them needs shaping.
bool GlyphLayout::split(const QString &text, Letters &letters) {
    QChar::Script script = QChar::Script_Common;
    for (const QChar character : text) {
        if (!isPlain(character)) {
            return false;
        }
        if (character.script() != QChar::Script_Common && character.script() != script) {
            if (script == QChar::Script_Common) {
                for (Letter &letter : letters) {
                    letter.script = character.script();
                }
            }
            script = character.script();
        }
        letters.append({character, script});
    }
    return true;
}

const Glyph &GlyphLayout::glyphOf(const Letter &letter) {
    const auto known = mGlyphs.find(letter.key());
    if (known != mGlyphs.end()) {
        return known->second;
    }
    const Shaped shaped = shape(mFont, letter.script, QString(letter.character));
    Glyph glyph;
    if (shaped.glyphs.size() == 1) {
        glyph = {indexOfFont(shaped.fonts[0]), shaped.glyphs[0], shaped.advance, shaped.ascent, shaped.descent};
    }
    return mGlyphs.emplace(letter.key(), glyph).first->second;
}

/// Pixels from the left of a letter to that of the next, kerning included; negative for a pair that is not its two
/// letters side by side.
qreal GlyphLayout::stepBetween(const Letter &letter, const Letter &next) {
    const quint64 pair = spread(letter.key() << 32 | next.key());
    const auto known = mSteps.constFind(pair);
    if (known != mSteps.constEnd()) {
        return *known;
    }
    const Glyph &left = glyphOf(letter);
    const Glyph &right = glyphOf(next);
    const Shaped shaped = shape(mFont, letter.script, QString(letter.character) + next.character);
    const bool apart = shaped.glyphs == QVector<quint32>{left.index, right.index} &&
                       indexOfFont(shaped.fonts[0]) == left.font &&
                       indexOfFont(shaped.fonts[1]) == right.font && qFuzzyIsNull(shaped.places[0].x()) &&
                       shaped.places[0].y() == shaped.places[1].y() &&
                       qFuzzyCompare(1.0 + shaped.advance, 1.0 + shaped.places[1].x() + right.advance);
    return *mSteps.insert(pair, apart ? shaped.places[1].x() : kNoStep);
}

bool GlyphLayout::layOut(const QString &text, GlyphLine &line) {
    Letters letters;
    if (text.isEmpty() || text.size() > kLongest || !split(text, letters)) {
        return false;
    }
    for (int i = 0; i < letters.size(); ++i) {
        const Glyph &glyph = glyphOf(letters[i]);
        const qreal step = i == 0 || glyph.font < 0 ? 0.0 : stepBetween(letters[i - 1], letters[i]);
        if (glyph.font < 0 || step < 0) {
            return false;
        }
        line.advance += step;
        line.glyphs.append(&glyph);
        line.lefts.append(line.advance);
    }
    line.advance += line.glyphs.last()->advance;
    return true;
}

void GlyphLayout::draw(QPainter &painter, const QPointF &origin, const GlyphLine &line) const {
    QVarLengthArray<quint32, 64> indexes;
    QVarLengthArray<QPointF, 64> places;
    const int count = line.glyphs.size();
    for (int i = 0; i < count; ++i) {
        indexes.append(line.glyphs[i]->index);
        places.append(QPointF(line.lefts[i], 0.0));
        const int font = line.glyphs[i]->font;
        if (i + 1 == count || line.glyphs[i + 1]->font != font) {
            QGlyphRun run;
            run.setRawFont(mRawFonts[font]);
            run.setRawData(indexes.constData(), places.constData(), indexes.size());
            painter.drawGlyphRun(origin, run);
            indexes.clear();
            places.clear();
        }
    }
}

} // namespace GZ
