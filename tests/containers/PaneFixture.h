#pragma once

#include "chartview/CCrossLineWidget.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/toolkit/CPushButton.h"
#include "tests/chartview/GraphFixture.h"

#include <QMouseEvent>
#include <QTest>

namespace tests {

/// A pane that shows its protected side.
class OpenPane : public TC::CRealtimeWidget {
public:
    using CRealtimeWidget::CRealtimeWidget;
    using CRealtimeWidget::getGraphWidget;
};

/// A pane in the window of the keeper.
class PaneFixture : public ChartFixture {
protected:
    static constexpr int kPaneId = 5;
    static constexpr int kDayLength = 86400;
    static constexpr int kRunButton = 1024;
    static constexpr corvane::ERunMode kOrdinary = corvane::ERunMode::Ordinary;

    ~PaneFixture() override { mPane.reset(); }

    void makePane(TC::EIndexDisplayType type, const QStringList &formulas,
                  TC::EIndexViewType viewType = TC::EIndexViewType::Ordinary) {
        mPane = std::make_unique<OpenPane>(kPaneId, mUi, type, viewType, mKeeper.get());
        for (const QString &formula : formulas) {
            mPane->addIndex(formula);
        }
    }
    void makeMainPane() { makePane(TC::EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"}); }
    void makeSubPane(const QStringList &formulas = {"MACD"}) { makePane(TC::EIndexDisplayType::Sub, formulas); }
    void showPane(int width = 700, int height = 316) {
        mKeeper->resize(width, height);
        mPane->resize(width, height);
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        QCoreApplication::processEvents();
    }

    TC::CIndexTitleWidget *title() const { return mPane->findChild<TC::CIndexTitleWidget *>(); }
    TC::CRealtimeGraphWidget *newest() const { return mPane->getGraphWidgets().first(); }
    /// The graph of so many days back.
    TC::CRealtimeGraphWidget *graph(int daysBack) const { return mPane->getGraphWidgets().value(daysBack); }
    TC::CGraphAxisWidget *strip(int side) const {
        const QList<TC::CGraphAxisWidget *> strips = mPane->findChildren<TC::CGraphAxisWidget *>();
        for (TC::CGraphAxisWidget *one : strips) {
            const bool left = one->mapTo(mPane.get(), QPoint()).x() == 0;
            if (left == (side == TC::CGraphAxisWidget::eLeft)) {
                return one;
            }
        }
        return nullptr;
    }
    GZ::CPushButton *runButton() const {
        for (GZ::CPushButton *button : mPane->findChildren<GZ::CPushButton *>()) {
            if (button->id() == kRunButton) {
                return button;
            }
        }
        return nullptr;
    }
    /// Trading days of the graphs, the newest first.
    QList<int> dates() const {
        QList<int> all;
        for (const TC::CRealtimeGraphWidget *one : mPane->getGraphWidgets()) {
            all.append(one->getData()->getTradeDate());
        }
        return all;
    }
    QList<int> ids() const {
        QList<int> all;
        for (TC::CRealtimeGraphWidget *one : mPane->getGraphWidgets()) {
            all.append(mPane->getGrapWidgetID(one));
        }
        return all;
    }
    int requests() const { return mHost.mLog.of(QStringLiteral("CFormulaManager::requestFormulas ")).size(); }
    bool event(int number, int sub, int param = 0, const QString &text = QString(), void *data = nullptr) {
        return mPane->handleEvent(number, sub, param, text, data);
    }
    /// A series for each live request of a formula on a day.
    void answerDay(const QString &formula, int date, const std::vector<double> &values, int style = 0) {
        for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
            if (request.param.mFormulaName == mHost.mCatalogue.getFormula(formula)->mFileName &&
                request.param.mStart.first / 1000 == date) {
                request.onHistory(makeMeta(1, {style}),
                                  makeResult(minuteTimes(date, 570, static_cast<int>(values.size())), values),
                                  request.id(), 1, QString(), false);
            }
        }
    }
    /// The mouse over a graph, at a point of it.
    static void moveOver(TC::CRealtimeGraphWidget &graph, const QPoint &at) {
        QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&graph, &move);
    }
    static void leave(TC::CRealtimeGraphWidget &graph) {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&graph, &event);
    }
    /// Makes a formula of the catalogue a model.
    void makeGroupModel(const QString &name) {
        mHost.mCatalogue.getFormula(name)->mStrParamNames.append(QStringLiteral("group"));
    }
    void makeScriptModel(const QString &name) {
        mHost.mCatalogue.getFormula(name)->mLanguage = TC::EFormulaLanguage::Python;
    }
    void makeIndexView() { mHost.mTypes.mIndexes.insert({"SH", "600000"}); }

    std::unique_ptr<OpenPane> mPane;
};

} // namespace tests
