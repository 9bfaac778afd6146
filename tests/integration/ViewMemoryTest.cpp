#include "tests/integration/TerminalFixture.h"

#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/services/CStockManager.h"
#include "terminal/config/SavedView.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>

using namespace terminal;

namespace {

class ViewMemoryTest : public tests::TerminalFixture {
protected:
    QSize mSize; ///< of the window once it was arranged

    QString configPath() const { return mFolder.path() + "/config.json"; }
    /// Ends the terminal in order and starts it again.
    void restart() {
        mWindow.reset();
        mServices.reset();
        start();
    }
    /// Starts the terminal again from what a kill at this moment would leave: the window never hears of its end.
    void killAndStart() {
        const QString left = mFolder.path() + "/left.json";
        QFile::remove(left);
        ASSERT_TRUE(mServices->config().waitUntilWritten()); // else it is that of a moment before
        ASSERT_TRUE(QFile::copy(configPath(), left));
        mWindow.reset();
        mServices.reset();
        ASSERT_TRUE(QFile::remove(configPath()));
        ASSERT_TRUE(QFile::rename(left, configPath()));
        start();
    }
    void start() {
        TerminalSettings settings;
        settings.store = mFolder.path() + "/market.db";
        settings.config = configPath();
        settings.formulas = mFolder.path() + "/formulas";
        settings.scripts = mFolder.path() + "/scripts";
        settings.start = mNow;
        QString error;
        mServices = TerminalServices::open(settings, error);
        ASSERT_TRUE(mServices) << qPrintable(error);
        mServices->clock().pause();
        mWindow = std::make_unique<TerminalWindow>(*mServices);
        mWindow->restorePace();
        mWindow->show();
        const QString key = mServices->config().value(QStringLiteral("instrument"));
        ASSERT_TRUE(mWindow->showInstrument(key.isEmpty() ? QStringLiteral("SH600000") : key));
        ASSERT_TRUE(waitUntilComplete());
    }
    std::optional<SavedView> saved() const { return readSavedView(ConfigService(configPath())); }
    /// Waits for what a condition asks of the file on the disk.
    template <class Condition> bool waitUntilSaved(Condition condition) {
        return QTest::qWaitFor([&] { return saved() && condition(*saved()); }, 10000);
    }
    QStringList paneFormulas() {
        QStringList names;
        for (const QString &name : view().main()->getIndexParam()) {
            names.append(name);
        }
        return names;
    }
    void arrange() {
        ASSERT_TRUE(mWindow->showInstrument("SZ000001"));
        ASSERT_TRUE(waitUntilComplete());
        TC::CRealtimeMainWidget *chart = view().main();
        mWindow->setFormulaPanes(0);
        for (const char *formula : {"KDJ", "MACD"}) {
            chart->addIndexWidget();
            chart->handleDoubleClickedFormula(formula);
        }
        chart->addSuperposedStock(
            TC::CSingletonT<TC::CStockManager>::instance().getInstrumentDetail("SH600000"));
        chart->scaleView(false);
        chart->scaleView(false);
        mWindow->setPace(60.0);
        mWindow->setTradesShown(false);
        mWindow->resize(1000, 640);
        QCoreApplication::processEvents(); // it is as wide as its buttons at least
        mSize = mWindow->size();
        ASSERT_EQ(paneFormulas(), QStringList({"KDJ", "MACD"}));
        ASSERT_EQ(view().uiParam()->mDayCount, 3);
    }
    void expectArranged() {
        EXPECT_EQ(view().instrument(), "SZ000001");
        EXPECT_EQ(paneFormulas(), QStringList({"KDJ", "MACD"}));
        EXPECT_EQ(view().main()->getAddStockList(), QList<QString>({"SH600000"}));
        EXPECT_EQ(view().uiParam()->mDayCount, 3);
        EXPECT_EQ(mServices->clock().pace(), 60.0);
        EXPECT_FALSE(view().areTradesShown());
        EXPECT_EQ(mWindow->size(), mSize);
    }
};

} // namespace

TEST_F(ViewMemoryTest, TheArrangementComesBackAfterARestart) {
    arrange();
    restart();
    expectArranged();
}

TEST_F(ViewMemoryTest, TheArrangementComesBackAfterAKill) {
    arrange();
    ASSERT_TRUE(waitUntilSaved([](const SavedView &view) {
        return view.days == 3 && view.pace == 60.0 && view.document.contains("MACD") &&
               view.document.contains("SH600000");
    }));
    const QByteArray geometry = mWindow->saveGeometry();
    ASSERT_TRUE(waitUntilSaved([&](const SavedView &view) { return view.geometry == geometry; }));
    killAndStart();
    expectArranged();
}

TEST_F(ViewMemoryTest, EveryChangeIsWrittenSoonNotAtTheEndOnly) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    view().main()->handleDoubleClickedFormula("KDJ");
    EXPECT_TRUE(waitUntilSaved([](const SavedView &view) { return view.document.contains("KDJ"); }));
    view().main()->scaleView(false);
    EXPECT_TRUE(waitUntilSaved([](const SavedView &view) { return view.days == 2; }));
    mWindow->setPace(10.0);
    EXPECT_TRUE(waitUntilSaved([](const SavedView &view) { return view.pace == 10.0; }));
    mWindow->setFormulaPanes(0);
    EXPECT_TRUE(waitUntilSaved([](const SavedView &view) { return !view.document.contains("KDJ"); }));
}

TEST_F(ViewMemoryTest, HeightsComeBack) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    QVector<QString> formulas{"KDJ", "MACD"};
    std::vector<int> heights{5, 2, 1};
    view().main()->loadSettings(formulas, heights);
    view().main()->request(false);
    restart();
    EXPECT_EQ(view().main()->getStretchFactorList(), std::vector<int>({5, 2, 1}));
    EXPECT_EQ(paneFormulas(), QStringList({"KDJ", "MACD"}));
}

TEST_F(ViewMemoryTest, AFormulaOnTheMainChartComesBack) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    QString attached;
    QString replacing;
    for (const QString &name : mServices->catalogue().names()) {
        const int type = mServices->catalogue().description(name)->type;
        attached = type == 1 && attached.isEmpty() ? name : attached;
        replacing = type == 2 && replacing.isEmpty() ? name : replacing;
    }
    ASSERT_FALSE(attached.isEmpty());
    ASSERT_FALSE(replacing.isEmpty());
    const auto isShown = [this](const QString &name) {
        return view().main()->getRealTimeWidget()->getIndexes().contains(name.toUpper());
    };
    view().main()->handleDoubleClickedFormula(attached);
    ASSERT_TRUE(isShown(attached));
    restart();
    EXPECT_TRUE(isShown(attached)) << qPrintable(attached);
    view().main()->handleDoubleClickedFormula(attached); // off again
    view().main()->handleDoubleClickedFormula(replacing);
    ASSERT_TRUE(isShown(replacing));
    restart();
    EXPECT_TRUE(isShown(replacing)) << qPrintable(replacing);
}

TEST_F(ViewMemoryTest, WithoutAnythingKeptTheViewIsThatOfAFirstStart) {
    EXPECT_FALSE(mWindow->isPlaceRestored());
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    EXPECT_EQ(view().formulaPanes(), 1);
    EXPECT_EQ(view().uiParam()->mDayCount, 1);
}

TEST_F(ViewMemoryTest, ADamagedDocumentLeavesAUsableView) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    mWindow.reset();
    SavedView broken;
    broken.document = QStringLiteral("{\"index\": [\"KDJ\", 7]");
    broken.heights = {1, 1, 1};
    broken.geometry = QByteArray("no geometry");
    writeSavedView(mServices->config(), broken);
    restart();
    EXPECT_TRUE(waitUntilComplete());
    EXPECT_GT(view().pointCount(), 0);
}

/// The program itself, killed.
TEST_F(ViewMemoryTest, AProgramThatIsKilledHasWrittenItsView) {
    mWindow.reset();
    mServices.reset();
    ASSERT_TRUE(QDir().mkpath(mFolder.path() + "/.config/timeshare-terminal"));
    const QString config = mFolder.path() + "/.config/timeshare-terminal/config.json";
    QFile first(config);
    ASSERT_TRUE(first.open(QIODevice::WriteOnly));
    first.write("{\"panes\": \"3\", \"instrument\": \"SZ000001\"}");
    first.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
        environment.remove(name);
    }
    environment.insert("HOME", mFolder.path());
    const auto panesOf = [&config] {
        const std::optional<SavedView> view = readSavedView(ConfigService(config));
        return view ? QJsonDocument::fromJson(view->document.toUtf8()).object()["index"].toArray().size() : -1;
    };
    for (int round = 0; round < 2; ++round) {
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(TIMESHARE_BINARY_DIR "/bin/timeshare-terminal",
                      {"--store", mFolder.path() + "/market.db"});
        ASSERT_TRUE(program.waitForStarted());
        ASSERT_TRUE(QTest::qWaitFor([&] { return panesOf() == 3; }, 60000)) << panesOf();
        program.kill();
        ASSERT_TRUE(program.waitForFinished());
        ConfigService left(config);
        EXPECT_TRUE(left.messages().isEmpty());
        // The number of panes alone no longer tells; the view that was kept does.
        left.setValue("panes", "1");
        ASSERT_TRUE(left.waitUntilWritten());
    }
    EXPECT_EQ(panesOf(), 3);
}
