#include "chartview/FittedFont.h"

#include <QFontMetrics>

#include <algorithm>

namespace TC {
namespace {

constexpr int kSmallestFont = 9; ///< pixels

} // namespace

QFont fittedFont(QFont font, const QStringList &texts, int width) {
    const auto fits = [&font, width](const QString &text) {
        return QFontMetrics(font).horizontalAdvance(text) <= width;
    };
    while (font.pixelSize() > kSmallestFont && !std::all_of(texts.begin(), texts.end(), fits)) {
        font.setPixelSize(font.pixelSize() - 1);
    }
    return font;
}

} // namespace TC
