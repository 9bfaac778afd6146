// What a graph paints, layer by layer.

#include "tests/chartview/GraphFixture.h"

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"

#include <algorithm>
#include <functional>
#include <random>

using namespace TC;

namespace {

using corvane::ERunMode;

/// A host that covers all with one colour.
class GreenHost : public CEnhanceDrawManager {
public:
    void drawGraph(int, const std::string &, QPainter *painter, const QRect &rect,
                   const boost::function<QPointF(const QPointF &)> &) override {
        painter->fillRect(rect, Qt::green);
    }
};

class GraphPaint : public tests::GraphFixture {
protected:
    void makeShownMainGraph(int width = 300, int height = 200) {
        makeMainGraph();
        showGraph(width, height);
        fillMain();
    }
    void selectLeft(const QRect &rect) {
        member(tests::Peek_mLeftSelecting()) = true;
        member(tests::Peek_mLeftRect()) = rect;
    }
    void selectRight(const QRect &rect) {
        member(tests::Peek_mRightSelecting()) = true;
        member(tests::Peek_mRightRect()) = rect;
    }
    void showRegion(int first, int last) {
        regionLines().show();
        mGraph->setRegionLine(first, last);
    }
    void addDeal(int direction, int volume, double price) {
        auto deal = boost::make_shared<kvservice::CDealDetail>();
        deal->mDirection = direction;
        deal->mVolume = volume;
        deal->mPrice = price;
        member(tests::Peek_mDealTips()).append(deal);
    }
    void addOrder(int direction, int volume, double price) {
        auto order = boost::make_shared<kvservice::COrderDetail>();
        order->mDirection = direction;
        order->mVolume = volume;
        order->mPrice = price;
        member(tests::Peek_mOrderTips()).append(order);
    }
    void addGroupModel(EFormulaLanguage language) {
        const CFormulaDetailPtr model = mHost.mCatalogue.add("GROUPMODEL");
        model->mStrParamNames = {"group"};
        model->mLanguage = language;
    }
    /// The font of a tip: the largest one, up to that of the axes, with which its widest line ends in the frame.
    static QFont tipFont(const QString &widest) {
        QFont font = axisFont();
        while (16 + QFontMetrics(font).horizontalAdvance(widest) > 130) {
            font.setPixelSize(font.pixelSize() - 1);
        }
        return font;
    }
    /// The chart with further layers on it.
    QImage chartWith(const std::function<void(QPainter &)> &layers, double ratio = 1.0) {
        QImage image = chart(ratio);
        QPainter painter(&image);
        painter.setFont(axisFont());
        layers(painter);
        return image;
    }
    QImage chartWithNotice() {
        return chartWith([this](QPainter &painter) {
            painter.setPen(QColor(255, 0, 0, 255));
            painter.drawText(QPoint(mGraph->width() / 2 - 60, mGraph->height() / 2 - 5),
                             "组合模型只能在指数类视图下显示！");
        });
    }
    static int differingPixels(const QImage &a, const QImage &b) {
        int count = 0;
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                count += a.pixel(x, y) != b.pixel(x, y);
            }
        }
        return count;
    }
};

// Ground and chart

TEST_F(GraphPaint, InvalidViewPaintsTheGroundAndNothingElse) {
    makeShownMainGraph();
    mUi->setStock("nothing", false);
    ASSERT_FALSE(mUi->isValid());
    mHost.mConfig.mClientType = EClientType::Trading;
    selectLeft(QRect(10, 10, 50, 50));
    showRegion(10, 20);
    member(tests::Peek_mShowTip()) = true;
    addDeal(48, 100, 10.0);
    QImage ground(mGraph->size(), QImage::Format_ARGB32_Premultiplied);
    ground.fill(color("ic_clr_realtime_graph_bg"));
    EXPECT_EQ(paintedGraph(), ground);
    EXPECT_TRUE(mHost.mLog.of("CEnhanceDrawManager").isEmpty());
}

TEST_F(GraphPaint, ValidViewPaintsTheChartOfItsData) {
    makeShownMainGraph();
    const QImage painted = paintedGraph();
    EXPECT_EQ(painted, chart());
    QImage ground(mGraph->size(), QImage::Format_ARGB32_Premultiplied);
    ground.fill(color("ic_clr_realtime_graph_bg"));
    EXPECT_GT(differingPixels(painted, ground), 500);
}

TEST_F(GraphPaint, ChartIsRenderedAtTheRatioOfTheScreen) {
    makeShownMainGraph();
    const QImage fine = paintedGraph(2.0);
    EXPECT_EQ(fine.size(), QSize(600, 400));
    EXPECT_EQ(fine, chart(2.0));
    EXPECT_EQ(paintedGraph(), chart()) << "and back";
}

TEST_F(GraphPaint, GroundIsFilledWhereThereIsNoChart) {
    makeMainGraph(); // never shown, never resized
    mGraph->QWidget::setGeometry(0, 0, 1, 1);
    const QImage painted = paintedGraph();
    EXPECT_NE(painted.pixel(0, 0), QColor(Qt::magenta).rgba());
}

TEST_F(GraphPaint, FollowsTheTheme) {
    makeShownMainGraph();
    const QImage dark = paintedGraph();
    ASSERT_TRUE(GZ::CUiResource::instance().setTheme("light"));
    const QImage light = paintedGraph();
    EXPECT_NE(light, dark);
    EXPECT_EQ(light, chart());
    mUi->setStock("nothing", false);
    EXPECT_EQ(QColor(paintedGraph().pixel(5, 5)), color("ic_clr_realtime_graph_bg"));
}

TEST_F(GraphPaint, TakesAnySize) {
    makeShownMainGraph();
    selectLeft(QRect(-5, -5, 20, 20));
    selectRight(QRect(1, 1, 0, 0));
    showRegion(0, 240);
    for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(2, 300), QSize(300, 2), QSize(3000, 20)}) {
        mGraph->resize(size);
        mUi->resize(QRect(QPoint(), size));
        if (!size.isEmpty()) {
            EXPECT_NE(paintedGraph().pixel(0, 0), QColor(Qt::magenta).rgba());
        }
    }
}

// The notice

TEST_F(GraphPaint, GroupModelIsSaidToNeedAnIndexView) {
    addGroupModel(EFormulaLanguage::Native);
    makeGraph(EIndexDisplayType::Sub, {"GROUPMODEL"});
    showGraph(400, 100);
    EXPECT_EQ(paintedGraph(), chartWithNotice());
    EXPECT_NE(paintedGraph(), chart());
}

TEST_F(GraphPaint, NoticeComesWithTheFormulaAndGoesWithIt) {
    addGroupModel(EFormulaLanguage::Native);
    makeShownMainGraph(400, 300);
    EXPECT_EQ(paintedGraph(), chart());
    mGraph->addIndex("GROUPMODEL");
    EXPECT_EQ(paintedGraph(), chartWithNotice());
    mGraph->delIndex("GROUPMODEL");
    EXPECT_EQ(paintedGraph(), chart());
}

TEST_F(GraphPaint, NoticeFollowsTheCatalogueAtTheNextRequest) {
    makeGraph(EIndexDisplayType::Sub, {"GROUPMODEL"}); // not yet in the catalogue
    showGraph(400, 100);
    EXPECT_EQ(paintedGraph(), chart());
    addGroupModel(EFormulaLanguage::Native);
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(paintedGraph(), chartWithNotice());
}

TEST_F(GraphPaint, ScriptModelHasNoNotice) {
    addGroupModel(EFormulaLanguage::Python);
    makeGraph(EIndexDisplayType::Sub, {"GROUPMODEL"});
    showGraph(400, 100);
    EXPECT_EQ(paintedGraph(), chart());
}

TEST_F(GraphPaint, ViewThatShowsGroupGraphsHasNoNotice) {
    addGroupModel(EFormulaLanguage::Native);
    makeGraph(EIndexDisplayType::Sub, {"GROUPMODEL"});
    showGraph(400, 100);
    mHost.mTypes.mIndexes.insert({"SH", "600000"});
    EXPECT_EQ(paintedGraph(), chart());
}

// Selections

TEST_F(GraphPaint, LeftSelectionHasASolidBorder) {
    makeShownMainGraph();
    const QImage chartAlone = chart();
    selectLeft(QRect(20, 30, 100, 60));
    const QImage painted = paintedGraph();
    const QColor border = color("ic_clr_kline_graph_scale_border");
    for (int x = 20; x <= 120; ++x) {
        EXPECT_EQ(QColor(painted.pixel(x, 30)), border) << x;
        EXPECT_EQ(QColor(painted.pixel(x, 90)), border) << x;
    }
    for (int y = 30; y <= 90; ++y) {
        EXPECT_EQ(QColor(painted.pixel(20, y)), border) << y;
        EXPECT_EQ(QColor(painted.pixel(120, y)), border) << y;
    }
    const QRect inside(21, 31, 99, 59);
    EXPECT_EQ(painted.copy(inside), chartAlone.copy(inside)) << "not filled";
}

TEST_F(GraphPaint, RightSelectionHasADashedBorder) {
    makeShownMainGraph();
    const QImage chartAlone = chart();
    selectRight(QRect(20, 30, 100, 60));
    const QImage painted = paintedGraph();
    const QColor border = color("ic_clr_realtime_graph_scale_border");
    int dashes = 0;
    for (int x = 21; x < 120; ++x) {
        const QColor pixel(painted.pixel(x, 30));
        ASSERT_TRUE(pixel == border || painted.pixel(x, 30) == chartAlone.pixel(x, 30)) << x;
        dashes += pixel == border;
    }
    EXPECT_NEAR(dashes, 99 * 9 / 13, 5) << "nine of thirteen pixels";
    const QRect inside(21, 31, 99, 59);
    EXPECT_EQ(painted.copy(inside), chartAlone.copy(inside)) << "not filled";
}

TEST_F(GraphPaint, SelectionsAreToldApartByTheirWidthOnAFineScreen) {
    makeShownMainGraph();
    selectLeft(QRect(20, 30, 100, 60));
    const QImage left = paintedGraph(2.0);
    const QColor leftBorder = color("ic_clr_kline_graph_scale_border");
    int thickness = 0;
    for (int y = 50; y < 70; ++y) {
        thickness += QColor(left.pixel(100, y)) == leftBorder;
    }
    EXPECT_EQ(thickness, 1) << "one device pixel whatever the ratio";

    member(tests::Peek_mLeftSelecting()) = false;
    selectRight(QRect(20, 30, 100, 60));
    const QImage right = paintedGraph(2.0);
    const QColor rightBorder = color("ic_clr_realtime_graph_scale_border");
    thickness = 0;
    for (int x = 60; x < 100; ++x) {
        int here = 0;
        for (int y = 50; y < 70; ++y) {
            here += QColor(right.pixel(x, y)) == rightBorder;
        }
        thickness = std::max(thickness, here);
    }
    EXPECT_EQ(thickness, 2) << "one pixel of the widget";
}

TEST_F(GraphPaint, SelectionIsPaintedOnlyWhileItIsMade) {
    makeShownMainGraph();
    selectLeft(QRect(20, 30, 100, 60));
    selectRight(QRect(40, 50, 100, 60));
    member(tests::Peek_mLeftSelecting()) = false;
    member(tests::Peek_mRightSelecting()) = false;
    EXPECT_EQ(paintedGraph(), chart());
}

// Region lines

TEST_F(GraphPaint, RegionLinesStandAtTheirIndicesOverTheFullHeight) {
    makeShownMainGraph(482, 200); // two pixels a minute
    const QImage chartAlone = chart();
    mGraph->setRegionLine(30, 100);
    EXPECT_EQ(paintedGraph(), chartAlone) << "moved, and not yet shown";
    showRegion(30, 100);
    const QImage painted = paintedGraph();
    const QColor orange(234, 153, 49);
    for (const int x : {61, 201}) {
        int dashes = 0;
        for (int y = 0; y < 200; ++y) {
            const bool dash = QColor(painted.pixel(x, y)) == orange;
            ASSERT_TRUE(dash || painted.pixel(x, y) == chartAlone.pixel(x, y)) << x << ", " << y;
            dashes += dash;
        }
        EXPECT_NEAR(dashes, 200 * 9 / 13, 5);
        EXPECT_EQ(QColor(painted.pixel(x, 0)), orange);
    }
    EXPECT_LE(differingPixels(painted, chartAlone), 400);
    mGraph->setRegionLineHide();
    EXPECT_EQ(paintedGraph(), chartAlone);
}

// Order of the layers

TEST_F(GraphPaint, LayersLieInTheirOrder) {
    makeShownMainGraph(482, 300);
    const QColor left = color("ic_clr_kline_graph_scale_border");
    const QColor right = color("ic_clr_realtime_graph_scale_border");
    const QColor orange(234, 153, 49);
    const auto pixel = [this] { return QColor(paintedGraph().pixel(61, 0)); };
    selectLeft(QRect(61, 0, 200, 100));
    EXPECT_EQ(pixel(), left);
    selectRight(QRect(61, 0, 200, 100));
    EXPECT_EQ(pixel(), right);
    showRegion(30, 100);
    EXPECT_EQ(pixel(), orange);

    // The tip box reaches from (2, 2) to (132, 25): over a region line at 61.
    const QImage without = paintedGraph();
    member(tests::Peek_mShowTip()) = true;
    addDeal(48, 100, 10.0);
    EXPECT_EQ(QColor(paintedGraph().pixel(61, 2)), color("clr_graph_frame_cross_line"));
    EXPECT_EQ(QColor(without.pixel(61, 2)), orange);

    GreenHost green;
    CSingletonT<CEnhanceDrawManager>::install(&green);
    mHost.mConfig.mClientType = EClientType::Trading;
    QImage all(mGraph->size(), QImage::Format_ARGB32_Premultiplied);
    all.fill(Qt::green);
    EXPECT_EQ(paintedGraph(), all);
    CSingletonT<CEnhanceDrawManager>::install(&mHost.mEnhance);
}

TEST_F(GraphPaint, DrawingsOfTheUserLieOverTheRegionLinesAndUnderTheTip) {
    makeShownMainGraph(482, 300);
    mGraph->setCurrGraphColor("#00ffff");
    mGraph->setGraphType(EVmGraphType::HorizontalLine);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(300, 15), QPointF(300, 15), Qt::LeftButton,
                      Qt::LeftButton, {});
    ASSERT_TRUE(mGraph->onMousePress(&press, mGraph.get()));
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(300, 15), QPointF(300, 15), Qt::LeftButton, {}, {});
    mGraph->recalcValueByAxis();
    mGraph->onMouseRelease(&release);
    QImage drawn = paintedGraph();
    ASSERT_NE(drawn, chart());
    const auto cyanRow = [&] {
        for (int y = 0; y < 100; ++y) {
            if (QColor(drawn.pixel(61, y)) == QColor(0, 255, 255)) {
                return y;
            }
        }
        return -1;
    };
    const int row = cyanRow();
    ASSERT_NEAR(row, 15, 1);
    EXPECT_EQ(QColor(drawn.pixel(5, row)), QColor(chart().pixel(5, row))) << "clipped ten pixels off the edge";
    showRegion(30, 100);
    drawn = paintedGraph();
    EXPECT_EQ(cyanRow(), row);
    member(tests::Peek_mShowTip()) = true;
    addDeal(48, 100, 10.0);
    drawn = paintedGraph();
    EXPECT_EQ(cyanRow(), -1);
}

// The tip box

TEST_F(GraphPaint, TipOfDealsHasALineForEachInAFrame) {
    makeShownMainGraph();
    member(tests::Peek_mShowTip()) = true;
    addDeal(48, 300, 10.126);
    addDeal(49, 5, 9.0);
    const QImage expected = chartWith([](QPainter &painter) {
        painter.setPen(QPen(color("clr_graph_frame_cross_line"), 1.0));
        painter.setBrush(color("clr_graph_frame_cross_line_bg"));
        painter.drawRect(QRect(2, 2, 130, 43));
        painter.setFont(tipFont("买入: 300\u3000价格: 10.13"));
        painter.setPen(color("clr_global_rise"));
        painter.drawText(16, 20, QString::fromUtf8("买入: 300\u3000价格: 10.13"));
        painter.setPen(color("clr_global_fall"));
        painter.drawText(16, 40, QString::fromUtf8("卖出: 5\u3000价格: 9.00"));
    });
    EXPECT_EQ(paintedGraph(), expected);
}

TEST_F(GraphPaint, TipOfOrdersHasAFrameOfThreeRows) {
    makeShownMainGraph();
    member(tests::Peek_mShowTip()) = true;
    addOrder(49, 700, 11.5);
    addOrder(48, 1, 8.25);
    const QImage expected = chartWith([](QPainter &painter) {
        painter.setPen(QPen(color("clr_graph_frame_cross_line"), 1.0));
        painter.setBrush(color("clr_graph_frame_cross_line_bg"));
        painter.drawRect(QRect(2, 2, 130, 3));
        painter.setFont(tipFont("委卖: 700\u3000价格: 11.50"));
        painter.setPen(color("clr_global_fall"));
        painter.drawText(16, 20, QString::fromUtf8("委卖: 700\u3000价格: 11.50"));
        painter.setPen(color("clr_global_rise"));
        painter.drawText(16, 40, QString::fromUtf8("委买: 1\u3000价格: 8.25"));
    });
    EXPECT_EQ(paintedGraph(), expected);
}

TEST_F(GraphPaint, OrdersGoOnBelowTheDealsAndTheFrameCountsTheDeals) {
    makeShownMainGraph();
    member(tests::Peek_mShowTip()) = true;
    addDeal(48, 300, kUnsetValue);
    addOrder(48, 1, 8.25);
    const QImage expected = chartWith([](QPainter &painter) {
        painter.setPen(QPen(color("clr_graph_frame_cross_line"), 1.0));
        painter.setBrush(color("clr_graph_frame_cross_line_bg"));
        painter.drawRect(QRect(2, 2, 130, 23));
        painter.setFont(tipFont("买入: 300\u3000价格: 非法值"));
        painter.setPen(color("clr_global_rise"));
        painter.drawText(16, 20, QString::fromUtf8("买入: 300\u3000价格: 非法值"));
        painter.drawText(16, 40, QString::fromUtf8("委买: 1\u3000价格: 8.25"));
    });
    EXPECT_EQ(paintedGraph(), expected);
}

TEST_F(GraphPaint, TipOfLargeVolumesStaysInItsFrame) {
    makeShownMainGraph();
    member(tests::Peek_mShowTip()) = true;
    addDeal(48, 5, 9.0);
    addDeal(48, 120000, 168.5);
    const QImage tip = paintedGraph();
    const QImage ground = chart();
    for (int y = 0; y <= 45; ++y) {
        for (int x = 133; x < 300; ++x) {
            ASSERT_EQ(tip.pixel(x, y), ground.pixel(x, y)) << x << ' ' << y;
        }
        if (y > 2 && y < 45) {
            ASSERT_EQ(QColor(tip.pixel(132, y)), color("clr_graph_frame_cross_line")) << y;
        }
    }
}

TEST_F(GraphPaint, TipIsNotPaintedUntilItIsShownNorWithoutTrades) {
    makeShownMainGraph();
    addDeal(48, 300, 10.0);
    EXPECT_EQ(paintedGraph(), chart());
    member(tests::Peek_mDealTips()).clear();
    member(tests::Peek_mShowTip()) = true;
    EXPECT_EQ(paintedGraph(), chart());
}

// The host's own layer

TEST_F(GraphPaint, TradingClientDrawsOnTheMainPane) {
    makeShownMainGraph();
    mHost.mConfig.mClientType = EClientType::Trading;
    mHost.mEnhance.mProbe = QPointF(QDateTime(QDate(2024, 3, 15), QTime(9, 30)).toMSecsSinceEpoch(), 10.0);
    mHost.mLog.clear();
    paintedGraph();
    const QStringList calls = mHost.mLog.of("CEnhanceDrawManager::drawGraph");
    ASSERT_EQ(calls.size(), 1);
    EXPECT_TRUE(calls[0].contains("SH600000")) << calls[0].toStdString();
    EXPECT_TRUE(calls[0].startsWith("CEnhanceDrawManager::drawGraph 0 ")) << calls[0].toStdString();
    EXPECT_EQ(mHost.mEnhance.mProbed.x(), 1) << "09:30 is the first pixel";
}

TEST_F(GraphPaint, OtherClientsAndSubPanesHaveNoLayerOfTheHost) {
    makeShownMainGraph();
    mHost.mLog.clear();
    paintedGraph();
    mHost.mConfig.mClientType = EClientType::Research;
    paintedGraph();
    mGraph.reset();
    mStrip.reset();
    makeGraph(EIndexDisplayType::Sub, {"MACD"});
    showGraph(300, 100);
    mHost.mConfig.mClientType = EClientType::Trading;
    paintedGraph();
    EXPECT_TRUE(mHost.mLog.of("CEnhanceDrawManager").isEmpty());
}

// Repainting what changed

TEST_F(GraphPaint, NothingIsRepaintedWhenNothingChanged) {
    makeShownMainGraph();
    mGraph->updateChanged();
    QCoreApplication::processEvents();
    tests::PaintWatch watch(mGraph.get());
    mGraph->updateChanged();
    QCoreApplication::processEvents();
    EXPECT_TRUE(watch.mRegions.isEmpty());
}

TEST_F(GraphPaint, TickRepaintsTheColumnsOfTheNewestPoints) {
    makeShownMainGraph(1200, 700);
    mGraph->updateChanged();
    QCoreApplication::processEvents();
    tests::PaintWatch watch(mGraph.get());
    stream("REALTIME", 574, 10.1);
    mGraph->updateChanged();
    QCoreApplication::processEvents();
    ASSERT_EQ(watch.mRegions.size(), 1);
    const QRect repainted = watch.mRegions[0].boundingRect();
    EXPECT_LE(repainted.width(), 20);
    EXPECT_GE(repainted.left(), 0);
    // Index 4 of 240 on 1200 pixels.
    EXPECT_TRUE(repainted.contains(mUi->getXAxisByIndex(4), 100));
}

/// Repaints a graph in parts as its window would, and keeps the picture.
class Screen {
public:
    explicit Screen(QWidget &widget) : mWidget(widget), mWatch(&widget) {
        mPicture = QImage(widget.size(), QImage::Format_ARGB32_Premultiplied);
        mPicture.fill(Qt::magenta);
        render(QRegion(widget.rect()));
    }
    /// Lets the pending updates through.
    void refresh() {
        mWatch.mRegions.clear();
        QCoreApplication::processEvents();
        const QList<QRegion> regions = mWatch.mRegions;
        for (const QRegion &region : regions) {
            render(region);
        }
    }
    const QImage &picture() const { return mPicture; }
    int parts() const { return mParts; }

private:
    void render(const QRegion &region) {
        mParts += region.boundingRect() != mWidget.rect();
        mWidget.render(&mPicture, region.boundingRect().topLeft(), region, QWidget::DrawChildren);
    }
    QWidget &mWidget;
    tests::PaintWatch mWatch;
    QImage mPicture;
    int mParts = 0;
};

TEST_F(GraphPaint, AnyWalkOfTicksLeavesWhatAWholeRepaintShows) {
    makeShownMainGraph(400, 300);
    mGraph->updateChanged();
    QCoreApplication::processEvents();
    Screen screen(*mGraph);
    std::mt19937 random(7);
    std::normal_distribution<double> step(0.0, 0.03);
    double price = 10.3;
    int minute = 574;
    for (int i = 0; i < 150; ++i) {
        price += step(random) + 0.2 * (10.1 - price);
        const bool newMinute = random() % 3 == 0;
        minute += newMinute;
        stream("REALTIME", minute, price);
        if (newMinute || random() % 2) {
            stream("REALTIMEVOL", minute, 300.0 + random() % 200);
        }
        if (mData->isRangeOutgrown()) {
            rescale();
        }
        mGraph->updateChanged();
        screen.refresh();
        ASSERT_EQ(screen.picture(), paintedGraph()) << "after tick " << i;
    }
    EXPECT_GT(screen.parts(), 50) << "most ticks repaint a part";
}

TEST_F(GraphPaint, PaintingInStripesGivesTheWholePicture) {
    makeShownMainGraph();
    selectLeft(QRect(20, 30, 100, 60));
    selectRight(QRect(40, 50, 100, 60));
    showRegion(30, 100);
    member(tests::Peek_mShowTip()) = true;
    addDeal(48, 300, 10.0);
    const QImage whole = paintedGraph();
    QImage image(mGraph->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    for (int x = 0; x < 300; x += 13) {
        const QRect stripe(x, 0, 13, 200);
        mGraph->render(&image, stripe.topLeft(), stripe, QWidget::DrawChildren);
    }
    EXPECT_EQ(image, whole);
}

} // namespace
