#include "containers/accessibility/ChartAccessibility.h"

#include "chartview/CCrossLineWidget.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "containers/MainView.h"
#include "containers/accessibility/AccessibleGraph.h"
#include "containers/accessibility/AccessibleParts.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/toolkit/CHighlightWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QAccessible>

namespace TC {

namespace {

/// An interface of a class for a widget of it; null for any other.
template <class Interface, class Widget> QAccessibleInterface *madeFor(QObject *object) {
    auto *widget = qobject_cast<Widget *>(object);
    return widget ? new Interface(widget) : nullptr;
}

/// The kinds of widgets, by the names of their classes: it is asked for each class that an object is of.
QAccessibleInterface *chartInterface(const QString &className, QObject *object) {
    using Maker = QAccessibleInterface *(*)(QObject *);
    struct Kind {
        const QMetaObject &type;
        Maker make;
    };
    static const Kind kKinds[] = {
        {MainView::staticMetaObject, &madeFor<AccessibleView, MainView>},
        {PaneView::staticMetaObject, &madeFor<AccessiblePane, PaneView>},
        {CRealtimeGraphWidget::staticMetaObject, &madeFor<AccessibleGraph, CRealtimeGraphWidget>},
        {CIndexTitleWidget::staticMetaObject, &madeFor<AccessibleTitle, CIndexTitleWidget>},
        {CGraphAxisWidget::staticMetaObject, &madeFor<AccessibleStrip, CGraphAxisWidget>},
        {CRealtimeTimeWidget::staticMetaObject, &madeFor<AccessibleTimeScale, CRealtimeTimeWidget>},
        {CCrossLineWidget::staticMetaObject, &madeFor<AccessibleDecoration, CCrossLineWidget>},
        {GZ::CHighlightWidget::staticMetaObject, &madeFor<AccessibleDecoration, GZ::CHighlightWidget>},
    };
    for (const Kind &kind : kKinds) {
        if (className == QLatin1String(kind.type.className())) {
            return kind.make(object);
        }
    }
    return nullptr;
}

} // namespace

void installChartAccessibility() {
    QAccessible::installFactory(&chartInterface); // one that is there already is not added
}

void announceCrossLine(MainView &view) {
    QAccessibleInterface *told =
        QAccessible::isActive() ? QAccessible::queryAccessibleInterface(&view) : nullptr;
    const CRealtimeWidget *main = view.getRealTimeWidget();
    if (!told || !main) {
        return;
    }
    QAccessibleValueChangeEvent value(&view, told->text(QAccessible::Value));
    QAccessible::updateAccessibility(&value);
    const QList<CRealtimeGraphWidget *> graphs = main->getGraphWidgets();
    QAccessibleInterface *graph =
        graphs.isEmpty() ? nullptr : QAccessible::queryAccessibleInterface(graphs.first());
    QAccessibleTableInterface *table = graph ? graph->tableInterface() : nullptr;
    const int row = view.getUiParam()->mCrossIndex;
    if (QAccessibleInterface *cell = table ? table->cellAt(row, PaneReading::kTimeColumn) : nullptr) {
        if (view.hasFocus()) {
            QAccessibleEvent focus(cell, QAccessible::Focus);
            QAccessible::updateAccessibility(&focus);
        }
    }
}

} // namespace TC
