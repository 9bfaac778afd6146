#include "containers/accessibility/AccessibleParts.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "containers/MainView.h"
#include "containers/accessibility/AccessibleWords.h"
#include "containers/accessibility/PaneReading.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {

namespace {

QString titleOf(const PaneView *pane) {
    const auto *title = pane ? pane->findChild<CIndexTitleWidget *>() : nullptr;
    return title ? title->text() : QString();
}

/// Whether the cross line stands at a minute of the view.
bool hasCrossLine(const CRealtimeUiParam &view) {
    return view.mCrossShown && view.mCrossIndex >= 0;
}

} // namespace

QString AccessiblePart::text(QAccessible::Text kind) const {
    const QString given = QAccessibleWidget::text(kind);
    if (!given.isEmpty()) {
        return given;
    }
    switch (kind) {
    case QAccessible::Name:
        return name();
    case QAccessible::Value:
    case QAccessible::Description:
        return value();
    default:
        return {};
    }
}

// The view

AccessibleView::AccessibleView(MainView *view) : AccessiblePart(view, QAccessible::Chart) {}

const MainView *AccessibleView::view() const {
    const auto *view = qobject_cast<const MainView *>(object());
    return view && view->getRealTimeWidget() ? view : nullptr;
}

void *AccessibleView::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                               : AccessiblePart::interface_cast(type);
}

QVariant AccessibleView::currentValue() const {
    const MainView *shown = view();
    if (!shown || !hasCrossLine(*shown->getUiParam())) {
        return {};
    }
    const QList<CRealtimeGraphWidget *> graphs = shown->getRealTimeWidget()->getGraphWidgets();
    const double value = graphs.isEmpty()
                             ? kUnsetValue
                             : graphs.first()->getData()->priceAtIndex(shown->getUiParam()->mCrossIndex);
    return value == kUnsetValue ? QVariant() : QVariant(value);
}

QString AccessibleView::name() const {
    const MainView *shown = view();
    const QString instrument = shown ? getDetailQsName(shown->getUiParam()->getStockDetail()) : QString();
    return instrument.isEmpty() ? AccessibleWords::tr("分时图")
                                : AccessibleWords::tr("分时图 %1").arg(instrument);
}

/// The time of the flag, what the title of the chart tells there, and that of the selected formula pane.
QString AccessibleView::value() const {
    const MainView *shown = view();
    if (!shown) {
        return {};
    }
    QStringList words;
    if (hasCrossLine(*shown->getUiParam())) {
        words << shown->getUiParam()->getTimeTextByIndex(shown->getUiParam()->mCrossIndex);
    }
    words << titleOf(shown->getRealTimeWidget()) << titleOf(shown->selectedFormulaPane());
    words.removeAll(QString());
    return words.join(QLatin1Char(' '));
}

// Panes

AccessiblePane::AccessiblePane(PaneView *pane) : AccessiblePart(pane, QAccessible::Grouping) {}

QString AccessiblePane::name() const {
    const auto *pane = qobject_cast<const PaneView *>(object());
    return pane && pane->getGrapWidgetCount() > 0 ? PaneReading(pane->getGraphWidgets().first()).name()
                                                  : QString();
}

QString AccessiblePane::value() const {
    return titleOf(qobject_cast<const PaneView *>(object()));
}

AccessibleTitle::AccessibleTitle(CIndexTitleWidget *title) : AccessiblePart(title, QAccessible::Grouping) {}

QString AccessibleTitle::name() const {
    const auto *title = qobject_cast<const CIndexTitleWidget *>(object());
    return title ? title->text() : QString();
}

// Strips

AccessibleStrip::AccessibleStrip(CGraphAxisWidget *strip) : AccessiblePart(strip, QAccessible::StaticText) {}

QString AccessibleStrip::name() const {
    const auto *strip = qobject_cast<const CGraphAxisWidget *>(object());
    return !strip                                     ? QString()
           : strip->side() == CGraphAxisWidget::eLeft ? AccessibleWords::tr("左侧坐标轴")
                                                      : AccessibleWords::tr("右侧坐标轴");
}

QString AccessibleStrip::value() const {
    const auto *strip = qobject_cast<const CGraphAxisWidget *>(object());
    return strip ? strip->labelTexts().join(QLatin1Char(' ')) : QString();
}

QStringList AccessibleStrip::actionNames() const {
    const auto *strip = qobject_cast<const CGraphAxisWidget *>(object());
    return strip && strip->isHolographicButtonShown() ? QStringList{pressAction()} : QStringList();
}

void AccessibleStrip::doAction(const QString &action) {
    auto *strip = qobject_cast<CGraphAxisWidget *>(object());
    if (strip && actionNames().contains(action)) {
        strip->pressHolographicButton();
    }
}

AccessibleTimeScale::AccessibleTimeScale(CRealtimeTimeWidget *scale)
    : AccessiblePart(scale, QAccessible::StaticText) {}

QString AccessibleTimeScale::name() const {
    return AccessibleWords::tr("时间轴");
}

QString AccessibleTimeScale::value() const {
    const auto *scale = qobject_cast<const CRealtimeTimeWidget *>(object());
    return scale ? scale->flagText() : QString();
}

AccessibleDecoration::AccessibleDecoration(QWidget *widget) : QAccessibleWidget(widget, QAccessible::Border) {}

QAccessible::State AccessibleDecoration::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.invisible = true;
    return state;
}

} // namespace TC
