// What a picture of a chart shows beside the chart.

#include "terminal/app/ChartView.h"
#include "terminal/app/Snapshot.h"
#include "tests/integration/TerminalFixture.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

class SnapshotSheetTest : public tests::TerminalFixture {
protected:
    /// The rows above the chart, of a sheet with a note.
    QImage stripOf(const QString &note) {
        terminal::SnapshotSheet sheet(mServices->chartSources(), note);
        sheet.resize(600, 400);
        sheet.setAttribute(Qt::WA_DontShowOnScreen);
        sheet.show();
        EXPECT_TRUE(sheet.view().show("SH600000", QDate()));
        EXPECT_TRUE(terminal::waitForChart(sheet.view()));
        const QImage picture = sheet.grab().toImage();
        EXPECT_EQ(picture.size(), QSize(600, 400));
        EXPECT_EQ(sheet.view().geometry().bottomRight(), QPoint(599, 399));
        return picture.copy(0, 0, picture.width(), sheet.view().y());
    }
};

} // namespace

TEST_F(SnapshotSheetTest, WithoutANoteTheChartTakesAll) {
    EXPECT_EQ(stripOf({}).height(), 0);
}

TEST_F(SnapshotSheetTest, ANoteIsWrittenAboveTheChart) {
    const QImage strip = stripOf("SH600998 600998");
    ASSERT_GT(strip.height(), 8);
    EXPECT_LT(strip.height(), 40);
    const QRgb ground = strip.pixel(strip.width() - 1, 0);
    int written = 0;
    for (int y = 0; y < strip.height(); ++y) {
        for (int x = 0; x < strip.width(); ++x) {
            written += strip.pixel(x, y) != ground ? 1 : 0;
        }
    }
    EXPECT_GT(written, 100);
    EXPECT_LT(written, strip.width() * strip.height() / 4);
}

TEST(SnapshotPathTest, APipeAndAFolderAreLeftAsTheyAre) {
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_TRUE(
        terminal::checkPicturePath(pipe).startsWith(pipe + ": the picture cannot be written (it is a pipe"));
    EXPECT_TRUE(QFileInfo(pipe).exists() && !QFileInfo(pipe).isFile());
    EXPECT_TRUE(terminal::checkPicturePath(folder.path()).contains("it is a folder"));
    const QString picture = folder.filePath("a.png");
    EXPECT_EQ(terminal::checkPicturePath(picture), QString());
    EXPECT_FALSE(QFile::exists(picture)) << "only looked at";
}
