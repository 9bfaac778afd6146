#pragma once

#include <QWidget>

namespace TC {

/// Asks for a repaint of a widget with all that is in it. An update of the widget alone leaves its opaque children,
/// the graphs among them, as they are.
inline void updateWithChildren(QWidget *widget) {
    widget->update();
    for (QWidget *child : widget->findChildren<QWidget *>()) {
        child->update();
    }
}

} // namespace TC
