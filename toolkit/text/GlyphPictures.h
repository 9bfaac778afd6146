#pragma once

#include "toolkit/text/GlyphLayout.h"

#include <QImage>
#include <QRgb>

#include <functional>
#include <unordered_map>

namespace GZ {

/// Pictures of lines over a ground of one colour, put together from pictures of their characters, each drawn once.
class GlyphPictures {
public:
    /// What a picture of a character depends on, beside its font.
    struct Look {
        QRgb pen;
        QRgb ground; ///< opaque
        int height; ///< pixels of the rectangle that the line is centred in
        qreal ratio; ///< device pixels per pixel
        bool operator==(const Look &other) const {
            return pen == other.pen && ground == other.ground && height == other.height && ratio == other.ratio;
        }
    };
    /// Columns of a picture as high as the rectangle, in device pixels. More may follow in it, which mean nothing.
    struct Strip {
        QImage picture; ///< null when there is nothing to be drawn
        int left = 0;
        int width = 0;
    };
    explicit GlyphPictures(const Look &look) : mLook(look) {}

    const Look &look() const { return mLook; }
    /// The strip with the ink of a line that begins at `left`, in pixels. Null for a line without ink or of several fonts,
    /// and where more than two characters meet.
    Strip compose(const GlyphLayout &layout, const GlyphLine &line, qreal left);

private:
    /// A character, or two of which the second begins `step` quarters of a device pixel behind the first.
    struct Piece {
        const Glyph *glyph;
        const Glyph *next; ///< may be null
        int phase; ///< quarters of a device pixel that the first begins at
        int step;
        bool operator==(const Piece &other) const {
            return glyph == other.glyph && next == other.next && phase == other.phase && step == other.step;
        }
    };
    struct PieceHash {
        size_t operator()(const Piece &piece) const {
            const std::hash<const Glyph *> hash;
            return hash(piece.glyph) * 31 ^ hash(piece.next) ^ size_t(piece.phase) ^ size_t(piece.step) << 2;
        }
    };
    /// A character at its place in a line.
    struct Placed {
        const Glyph *glyph;
        int place; ///< in quarters of a device pixel
        const Strip *ink; ///< stays where it is
        int left; ///< of the ink, in device pixels, as its end
        int end() const { return left + ink->width; }
    };
    using PlacedInks = QVarLengthArray<Placed, 64>;

    /// The ink of a piece, counted from its place.
    const Strip &inkOf(const GlyphLayout &layout, const Piece &piece);
    Strip drawInk(const GlyphLayout &layout, const Piece &piece) const;
    bool place(const GlyphLayout &layout, const GlyphLine &line, qreal left, PlacedInks &inks);
    bool join(const GlyphLayout &layout, const Placed &letter, const Placed &next, int edge, Strip &strip);

    Look mLook;
    std::unordered_map<Piece, Strip, PieceHash> mInks; ///< a strip stays where it is, as in no QHash of Qt 6
};

} // namespace GZ
