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

#define TESTS_PEEK(owner, name, kind)                                                                          \
    struct Peek_##name {                                                                                       \
        using type = kind TC::owner::*;                                                                        \
        friend type peek(Peek_##name);                                                                         \
    };                                                                                                         \
    template struct PeekMember<Peek_##name, &TC::owner::name>

TESTS_PEEK(CRealtimeGraphWidget, mPointer, TC::GraphPointer);
TESTS_PEEK(CRealtimeGraphWidget, mRegionLines, TC::RegionLines);
TESTS_PEEK(CRealtimeGraphWidget, mTip, TC::TradeTip);
TESTS_PEEK(CRealtimeGraphWidget, mSpace, TC::DrawingSpace);
TESTS_PEEK(GraphPointer, mLeftSelecting, bool);
TESTS_PEEK(GraphPointer, mLeftRect, QRect);
TESTS_PEEK(GraphPointer, mRightSelecting, bool);
TESTS_PEEK(GraphPointer, mRightRect, QRect);
TESTS_PEEK(GraphPointer, mCrossActive, bool);
TESTS_PEEK(GraphPointer, mMouseX, int);
TESTS_PEEK(GraphPointer, mMouseY, int);
TESTS_PEEK(GraphPointer, mMouseIn, bool);
TESTS_PEEK(GraphPointer, mDragging, bool);
TESTS_PEEK(GraphPointer, mNormalContextMenu, bool);
TESTS_PEEK(GraphPointer, mLeftStart, QPoint);
TESTS_PEEK(GraphPointer, mRightStart, QPoint);
TESTS_PEEK(TradeTip, mShowTip, bool);
TESTS_PEEK(TradeTip, mDealTips, QList<boost::shared_ptr<kvservice::CDealDetail>>);
TESTS_PEEK(TradeTip, mOrderTips, QList<boost::shared_ptr<kvservice::COrderDetail>>);
#undef TESTS_PEEK

// A member of a graph, or of one of its parts.
template <class Kind> Kind &memberOf(TC::CRealtimeGraphWidget &graph, Kind TC::CRealtimeGraphWidget::*member) {
    return graph.*member;
}
template <class Kind> Kind &memberOf(TC::CRealtimeGraphWidget &graph, Kind TC::GraphPointer::*member) {
    return graph.*peek(Peek_mPointer()).*member;
}
template <class Kind> Kind &memberOf(TC::CRealtimeGraphWidget &graph, Kind TC::TradeTip::*member) {
    return graph.*peek(Peek_mTip()).*member;
}

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
    template <class Tag> auto &member(Tag tag) { return memberOf(*mGraph, peek(tag)); }
    TC::RegionLines &regionLines() { return member(Peek_mRegionLines()); }
    int regionLeft() { return regionLines().span().left(TC::DayAxis::of(*mUi)); }
    int regionRight() { return regionLines().span().right(TC::DayAxis::of(*mUi)); }

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
