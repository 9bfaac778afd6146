#include "host/drawing/CArrowColorSimpleText.h"

#include "host/toolkit/CUiResource.h"
#include "toolkit/drawing/DrawLook.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringList>

#include <utility>

namespace TC {
namespace {

constexpr int kGap = 8; ///< pixels between two runs
constexpr int kArrowGap = 1; ///< pixels between a text and its arrow
constexpr int kArrowWidth = 7; ///< pixels, odd, so that the arrow has a tip
constexpr int kArrowHeight = 4;

int arrowRoom(CArrowColorSimpleText::EArrow arrow) {
    return arrow == CArrowColorSimpleText::eArrowNone ? 0 : kArrowGap + kArrowWidth;
}

/// A triangle of whole rows of pixels, its left edge at `x`, centred on a row.
void drawArrow(QPainter &painter, int x, int middle, CArrowColorSimpleText::EArrow arrow) {
    const bool up = arrow == CArrowColorSimpleText::eArrowUp;
    const QColor color = QColor::fromRgba(DrawLook::current().ofSign(up ? 1.0 : -1.0));
    const int top = middle - kArrowHeight / 2;
    for (int row = 0; row < kArrowHeight; ++row) {
        const int inset = up ? kArrowHeight - 1 - row : row;
        painter.fillRect(x + inset, top + row, kArrowWidth - 2 * inset, 1, color);
    }
}

} // namespace

CArrowColorSimpleText::CArrowColorSimpleText(QString fontKey) : mFontKey(std::move(fontKey)) {}

void CArrowColorSimpleText::append(const QString &text, const QColor &color, EArrow arrow) {
    if (!text.isEmpty()) {
        mRuns.append({text, color, arrow});
    }
}

QList<QPair<QString, QColor>> CArrowColorSimpleText::getTextColor() const {
    QList<QPair<QString, QColor>> runs;
    for (const Run &run : mRuns) {
        runs.append({run.text, run.color});
    }
    return runs;
}

QString CArrowColorSimpleText::text() const {
    QStringList texts;
    for (const Run &run : mRuns) {
        texts.append(run.text);
    }
    return texts.join(QLatin1Char(' '));
}

int CArrowColorSimpleText::width() const {
    const QFontMetrics metrics(GZ::CUiResource::instance().getFont(mFontKey));
    int width = 0;
    for (const Run &run : mRuns) {
        width += (width > 0 ? kGap : 0) + metrics.horizontalAdvance(run.text) + arrowRoom(run.arrow);
    }
    return width;
}

bool CArrowColorSimpleText::draw(QPainter &painter, const QRect &rect) const {
    painter.setFont(GZ::CUiResource::instance().getFont(mFontKey));
    const QFontMetrics metrics = painter.fontMetrics();
    int x = rect.left();
    for (const Run &run : mRuns) {
        const int room = rect.right() + 1 - x;
        const int wanted = metrics.horizontalAdvance(run.text);
        const bool fits = wanted + arrowRoom(run.arrow) <= room;
        painter.setPen(run.color);
        const QRect place(x, rect.top(), fits ? wanted : room, rect.height());
        const QString shown = fits ? run.text : metrics.elidedText(run.text, Qt::ElideRight, room);
        if (room > 0) {
            painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, shown);
        }
        if (!fits) {
            return false;
        }
        if (run.arrow != eArrowNone) {
            drawArrow(painter, x + wanted + kArrowGap, rect.center().y() + 1, run.arrow);
        }
        x += wanted + arrowRoom(run.arrow) + kGap;
    }
    return true;
}

} // namespace TC
