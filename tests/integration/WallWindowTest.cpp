// A wall of views: each of another instrument, whole and live.

#include "tests/integration/TerminalFixture.h"

#include "terminal/app/WallWindow.h"

#include <QSet>

#include <algorithm>
#include <functional>

namespace tests {
namespace {

using terminal::ChartView;
using terminal::WallWindow;

class Wall : public TerminalFixture {
protected:
    void SetUp() override {
        TerminalFixture::SetUp();
        mWindow.reset();
    }
    static bool waitForAll(const WallWindow &wall, const std::function<bool(const ChartView &)> &holds) {
        return QTest::qWaitFor(
            [&] {
                return std::all_of(wall.views().begin(), wall.views().end(),
                                   [&](const ChartView *view) { return holds(*view); });
            },
            20000);
    }
    static bool waitUntilAllComplete(const WallWindow &wall) {
        return waitForAll(wall, [](const ChartView &view) { return view.isComplete(); });
    }
};

TEST_F(Wall, ShowsOneInstrumentAViewWithTwoFormulaPanes) {
    WallWindow wall(*mServices, 4);
    wall.resize(1600, 900);
    wall.show();
    wall.showFrom(QStringLiteral("SZ000001"));
    ASSERT_TRUE(waitUntilAllComplete(wall));
    ASSERT_EQ(wall.views().size(), 4);
    EXPECT_EQ(wall.views().first()->instrument(), "SZ000001");
    QSet<QString> instruments;
    for (const ChartView *view : wall.views()) {
        instruments.insert(view->instrument());
        EXPECT_EQ(view->formulaPanes(), 2);
        EXPECT_FALSE(view->isPastDay()) << view->instrument().toStdString();
        EXPECT_TRUE(view->isVisible());
    }
    EXPECT_EQ(instruments.size(), 4);
    // Row by row, two in each.
    const auto at = [&](int i) { return wall.views()[i]->geometry(); };
    EXPECT_GT(at(1).left(), at(0).right());
    EXPECT_EQ(at(1).top(), at(0).top());
    EXPECT_GT(at(2).top(), at(0).bottom());
    EXPECT_EQ(at(2).left(), at(0).left());
    EXPECT_GE(at(3).right(), wall.width() - 1);
}

TEST_F(Wall, EveryViewFollowsTheMarket) {
    WallWindow wall(*mServices, 3);
    wall.resize(1600, 900);
    wall.show();
    wall.showFrom(QStringLiteral("SH600000"));
    ASSERT_TRUE(waitUntilAllComplete(wall));
    QHash<const ChartView *, int> before;
    for (const ChartView *view : wall.views()) {
        before[view] = view->pointCount();
        EXPECT_GT(view->pointCount(), 0);
    }
    mServices->clock().setPace(600.0);
    mServices->clock().resume();
    EXPECT_TRUE(
        waitForAll(wall, [&](const ChartView &view) { return view.pointCount() >= before[&view] + 2; }));
}

TEST_F(Wall, ThereIsAtLeastOneView) {
    WallWindow one(*mServices, 0);
    EXPECT_EQ(one.views().size(), 1);
    one.showFrom(QStringLiteral("SH600000"));
    EXPECT_EQ(one.views().first()->instrument(), "SH600000");
}

} // namespace
} // namespace tests
