#pragma once

#include "tests/chartview/GraphFixture.h"

#include <QCursor>
#include <QHelpEvent>
#include <QMouseEvent>

#include <ostream>
#include <tuple>

namespace tests {

inline bool operator==(const Event &a, const Event &b) {
    return std::tie(a.number, a.first, a.second, a.text, a.data) ==
           std::tie(b.number, b.first, b.second, b.text, b.data);
}
inline std::ostream &operator<<(std::ostream &out, const Event &event) {
    return out << '(' << event.number << ": " << event.first << ", " << event.second << ", \""
               << event.text.toStdString() << "\", " << event.data << ')';
}

/// A graph of 482 columns and 205 rows over an axis of 241 positions, two columns each: column x belongs to index
/// (x + 1) / 2, and index i lies at column 2 i + 1. Prices from 9 to 11 have the rows 200 to 0.
class GraphInputFixture : public GraphFixture {
protected:
    using Events = std::vector<Event>;

    void showMain(TC::EIndexViewType viewType = TC::EIndexViewType::Ordinary) {
        mUi->mShowVolume = false;
        makeGraph(TC::EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"}, viewType);
        ASSERT_NO_FATAL_FAILURE(showFixedSize());
    }
    void showSub() {
        makeGraph(TC::EIndexDisplayType::Sub, {"MACD"});
        ASSERT_NO_FATAL_FAILURE(showFixedSize());
    }
    void crossLine(bool shown) { mUi->mCrossShown = shown; }

    void send(QEvent::Type type, const QPoint &at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, mGraph->mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(mGraph.get(), &event);
    }
    void press(const QPoint &at, Qt::MouseButton button = Qt::LeftButton) {
        send(QEvent::MouseButtonPress, at, button, button);
    }
    void move(const QPoint &at, Qt::MouseButtons held = Qt::NoButton) {
        send(QEvent::MouseMove, at, Qt::NoButton, held);
    }
    void release(const QPoint &at, Qt::MouseButton button = Qt::LeftButton) {
        send(QEvent::MouseButtonRelease, at, button, Qt::NoButton);
    }
    void drag(const QPoint &from, const QPoint &to, Qt::MouseButton button = Qt::LeftButton) {
        press(from, button);
        move(to, button);
        release(to, button);
    }
    void doubleClick(const QPoint &at, Qt::MouseButton button = Qt::LeftButton) {
        send(QEvent::MouseButtonDblClick, at, button, button);
    }
    void enter() {
        QEnterEvent event{QPointF(), QPointF(), QPointF()};
        QCoreApplication::sendEvent(mGraph.get(), &event);
    }
    void leave() {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(mGraph.get(), &event);
    }

    Events takeEvents() {
        Events events;
        events.swap(mKeeper->mEvents);
        return events;
    }
    /// How often the graph paints because of what a call asks for.
    template <class Call> int paintsOf(Call call) {
        QCoreApplication::processEvents();
        PaintWatch watch(mGraph.get());
        call();
        QCoreApplication::processEvents();
        return watch.mRegions.size();
    }

private:
    void showFixedSize() {
        ASSERT_NO_FATAL_FAILURE(showGraph(482, 205));
        ASSERT_EQ(mUi->mPointCount, 241);
        ASSERT_EQ(mUi->mDayWidth, 482.0);
        mKeeper->mEvents.clear();
    }
};

} // namespace tests
