#pragma once

#include "host/Export.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QPair>
#include <QString>
#include <QVector>

class QPainter;
class QRect;

namespace TC {

/// A line of text in runs, each with a colour of its own and, where it tells a move, an arrow behind it.
class TIMESHARE_EXPORT CArrowColorSimpleText {
public:
    enum EArrow : int { eArrowDown = -1, eArrowNone = 0, eArrowUp = 1 };

    explicit CArrowColorSimpleText(QString fontKey);

    void clear() { mRuns.clear(); }
    bool isEmpty() const { return mRuns.isEmpty(); }
    /// Appends a run. An empty text is left out.
    void append(const QString &text, const QColor &color, EArrow arrow = eArrowNone);
    /// The runs from left to right, each with its colour.
    QList<QPair<QString, QColor>> getTextColor() const;
    /// The runs joined by a blank.
    QString text() const;

    /// Pixels that the whole line takes.
    int width() const;
    /// Draws the line centred over the height of a rectangle, from its left edge. Where it does not fit, an ellipsis
    /// stands for the rest; of the runs, only the first is ever cut in two. Answers whether all of it was drawn.
    bool draw(QPainter &painter, const QRect &rect) const { return draw(painter, rect, rect); }
    /// The same, without the runs that lie outside of `dirty`, and quicker over an opaque ground that has been painted.
    bool draw(QPainter &painter, const QRect &rect, const QRect &dirty,
              const QColor &ground = Qt::transparent) const;
    /// Where drawing this line into a rectangle in which another is drawn changes anything.
    QRect changeFrom(const CArrowColorSimpleText &before, const QRect &rect) const;

    bool operator==(const CArrowColorSimpleText &other) const {
        return mFontKey == other.mFontKey && mRuns == other.mRuns;
    }
    bool operator!=(const CArrowColorSimpleText &other) const { return !(*this == other); }

private:
    struct Run {
        QString text;
        QColor color;
        EArrow arrow;
        int width = -1; ///< of the text in pixels; negative while it has not been measured
        bool operator==(const Run &other) const {
            return text == other.text && color == other.color && arrow == other.arrow;
        }
    };
    /// Measures what has not been measured with the font of the theme.
    void measure() const;

    QString mFontKey;
    mutable QVector<Run> mRuns; ///< their widths follow the theme
    mutable int mGeneration = -1; ///< of the theme that the widths are of
};

} // namespace TC
