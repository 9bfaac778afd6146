// The terminal as one sees it who started it in English: its windows, menus and dialogs, at the smallest size and a usual one, in
// both themes. What it looks like is left in the folder english below the build.

#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CSelfStockManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CHpfDataTable.h"
#include "host/toolkit/CMessageBox.h"
#include "host/toolkit/CUiResource.h"
#include "host/windows/CAddSelfStockDialog.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "linkage/CRealtimeDealDialog.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "linkage/CRealtimeOrderDialog.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "statistics/CRealtimeStageDialog.h"
#include "statistics/CRealtimeStatisticDialog.h"
#include "terminal/app/ImportDialog.h"
#include "terminal/app/MessagePanel.h"
#include "terminal/app/ThemeStyle.h"
#include "terminal/app/Translations.h"
#include "tests/english/TextWatch.h"
#include "tests/integration/TerminalFixture.h"
#include "tests/support/DocumentPictures.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

using namespace terminal;

namespace {

void addNamesOf(const TC::CFormulaCatalogDetailPtr &node, QStringList &names) {
    names.append(node->catalogName());
    for (const TC::CFormulaCatalogDetailPtr &child : node->children()) {
        addNamesOf(child, names);
    }
}

class EnglishTerminalTest : public tests::TerminalFixture {
protected:
    static void SetUpTestSuite() {
        QApplication::setStyle(new ThemeStyle); // as the program itself does
        ASSERT_TRUE(installLanguage(Language::English));
        TerminalFixture::SetUpTestSuite();
    }
    void SetUp() override {
        QCoreApplication::installTranslator(&mWatch);
        TerminalFixture::SetUp();
        ASSERT_TRUE(mWindow->showInstrument(QStringLiteral("SH600000")));
        ASSERT_TRUE(waitUntilComplete());
        collectNames();
    }
    void TearDown() override {
        TerminalFixture::TearDown();
        const QString missing = mWatch.missing().join('\n');
        EXPECT_TRUE(missing.isEmpty()) << "texts without a translation: " << qPrintable(missing);
        GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
    }

    /// The names that stay as they are: of instruments, sectors, accounts, strategies and formulas.
    void collectNames() {
        const std::shared_ptr<const Catalogue> catalogue = mServices->store().catalogue();
        for (const Instrument &instrument : catalogue->instruments) {
            mNames.append(instrument.name);
        }
        for (const Sector &sector : catalogue->sectors) {
            mNames.append(sector.name);
        }
        for (const Portfolio &portfolio : catalogue->portfolios) {
            mNames.append(portfolio.name);
        }
        auto &linkage = TC::CSingletonT<TC::CLinkageManager>::instance();
        for (const auto &account : linkage.getAccounts()) {
            mNames.append(QString::fromStdString(account->mAccountName));
        }
        addNamesOf(TC::CSingletonT<TC::CFormulaOperateManager>::instance().getRootCatalog(), mNames);
        for (const QString &list : TC::CSingletonT<TC::CSelfStockManager>::instance().groups()) {
            mNames.append(list);
        }
        mNames.removeAll(QString());
    }

    /// A window speaks English and has room for it; its picture is kept under a name.
    void look(QWidget &window, const QString &name) {
        settle();
        const QString chinese = tests::chineseOf(tests::textsOf(window), mNames).join('\n');
        EXPECT_TRUE(chinese.isEmpty()) << qPrintable(name) << " has Chinese left: " << qPrintable(chinese);
        const QString clipped = tests::clippedOf(window).join('\n');
        EXPECT_TRUE(clipped.isEmpty()) << qPrintable(name) << " has no room for: " << qPrintable(clipped);
        keep(window, name);
    }
    /// What changed is laid out and painted: the next turn knows of requests that this one makes.
    static void settle() {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
        }
    }
    /// The pane beneath has its lines.
    bool waitForPane() {
        return QTest::qWaitFor(
            [this] {
                const auto panes = view().main()->getSubIndexWidgets();
                return view().isComplete() && !panes.isEmpty() &&
                       !panes.first()->getGraphWidgets().first()->getData()->getMaxMinMap().isEmpty();
            },
            10000);
    }
    static void keep(QWidget &window, const QString &name) {
        const QString folder = QStringLiteral(TIMESHARE_BINARY_DIR "/english");
        ASSERT_TRUE(QDir().mkpath(folder));
        EXPECT_TRUE(window.grab().save(folder + '/' + name + ".png"));
    }

    tests::TextWatch mWatch;
    QStringList mNames;
};

} // namespace

TEST_F(EnglishTerminalTest, TheWindowAtTwoSizesInBothThemes) {
    mWindow->setFormulaPanes(1);
    mWindow->setTradesShown(true);
    for (const QSize &size : {QSize(480, 320), QSize(1280, 800)}) {
        mWindow->resize(size);
        for (const char *theme : {"dark", "light"}) {
            mWindow->setThemeName(QLatin1String(theme));
            ASSERT_TRUE(waitForPane());
            look(*mWindow, QStringLiteral("window-%1-%2").arg(size.width()).arg(QLatin1String(theme)));
        }
    }
    EXPECT_TRUE(tests::keepDocumentPicture(*mWindow, QStringLiteral("terminal-english")));
    EXPECT_EQ(mWindow->windowTitle(), QStringLiteral("Intraday quotes"));
    EXPECT_EQ(mWindow->findChild<QPushButton *>("pause")->text(), QStringLiteral("Pause"));
    EXPECT_EQ(mWindow->findChild<QPushButton *>("theme")->text(), QStringLiteral("Dark"));
}

TEST_F(EnglishTerminalTest, TheFormulasAndTheMessages) {
    mWindow->setFormulasShown(true);
    mServices->messages().sink()({QStringLiteral("MA"), 3, QStringLiteral("a fault")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return mWindow->messages()->isVisible(); }, 5000));
    look(*mWindow, QStringLiteral("formulas"));
}

TEST_F(EnglishTerminalTest, TheMenuOfTheChart) {
    QTimer watch;
    bool seen = false;
    QObject::connect(&watch, &QTimer::timeout, mWindow.get(), [&] {
        if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
            watch.stop();
            seen = true;
            look(*menu, QStringLiteral("menu"));
            menu->close();
        }
    });
    watch.start(0);
    QContextMenuEvent event(QContextMenuEvent::Mouse, {10, 10}, view().graph()->mapToGlobal(QPoint(10, 10)));
    QCoreApplication::sendEvent(view().graph(), &event);
    EXPECT_TRUE(seen);
}

TEST_F(EnglishTerminalTest, TheDialogsOfTrades) {
    mWindow->openTradeDetails();
    auto *details = mWindow->findChild<TC::CRealtimeLinkageSettingDialog *>();
    ASSERT_TRUE(details);
    details->slotTimeout();
    look(*details, QStringLiteral("trade-details"));
    TC::CRealtimeOrderDialog orders;
    orders.show();
    look(orders, QStringLiteral("orders"));
    TC::CRealtimeDealDialog deals;
    deals.show();
    look(deals, QStringLiteral("deals"));
    TC::CRealtimeTaskTableDialog tasks;
    tasks.show();
    look(tasks, QStringLiteral("tasks"));
}

TEST_F(EnglishTerminalTest, TheDialogsOfAStretch) {
    for (const bool isReplay : {false, true}) {
        TC::CRealtimeStatisticDialog statistics(nullptr, isReplay);
        statistics.show();
        look(statistics, isReplay ? QStringLiteral("statistics-replay") : QStringLiteral("statistics"));
    }
    TC::CRealtimeStageDialog ranking;
    ranking.show();
    look(ranking, QStringLiteral("ranking"));
}

TEST_F(EnglishTerminalTest, TheOtherDialogs) {
    ImportDialog *import = mWindow->openImport();
    look(*import, QStringLiteral("import"));
    TC::CAddSelfStockDialog add({QStringLiteral("SH600000")});
    add.show();
    look(add, QStringLiteral("watchlist"));
    mWindow->openSmartKeyboard(QStringLiteral("6"));
    look(*TC::CSmartKeyboardDialog::instance(), QStringLiteral("keyboard"));
    TC::CSmartKeyboardDialog::instance()->hide();
    mWindow->showSelfStocks();
    look(*mWindow->findChild<QWidget *>("self_stocks_dialog"), QStringLiteral("self-stocks"));
    mWindow->startReplay(timeOf(mToday, 575) / 1000, timeOf(mToday, 585) / 1000);
    look(*mWindow->findChild<QWidget *>("replay_panel"), QStringLiteral("replay"));
}

// What was saved in one language loads in the other

namespace {

class OtherLanguageTest : public EnglishTerminalTest {
protected:
    /// Ends the terminal in order and starts it again in a language.
    void restart(Language language) {
        mWindow.reset();
        mServices.reset();
        ASSERT_TRUE(installLanguage(language));
        TerminalSettings settings;
        settings.store = mFolder.filePath(QStringLiteral("market.db"));
        settings.config = mFolder.filePath(QStringLiteral("config.json"));
        settings.formulas = mFolder.filePath(QStringLiteral("formulas"));
        settings.scripts = mFolder.filePath(QStringLiteral("scripts"));
        settings.start = mNow;
        QString error;
        mServices = TerminalServices::open(settings, error);
        ASSERT_TRUE(mServices) << qPrintable(error);
        mServices->clock().pause();
        mWindow = std::make_unique<TerminalWindow>(*mServices);
        mWindow->show();
        ASSERT_TRUE(mWindow->showInstrument(QStringLiteral("SH600000")));
        ASSERT_TRUE(waitUntilComplete());
    }
    static TC::CFormulaOperateManager &formulas() {
        return TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    }
    static TC::CSelfStockManager &lists() { return TC::CSingletonT<TC::CSelfStockManager>::instance(); }
    QStringList paneFormulas() {
        const auto names = view().main()->getIndexParam();
        return {names.begin(), names.end()};
    }
    /// Makes a formula, a list, a table's layout and panes in one language and looks for them in the other.
    void carryOver(Language from, Language to) {
        ASSERT_NO_FATAL_FAILURE(restart(from));
        QString own;
        ASSERT_EQ(formulas().saveFormula(own, formulas().newFormulaText({})).mMessage, QString());
        ASSERT_FALSE(own.isEmpty());
        const QVector<QString> before = lists().groups();
        // A write is refused for a moment while the trades of the morning are written.
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return lists().addStocks(before.first(), {QStringLiteral("SZ000001")}).isEmpty(); }, 20000));
        mWindow->setFormulaPanes(0);
        for (const QString &formula : {own, QStringLiteral("MACD")}) {
            view().main()->addIndexWidget();
            view().main()->handleDoubleClickedFormula(formula);
        }
        ASSERT_TRUE(waitUntilComplete());
        const QStringList panes = paneFormulas();
        ASSERT_EQ(panes.size(), 2);
        ASSERT_TRUE(mServices->config().waitUntilWritten());

        ASSERT_NO_FATAL_FAILURE(restart(to));
        EXPECT_EQ(paneFormulas(), panes);
        EXPECT_TRUE(formulas().getFormula(own)) << qPrintable(own);
        EXPECT_EQ(lists().groups(), before);
        EXPECT_TRUE(lists().stocks(before.first()).contains(QStringLiteral("SZ000001")));
    }
    void TearDown() override {
        EnglishTerminalTest::TearDown();
        ASSERT_TRUE(installLanguage(Language::English));
    }
};

} // namespace

TEST_F(OtherLanguageTest, AViewSavedInChineseLoadsInEnglish) {
    carryOver(Language::Chinese, Language::English);
}

TEST_F(OtherLanguageTest, AViewSavedInEnglishLoadsInChinese) {
    carryOver(Language::English, Language::Chinese);
}
