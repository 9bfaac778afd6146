#pragma once

/// \file
/// What differs between Qt 5.15 and Qt 6, in one place.

#include <QCoreApplication>
#include <QFont>
#include <QHoverEvent>
#include <QMouseEvent>
#include <QPoint>
#include <QtGlobal>

namespace GZ {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
/// What QWidget::enterEvent() is given.
using EnterEvent = QEnterEvent;
/// The mouse on the screen.
inline QPoint globalPosition(const QMouseEvent &event) {
    return event.globalPosition().toPoint();
}
/// The mouse in the widget.
inline QPoint hoverPosition(const QHoverEvent &event) {
    return event.position().toPoint();
}
/// Takes a weight from 0 to 99, 50 the ordinary one and 75 bold.
inline void setFontWeight(QFont &font, int weight) {
    constexpr int kFirstOfHundreds[] = {0, 12, 25, 50, 57, 63, 75, 81, 87};
    int hundreds = 0;
    for (const int first : kFirstOfHundreds) {
        hundreds += weight >= first ? 1 : 0;
    }
    font.setWeight(static_cast<QFont::Weight>(100 * hundreds));
}
/// Pictures as sharp as the screen: there is no other way any more.
inline void useHighDpiPixmaps() {}
/// Parts of 64 of a device pixel that glyphs are moved to the right by before their place is cut to a quarter of one.
constexpr int kGlyphLead = 1;
#else
using EnterEvent = QEvent;
inline QPoint globalPosition(const QMouseEvent &event) {
    return event.globalPos();
}
inline QPoint hoverPosition(const QHoverEvent &event) {
    return event.pos();
}
inline void setFontWeight(QFont &font, int weight) {
    font.setWeight(weight);
}
inline void useHighDpiPixmaps() {
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}
constexpr int kGlyphLead = 0;
#endif

} // namespace GZ
