#include "tests/soak/MouseOnGraph.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>

namespace tests {

void sendMouse(QWidget &widget, QEvent::Type type, const QPoint &at, Qt::MouseButton button,
               Qt::MouseButtons buttons) {
    QMouseEvent event(type, at, widget.mapTo(widget.window(), at), widget.mapToGlobal(at), button, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void sendDoubleClick(QWidget &widget, const QPoint &at) {
    const QPointer<QWidget> guard(&widget);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        if (guard) {
            sendMouse(*guard, type, at, Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton);
        }
    }
}

QMap<QString, QVector<QPoint>> tradesOn(const TC::CRealtimeGraphWidget &graph) {
    constexpr int kStep = 8; // pixels; a mark is found from four pixels on each side
    const boost::shared_ptr<TC::CRealtimeData> data = graph.getData();
    QMap<QString, QVector<QPoint>> trades;
    for (int x = 0; x < graph.width(); x += kStep) {
        for (int y = 0; y < graph.height(); y += kStep) {
            const QString kind = data->hitOrder(x, y)  ? QStringLiteral("order")
                                 : data->hitDeal(x, y) ? QStringLiteral("deal")
                                 : data->hitTask(x, y) ? QStringLiteral("task")
                                                       : QString();
            if (!kind.isEmpty()) {
                trades[kind].append({x, y});
            }
        }
    }
    return trades;
}

} // namespace tests
