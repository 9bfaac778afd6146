#include "toolkit/text/GlyphPictures.h"

#include "host/toolkit/QtCompat.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cstring>
#include <utility>

namespace GZ {
namespace {

constexpr int kPhases = 4; ///< parts of a device pixel that Qt places glyphs at
constexpr int kBlock = 4; ///< pixels that are copied at a time
constexpr int kPixel = sizeof(QRgb);

/// A place in phases, as Qt cuts it.
int placeOf(qreal x, qreal ratio) {
    return (static_cast<int>(x * ratio * kPlaceSteps) + kGlyphLead) / (kPlaceSteps / kPhases);
}

const QRgb *rowOf(const QImage &image, int y) {
    return reinterpret_cast<const QRgb *>(image.constScanLine(y));
}

/// The columns from the first to the one behind the last in which a picture shows anything but the ground.
std::pair<int, int> inkedColumns(const QImage &image, QRgb ground) {
    int left = image.width();
    int right = 0;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb *row = rowOf(image, y);
        for (int x = 0; x < image.width(); ++x) {
            if (row[x] != ground) {
                left = std::min(left, x);
                right = std::max(right, x + 1);
            }
        }
    }
    return {left, right};
}

/// Copies columns of one strip, which begins at `left`, into another. Whole blocks are copied, which is quick: of the
/// columns behind `end`, up to a block less one are copied too.
void copyColumns(const GlyphPictures::Strip &from, int left, GlyphPictures::Strip &to, int begin, int end) {
    const uchar *source = from.picture.constBits() + (begin - left) * kPixel;
    uchar *target = to.picture.bits() + (begin - to.left) * kPixel;
    const int sourceStride = from.picture.bytesPerLine();
    const int targetStride = to.picture.bytesPerLine();
    const int size = (end - begin) * kPixel;
    for (int rows = from.picture.height(); rows > 0; --rows) {
        for (int byte = 0; byte < size; byte += kBlock * kPixel) {
            std::memcpy(target + byte, source + byte, kBlock * kPixel);
        }
        source += sourceStride;
        target += targetStride;
    }
}

} // namespace

const GlyphPictures::Strip &GlyphPictures::inkOf(const GlyphLayout &layout, const Piece &piece) {
    const auto known = mInks.find(piece);
    return known != mInks.end() ? known->second : mInks.emplace(piece, drawInk(layout, piece)).first->second;
}

GlyphPictures::Strip GlyphPictures::drawInk(const GlyphLayout &layout, const Piece &piece) const {
    GlyphLine line;
    line.glyphs.append(piece.glyph);
    line.lefts.append(0);
    if (piece.next) {
        line.glyphs.append(piece.next);
        line.lefts.append(double(piece.step) / kPhases / mLook.ratio);
    }
    line.advance = line.lefts.last() + line.glyphs.last()->advance;
    const int height = qRound(mLook.height * mLook.ratio);
    // No plain character reaches further than a line is high.
    const int margin = kBlock + qCeil((piece.glyph->ascent + piece.glyph->descent) * mLook.ratio);
    QImage room(qCeil(line.advance * mLook.ratio) + 2 * margin, height, QImage::Format_RGB32);
    room.setDevicePixelRatio(mLook.ratio);
    room.fill(mLook.ground);
    QPainter painter(&room);
    painter.setPen(QColor::fromRgba(mLook.pen));
    const QPointF start((margin + double(piece.phase) / kPhases) / mLook.ratio, 0);
    layout.draw(painter, line.originIn(QRect(0, 0, 0, mLook.height), Qt::AlignLeft) + start, line);
    painter.end();
    const auto [left, right] = inkedColumns(room, mLook.ground);
    const int width = right - left;
    return width > 0 ? Strip{room.copy(left, 0, width + kBlock, height), left - margin, width} : Strip();
}

/// Finds the ink of all characters of a line. False when they are of several fonts, which share no baseline.
bool GlyphPictures::place(const GlyphLayout &layout, const GlyphLine &line, qreal left, PlacedInks &inks) {
    for (int i = 0; i < line.glyphs.size(); ++i) {
        const Glyph *glyph = line.glyphs[i];
        if (glyph->ascent != line.glyphs[0]->ascent || glyph->descent != line.glyphs[0]->descent) {
            return false;
        }
        const int place = placeOf(left + line.lefts[i], mLook.ratio);
        const Strip &ink = inkOf(layout, {glyph, nullptr, place % kPhases, 0});
        if (ink.width > 0) {
            inks.append({glyph, place, &ink, place / kPhases + ink.left});
        }
    }
    return true;
}

/// Draws the columns that two characters share, up to `edge`, where the ink of the first ends.
bool GlyphPictures::join(const GlyphLayout &layout, const Placed &letter, const Placed &next, int edge,
                         Strip &strip) {
    if (letter.end() < edge || letter.left > next.left || next.end() < edge) {
        return false;
    }
    const int phase = letter.place % kPhases;
    const Strip &both = inkOf(layout, {letter.glyph, next.glyph, phase, next.place - letter.place});
    copyColumns(both, letter.place / kPhases + both.left, strip, next.left, edge);
    return true;
}

GlyphPictures::Strip GlyphPictures::compose(const GlyphLayout &layout, const GlyphLine &line, qreal left) {
    PlacedInks letters;
    if (left < 0 || !place(layout, line, left, letters) || letters.isEmpty()) {
        return {};
    }
    int end = 0;
    Strip strip{QImage(), letters[0].left, 0};
    for (const Placed &letter : letters) {
        strip.left = std::min(strip.left, letter.left);
        end = std::max(end, letter.end());
    }
    strip.width = end - strip.left;
    strip.picture = QImage(strip.width + kBlock, letters[0].ink->picture.height(), QImage::Format_RGB32);
    strip.picture.setDevicePixelRatio(mLook.ratio);
    strip.picture.fill(mLook.ground);
    int edge = strip.left; // of the ink so far
    for (int i = 0; i < letters.size(); ++i) {
        const Placed &letter = letters[i];
        const bool meets = letter.left < edge;
        copyColumns(*letter.ink, letter.left, strip, std::max(letter.left, edge), letter.end());
        const bool crowded = meets && i > 1 && letters[i - 2].end() > letter.left;
        if (crowded || (meets && !join(layout, letters[i - 1], letter, edge, strip))) {
            return {};
        }
        edge = std::max(edge, letter.end());
    }
    return strip;
}

} // namespace GZ
