#include "host/drawing/CArrowColorSimpleText.h"

#include "host/toolkit/CUiResource.h"
#include "host/toolkit/GlyphText.h"
#include "toolkit/drawing/DrawLook.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace TC {
namespace {

constexpr int kGap = 8; ///< pixels between two runs
constexpr int kArrowGap = 1; ///< pixels between a text and its arrow
constexpr int kArrowWidth = 7; ///< pixels, odd, so that the arrow has a tip
constexpr int kArrowHeight = 4;
const QString kEllipsis = QStringLiteral("…");

int arrowRoom(CArrowColorSimpleText::EArrow arrow) {
    return arrow == CArrowColorSimpleText::eArrowNone ? 0 : kArrowGap + kArrowWidth;
}

/// A triangle of whole rows of device pixels, its left edge at `x`, centred on a row.
void drawArrow(QPainter &painter, int x, int middle, CArrowColorSimpleText::EArrow arrow) {
    const bool up = arrow == CArrowColorSimpleText::eArrowUp;
    const QColor color = QColor::fromRgba(DrawLook::current().ofSign(up ? 1.0 : -1.0));
    const int fineness = std::max(1, static_cast<int>(painter.deviceTransform().m11()));
    const int rows = kArrowHeight * fineness;
    const double top = middle - kArrowHeight / 2;
    for (int row = 0; row < rows; ++row) {
        const double inset = double(up ? rows - 1 - row : row) / fineness;
        painter.fillRect(
            QRectF(x + inset, top + double(row) / fineness, kArrowWidth - 2 * inset, 1.0 / fineness), color);
    }
}

} // namespace

CArrowColorSimpleText::CArrowColorSimpleText(QString fontKey) : mFontKey(std::move(fontKey)) {}

void CArrowColorSimpleText::append(const QString &text, const QColor &color, EArrow arrow) {
    if (!text.isEmpty()) {
        mRuns.append({text, color, arrow, -1});
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

void CArrowColorSimpleText::measure() const {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    const bool anew = mGeneration != theme.generation();
    const auto isDue = [anew](const Run &run) { return anew || run.width < 0; };
    if (std::any_of(mRuns.cbegin(), mRuns.cend(), isDue)) {
        GZ::GlyphText &glyphs = GZ::GlyphText::ofTheme(mFontKey);
        for (Run &run : mRuns) {
            run.width = isDue(run) ? glyphs.width(run.text) : run.width;
        }
    }
    mGeneration = theme.generation();
}

int CArrowColorSimpleText::width() const {
    measure();
    int width = 0;
    for (const Run &run : qAsConst(mRuns)) {
        width += (width > 0 ? kGap : 0) + run.width + arrowRoom(run.arrow);
    }
    return width;
}

QRect CArrowColorSimpleText::changeFrom(const CArrowColorSimpleText &before, const QRect &rect) const {
    const int width = std::max(this->width(), before.width());
    if (mFontKey != before.mFontKey || width > rect.width()) {
        return rect; // with an ellipsis, in one of them
    }
    int x = 0;
    const QVector<Run> &runs = mRuns;
    const QVector<Run> &former = before.mRuns;
    for (int i = 0; i < std::min(runs.size(), former.size()) && runs[i] == former[i]; ++i) {
        x += runs[i].width + arrowRoom(runs[i].arrow) + kGap;
    }
    return rect &
           QRect(rect.left() + x, rect.top(), width - x, rect.height()).adjusted(-kGap / 2, 0, kGap / 2, 0);
}

bool CArrowColorSimpleText::draw(QPainter &painter, const QRect &rect, const QRect &dirty,
                                 const QColor &ground) const {
    GZ::GlyphText &glyphs = GZ::GlyphText::ofTheme(mFontKey);
    const bool whole = width() <= rect.width();
    const int ellipsis = whole ? 0 : glyphs.width(kEllipsis);
    int x = rect.left();
    for (int i = 0; i < mRuns.size(); ++i) {
        const Run &run = qAsConst(mRuns)[i];
        const int room = rect.right() + 1 - x;
        const int taken = run.width + arrowRoom(run.arrow);
        painter.setPen(run.color);
        if (taken + (whole || i + 1 == mRuns.size() ? 0 : kGap + ellipsis) > room) {
            // A name may be cut; a number that is cut is another number.
            painter.setFont(glyphs.font());
            const QString cut =
                i == 0 ? painter.fontMetrics().elidedText(run.text + kEllipsis, Qt::ElideRight, room)
                       : kEllipsis;
            painter.drawText(QRect(x, rect.top(), std::max(room, 0), rect.height()),
                             Qt::AlignLeft | Qt::AlignVCenter, cut);
            return false;
        }
        const QRect box(x, rect.top(), run.width, rect.height());
        if (dirty.intersects(box.adjusted(-kGap / 2, 0, arrowRoom(run.arrow) + kGap / 2, 0))) {
            glyphs.drawOn(painter, ground, box, Qt::AlignLeft, run.text);
            if (run.arrow != eArrowNone) {
                drawArrow(painter, x + run.width + kArrowGap, rect.center().y() + 1, run.arrow);
            }
        }
        x += taken + kGap;
    }
    return true;
}

} // namespace TC
