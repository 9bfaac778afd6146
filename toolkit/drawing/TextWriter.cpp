#include "toolkit/drawing/TextWriter.h"

#include "host/toolkit/CUiResource.h"

#include <algorithm>

namespace TC {

TextWriter::TextWriter(QPainter *painter, const QRect &rect)
    : mPainter(painter), mRect(rect), mClip(painter, rect, true),
      mFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text"))), mMetrics(mFont) {
    mPainter->setFont(mFont);
}

void TextWriter::write(const QString &text, int column, double bottom, QRgb color) {
    const int width = mMetrics.horizontalAdvance(text);
    const int left = std::max(std::min(column - width / 2, mRect.right() + 1 - width), mRect.left());
    const int lowest = std::clamp(static_cast<int>(bottom), mRect.top() + height() - 1,
                                  std::max(mRect.bottom(), mRect.top() + height() - 1));
    mPainter->setPen(QColor::fromRgba(color));
    mPainter->drawText(left, lowest - mMetrics.descent(), text);
}

} // namespace TC
