#pragma once

#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "tests/chartview/ChartFixture.h"

#include <QTest>

namespace tests {

/// Opens a private member to a test: `PeekMember<Tag, &Class::mMember>` with `Tag::type` its pointer type.
template <class Tag, typename Tag::type Member> struct PeekMember {
    friend typename Tag::type peek(Tag) { return Member; }
};

#define TESTS_PEEK(name, kind)                                                                                 \
    struct Peek_##name {                                                                                       \
        using type = kind;                                                                                     \
        friend type peek(Peek_##name);                                                                         \
    };                                                                                                         \
    template struct PeekMember<Peek_##name, &TC::CRealtimeGraphWidget::name>

TESTS_PEEK(mLeftSelecting, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mLeftRect, QRect TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mRightSelecting, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mRightRect, QRect TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mRegionLinesVisible, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mShowTip, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mDealTips, QList<boost::shared_ptr<kvservice::CDealDetail>> TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mOrderTips, QList<boost::shared_ptr<kvservice::COrderDetail>> TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mCrossActive, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mMouseX, int TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mMouseY, int TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mMouseIn, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mDragging, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mNormalContextMenu, bool TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mLeftStart, QPoint TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mRightStart, QPoint TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mRegionLeftX, int TC::CRealtimeGraphWidget::*);
TESTS_PEEK(mRegionRightX, int TC::CRealtimeGraphWidget::*);
TESTS_PEEK(toLogical, QPointF (TC::CRealtimeGraphWidget::*)(const QPointF &) const);
TESTS_PEEK(toPixel, QPointF (TC::CRealtimeGraphWidget::*)(const QPointF &) const);
#undef TESTS_PEEK

/// Keeps the regions that a widget paints.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Paint) {
            mRegions.append(static_cast<QPaintEvent *>(event)->region());
        }
        return false;
    }
    QList<QRegion> mRegions;
};

/// A graph with its data and its left axis strip, in a window of the keeper.
class GraphFixture : public ChartFixture {
protected:
    void makeGraph(TC::EIndexDisplayType type, const QStringList &formulas,
                   TC::EIndexViewType viewType = TC::EIndexViewType::Ordinary) {
        mData = makeData(type, formulas);
        mStrip = std::make_unique<TC::CGraphAxisWidget>(mUi, mData, TC::CGraphAxisWidget::eLeft);
        mStrip->setDisplayType(type);
        mData->setAxisWidget(mStrip.get());
        mGraph = std::make_unique<TC::CRealtimeGraphWidget>(7, mData, mUi, type, viewType, mKeeper.get(), true);
    }
    void makeMainGraph() { makeGraph(TC::EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"}); }
    void showGraph(int width, int height) {
        mKeeper->resize(width, height);
        mGraph->resize(width, height);
        mStrip->resize(50, height);
        mUi->resize(QRect(0, 0, width, height));
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        QCoreApplication::processEvents();
    }
    /// What a pane does when its data asks for a new scale.
    void rescale() {
        mStrip->setMaxMinMap(mData->getMaxMinMap());
        mGraph->updateAxis(mData->getMaxMinMap(), true);
    }
    void fillMain(const std::vector<double> &prices = {10.0, 10.2, 9.9, 10.1, 10.3}) {
        mGraph->request(corvane::ERunMode::Ordinary);
        answer("REALTIME", prices);
        answer("REALTIMEVOL", std::vector<double>(prices.size(), 500.0), 2);
        rescale();
    }
    template <class Tag> decltype(auto) member(Tag tag) { return (*mGraph).*peek(tag); }

    /// The chart of the data alone, over the ground of a graph.
    QImage chart(double ratio = 1.0) {
        QImage image((QSizeF(mGraph->size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(color("ic_clr_realtime_graph_bg"));
        QPainter painter(&image);
        mData->paintTo(&painter, mGraph->rect());
        return image;
    }
    QImage paintedGraph(double ratio = 1.0) { return painted(*mGraph, ratio); }

    boost::shared_ptr<TC::CRealtimeData> mData;
    std::unique_ptr<TC::CGraphAxisWidget> mStrip;
    std::unique_ptr<TC::CRealtimeGraphWidget> mGraph;
};

} // namespace tests
