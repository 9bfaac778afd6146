#pragma once

#include <QEvent>
#include <QMap>
#include <QPoint>
#include <QString>
#include <QVector>

class QWidget;

namespace TC {
class CRealtimeGraphWidget;
}

namespace tests {

void sendMouse(QWidget &widget, QEvent::Type type, const QPoint &at, Qt::MouseButton button,
               Qt::MouseButtons buttons);
/// The widget may go with any of its events.
void sendDoubleClick(QWidget &widget, const QPoint &at);
/// Places of a graph at which the user's trades are found, by the kind that is: order, deal or task.
QMap<QString, QVector<QPoint>> tradesOn(const TC::CRealtimeGraphWidget &graph);

} // namespace tests
