#include "host/toolkit/GlyphText.h"

#include "host/toolkit/ThemeCache.h"
#include "host/toolkit/VectorPainter.h"
#include "toolkit/text/GlyphLayout.h"
#include "toolkit/text/GlyphPictures.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace GZ {
namespace {

constexpr std::size_t kMostLooks = 24; ///< kept for one font

/// Device pixels per pixel where all pixels begin at device pixels; else 0.
qreal evenScale(const QTransform &device) {
    const auto isWhole = [](qreal number) { return number == std::floor(number); };
    const bool even = device.type() <= QTransform::TxScale && device.m11() == device.m22() &&
                      isWhole(device.m11()) && isWhole(device.dx()) && isWhole(device.dy());
    return even ? std::max(device.m11(), 0.0) : 0.0;
}

/// The texts of each font of a theme that has been asked for, by its key.
struct TextsOfTheme {
    std::map<QString, GlyphText> texts;

    static TextsOfTheme ofTheme() { return {}; }
};

} // namespace

struct GlyphText::Private {
    GlyphLayout layout;
    int height;
    std::vector<GlyphPictures> pictures; ///< the newest at the end

    explicit Private(const QFont &font) : layout(font), height(QFontMetrics(font).height()) {}

    /// To be called while no line is worked on.
    void bound() {
        if (layout.isFull()) {
            pictures.clear();
            layout.clear();
        }
    }

    GlyphPictures &picturesOf(const GlyphPictures::Look &look) {
        const auto isLook = [&look](const GlyphPictures &kept) { return kept.look() == look; };
        const auto found = std::find_if(pictures.begin(), pictures.end(), isLook);
        if (found != pictures.end()) {
            return *found;
        }
        if (pictures.size() == kMostLooks) {
            pictures.erase(pictures.begin());
        }
        pictures.emplace_back(look);
        return pictures.back();
    }
};

GlyphText::GlyphText(const QFont &font) : mPrivate(std::make_unique<Private>(font)) {}

GlyphText::~GlyphText() = default;

GlyphText &GlyphText::ofTheme(const QString &fontKey) {
    static thread_local ThemeCache<TextsOfTheme> cache;
    std::map<QString, GlyphText> &texts = cache->texts;
    const auto found = texts.find(fontKey);
    return found != texts.end()
               ? found->second
               : texts.try_emplace(fontKey, CUiResource::instance().getFont(fontKey)).first->second;
}

const QFont &GlyphText::font() const {
    return mPrivate->layout.font();
}

int GlyphText::height() const {
    return mPrivate->height;
}

int GlyphText::width(const QString &text) {
    mPrivate->bound();
    GlyphLine line;
    return mPrivate->layout.layOut(text, line) ? qRound(line.advance)
                                               : QFontMetrics(font()).horizontalAdvance(text);
}

void GlyphText::draw(QPainter &painter, const QRect &rect, Qt::Alignment alignment, const QString &text) {
    mPrivate->bound();
    GlyphLine line;
    if (mPrivate->layout.layOut(text, line)) {
        mPrivate->layout.draw(painter, line.originIn(rect, alignment), line);
    } else {
        painter.setFont(font());
        painter.drawText(rect, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextDontClip, text);
    }
}

void GlyphText::drawOn(QPainter &painter, const QColor &ground, const QRect &rect, Qt::Alignment alignment,
                       const QString &text) {
    mPrivate->bound();
    const qreal ratio = drawsVectors(painter) ? 0.0 : evenScale(painter.deviceTransform());
    GlyphLine line;
    if (ratio > 0 && ground.alpha() == 255 && rect.height() > 0 && mPrivate->layout.layOut(text, line)) {
        const GlyphPictures::Look look{painter.pen().color().rgba(), ground.rgba(), rect.height(), ratio};
        const qreal left = line.originIn(rect, alignment).x();
        const GlyphPictures::Strip strip = mPrivate->picturesOf(look).compose(mPrivate->layout, line, left);
        if (!strip.picture.isNull()) {
            painter.drawImage(QPointF(strip.left / ratio, rect.y()), strip.picture,
                              QRectF(0, 0, strip.width, strip.picture.height()));
            return;
        }
    }
    draw(painter, rect, alignment, text);
}

} // namespace GZ
