#include "containers/ViewSize.h"

#include "containers/CRealtimeWidget.h"
#include "containers/PaneRow.h"

#include <algorithm>

namespace TC {

QSize stackedSize(const PaneRow &panes, const QWidget *timeScale, const QWidget *bar,
                  QSize (QWidget::*hint)() const) {
    QSize size(0, (timeScale ? timeScale->height() : 0) + (bar ? bar->height() : 0));
    for (const CRealtimeWidget *pane : panes.all()) {
        const QSize wanted = (pane->*hint)();
        size = {std::max(size.width(), wanted.width()), size.height() + wanted.height()};
    }
    return size;
}

} // namespace TC
