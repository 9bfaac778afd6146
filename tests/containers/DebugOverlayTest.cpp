// What the developer of a host sees over a view, and what is said of an instrument that nobody knows.

#include "containers/DebugOverlay.h"

#include "tests/containers/MainWidgetFixture.h"
#include "tests/support/MessageGuard.h"

#include <QLoggingCategory>

namespace tests {
namespace {

class Overlay : public MainWidgetFixture {
protected:
    ~Overlay() override {
        qunsetenv("TIMESHARE_OVERLAY");
        QLoggingCategory::setFilterRules(QString());
    }
    TC::DebugOverlay *overlay() const {
        return static_cast<TC::DebugOverlay *>(mMain->findChild<QWidget *>("debug_overlay"));
    }
    static QImage shown(QWidget &widget) { return widget.grab().toImage(); }
};

TEST_F(Overlay, AViewHasNoneUnlessTheEnvironmentAsksForIt) {
    makeView();
    EXPECT_FALSE(overlay());
}

TEST_F(Overlay, LinesTellRequestPointsTimesAndRange) {
    showView(1);
    fill(3);
    const QStringList lines = TC::DebugOverlay::linesOf(*pane());
    ASSERT_EQ(lines.size(), 2);
    const QString price = lines.filter("REALTIME ").value(0);
    EXPECT_TRUE(price.startsWith("SH600000 REALTIME  request " +
                                 pane()->getGraphWidgets()[0]->getData()->getReqID({"SH600000", "REALTIME"})))
        << price.toStdString();
    EXPECT_TRUE(price.contains("3 points")) << price.toStdString();
    EXPECT_TRUE(price.contains("03-15 09:30 - 03-15 09:32")) << price.toStdString();
    EXPECT_TRUE(price.contains("range ")) << price.toStdString();
    EXPECT_EQ(TC::DebugOverlay::linesOf(*sub(0)).size(), 1);
}

TEST_F(Overlay, ItFramesWhatWasRepaintedAndNothingOfItsOwnDoing) {
    qputenv("TIMESHARE_OVERLAY", "1");
    showView();
    fill(3);
    ASSERT_TRUE(overlay());
    // What was painted as the view came is forgotten after a while, however often the overlay itself has painted.
    ASSERT_TRUE(QTest::qWaitFor([this] { return overlay()->isVisible() && overlay()->repaints().isEmpty(); }));
    EXPECT_EQ(overlay()->geometry(), mMain->rect());
    timeScale()->repaint(QRect(3, 4, 50, 6));
    ASSERT_FALSE(overlay()->repaints().isEmpty());
    const QRect place(timeScale()->mapTo(mMain.get(), QPoint(3, 4)), QSize(50, 6));
    EXPECT_TRUE(overlay()->repaints().contains(place));
}

TEST_F(Overlay, ItIsDrawnOverTheViewAndTakesNoMouse) {
    qputenv("TIMESHARE_OVERLAY", "1");
    showView();
    fill(3);
    ASSERT_TRUE(QTest::qWaitFor([this] { return overlay()->isVisible(); }));
    const QImage with = shown(*mMain);
    overlay()->hide();
    EXPECT_NE(shown(*mMain), with);
    overlay()->show();
    EXPECT_NE(mMain->childAt(500, 200), overlay());
}

TEST_F(Overlay, AnUnknownInstrumentIsAnsweredAndSaid) {
    makeView();
    EXPECT_TRUE(mMain->trySetStock("SH600000"));
    EXPECT_FALSE(mMain->trySetStock("SH999999")) << "in silence, as long as nobody asks";
    EXPECT_FALSE(mUi->isValid());
    QLoggingCategory::setFilterRules(QStringLiteral("timeshare.data=true"));
    const ExpectMessages expected("unknown instrument \"SH999999\"");
    EXPECT_FALSE(mMain->trySetStock("SH999999"));
    EXPECT_EQ(expected.seen().size(), 1);
    EXPECT_TRUE(mMain->trySetStock("SH600000"));
}

} // namespace
} // namespace tests
