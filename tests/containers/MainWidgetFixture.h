#pragma once

#include "chartview/CCrossLineWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "host/toolkit/CDragWidgetList.h"
#include "host/toolkit/CHighlightWidget.h"
#include "tests/chartview/GraphInputFixture.h"
#include "tests/support/Golden.h"

#include <QKeyEvent>
#include <QPointer>

#include <map>

namespace tests {

/// A whole view in a window of the keeper. The catalogue has "KDJ", "MACD", "VOL" and the other default formulas of
/// panes, "MA" and "BOLL" attached to the main chart, "REALTIME" and "TREND" replacing it.
class MainWidgetFixture : public ChartFixture {
protected:
    using Events = std::vector<Event>;
    using Names = QStringList;

    MainWidgetFixture() {
        for (const char *name : {"VOL", "CCI", "RSI", "OBV", "PSY", "AD", "CR", "IOPV", "VWAP成交均价"}) {
            mHost.mCatalogue.add(QString::fromUtf8(name));
        }
        mHost.mCatalogue.add("MA", 1);
        mHost.mCatalogue.add("BOLL", 1);
        mHost.mCatalogue.add("TREND", 2);
        mHost.mCatalogue.add("REALTIME", 2);
    }
    ~MainWidgetFixture() override { mMain.reset(); }

    virtual std::unique_ptr<TC::CRealtimeMainWidget> newView(TC::EIndexViewType type) {
        return std::make_unique<TC::CRealtimeMainWidget>(mKeeper.get(), type);
    }
    void makeView(TC::EIndexViewType type = TC::EIndexViewType::Ordinary) {
        mMain = newView(type);
        mUi = mMain->getUiParam();
    }
    /// The view of SH600000 in 1102x600 pixels.
    void showView(int panes = 0, TC::EIndexViewType type = TC::EIndexViewType::Ordinary) {
        makeView(type);
        mMain->setStock("SH600000", false);
        mKeeper->resize(1102, 600);
        mMain->resize(1102, 600);
        for (int i = 0; i < panes; ++i) {
            mMain->addIndexWidget();
            sub(i)->addIndex(i % 2 ? "MACD" : "KDJ");
        }
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        settle();
        mKeeper->mEvents.clear();
    }
    /// Prices from 09:30 on, in the main pane and in the formula panes.
    void fill(int points = 121) {
        std::vector<double> prices;
        for (int i = 0; i < points; ++i) {
            prices.push_back(10.0 + 0.01 * (i % 40));
        }
        mMain->request(false);
        answer("REALTIME", prices);
        answer("REALTIMEVOL", std::vector<double>(prices.size(), 500.0), 2);
        for (int i = 0; i < mMain->getSubIndexWidgets().size(); ++i) {
            answer(i % 2 ? "MACD" : "KDJ", prices);
        }
        settle();
        mKeeper->mEvents.clear();
    }
    static void settle() {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    void repaintAll() {
        mKeeper->update();
        for (QWidget *widget : mKeeper->findChildren<QWidget *>()) {
            widget->update();
        }
        settle();
    }
    /// All repaints so far have left what a whole one shows.
    void expectScreenComplete(const std::string &when) {
        settle();
        const QImage shown = onScreen(*mKeeper);
        repaintAll();
        EXPECT_EQ(shown, onScreen(*mKeeper)) << when;
    }

    TC::CRealtimeWidget *pane() const { return mMain->getRealTimeWidget(); }
    TC::CRealtimeWidget *sub(int i) const { return mMain->getSubIndexWidgets().value(i); }
    QList<int> ids() const {
        QList<int> found;
        for (const TC::CRealtimeWidget *one : mMain->getSubIndexWidgets()) {
            found.append(one->getId());
        }
        return found;
    }
    static TC::CRealtimeGraphWidget *graph(const TC::CRealtimeWidget *of, int daysBack = 0) {
        return of->getGraphWidgets().value(daysBack);
    }
    TC::CRealtimeTimeWidget *timeScale() const { return mMain->findChild<TC::CRealtimeTimeWidget *>(); }
    GZ::CDragWidgetList *list() const { return mMain->findChild<GZ::CDragWidgetList *>(); }
    GZ::CHighlightWidget *frame() const { return mMain->findChild<GZ::CHighlightWidget *>(); }
    QRect rectOf(const QWidget *widget) const {
        return QRect(widget->mapTo(mMain.get(), QPoint(0, 0)), widget->size());
    }

    bool event(int number, int first = 0, int second = 0, const QString &text = {}, void *data = nullptr) {
        return mMain->handleEvent(number, first, second, text, data);
    }
    Events takeEvents() {
        Events events;
        events.swap(mKeeper->mEvents);
        return events;
    }
    static void send(QWidget *to, QEvent::Type type, const QPoint &at, Qt::MouseButton button = Qt::NoButton,
                     Qt::MouseButtons held = Qt::NoButton) {
        QMouseEvent mouse(type, at, to->mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(to, &mouse);
    }
    /// The mouse in a graph: enters when it was elsewhere.
    void moveTo(TC::CRealtimeGraphWidget *to, const QPoint &at) {
        if (mUnderMouse != to) {
            leaveGraph();
            QEnterEvent enter{QPointF(), QPointF(), QPointF()};
            QCoreApplication::sendEvent(to, &enter);
            mUnderMouse = to;
        }
        send(to, QEvent::MouseMove, at);
    }
    void leaveGraph() {
        if (mUnderMouse) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(mUnderMouse, &leave);
            mUnderMouse = nullptr;
        }
    }
    void doubleClick(QWidget *on, const QPoint &at) {
        send(on, QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton);
    }
    void key(int code) {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(mMain.get(), &press);
    }
    using ChartFixture::key;

    /// Requested formulas, in order: the file names that the service was asked for since the log was cleared.
    Names requested() const {
        Names names;
        for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
            names.append(request.param.mFormulaName);
        }
        return names;
    }
    static Names formulasOf(const TC::CRealtimeWidget *of) { return Names(of->getIndexes()); }

    std::unique_ptr<TC::CRealtimeMainWidget> mMain;
    QPointer<TC::CRealtimeGraphWidget> mUnderMouse;
};

} // namespace tests
