#pragma once

#include <QSize>
#include <QWidget>

namespace TC {

class PaneRow;

/// The size of panes beneath one another, each as large as `hint` tells, with a time scale and a template bar below them,
/// where there are such.
QSize stackedSize(const PaneRow &panes, const QWidget *timeScale, const QWidget *bar,
                  QSize (QWidget::*hint)() const);

} // namespace TC
