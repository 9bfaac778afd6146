// The window as the documents show it: a day that is nearly over, the user's trades, two formulas and the cross line.

#include "tests/support/DocumentPictures.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/toolkit/CUiResource.h"
#include "terminal/app/ThemeStyle.h"
#include "tests/integration/TerminalFixture.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QLabel>
#include <QSet>

#include <algorithm>

namespace {

class DocumentPicturesTest : public tests::TerminalFixture {
protected:
    void SetUp() override {
        QApplication::setStyle(new terminal::ThemeStyle); // as the program itself does
        TerminalFixture::SetUp();
    }
    void TearDown() override {
        TerminalFixture::TearDown();
        QApplication::setStyle(QStringLiteral("Fusion"));
    }
    /// The chart, the panes beneath it and the market's time.
    bool waitUntilFilled() {
        return QTest::qWaitFor(
            [this] {
                const auto panes = view().main()->getSubIndexWidgets();
                const auto labels = mWindow->findChildren<QLabel *>();
                return view().isComplete() && view().pointCount() >= 236 &&
                       std::none_of(panes.begin(), panes.end(),
                                    [](const TC::CRealtimeWidget *pane) {
                                        const auto graphs = pane->getGraphWidgets();
                                        return graphs.first()->getData()->getMaxMinMap().isEmpty();
                                    }) &&
                       std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
                           return label->text().startsWith(QStringLiteral("市场时间"));
                       });
            },
            20000);
    }
};

int colorsOf(const QImage &image) {
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); y += 3) {
        for (int x = 0; x < image.width(); x += 3) {
            colors.insert(image.pixel(x, y));
        }
    }
    return colors.size();
}

} // namespace

TEST_F(DocumentPicturesTest, TheWindowInBothThemes) {
    mServices->clock().setTime(terminal::timeOf(mToday, 895)); // 14:55
    mWindow->setTradesShown(true);
    mWindow->setFormulaPanes(2);
    ASSERT_TRUE(mWindow->showInstrument(QStringLiteral("SH600000")));
    ASSERT_TRUE(waitUntilFilled());
    QTest::keyClick(mWindow.get(), Qt::Key_Home);
    for (int i = 0; i < 94; ++i) {
        QTest::keyClick(mWindow.get(), Qt::Key_Right);
    }
    EXPECT_TRUE(view().uiParam()->mCrossShown);
    QImage before;
    for (const char *theme : {"dark", "light"}) {
        mWindow->setThemeName(QLatin1String(theme));
        ASSERT_TRUE(waitUntilFilled());
        QCoreApplication::processEvents();
        const QImage now = mWindow->grab().toImage();
        EXPECT_GT(colorsOf(now), 30) << theme << ": more than a ground";
        EXPECT_NE(now, before);
        before = now;
        EXPECT_TRUE(
            tests::keepDocumentPicture(*mWindow, QStringLiteral("terminal-%1").arg(QLatin1String(theme))));
    }
    mWindow->setThemeName(QStringLiteral("dark"));
}
