#include "host/services/DefaultServices.h"

#include "host/records/Enumerations.h"
#include "host/services/CConfigService.h"
#include "host/services/CFileClient.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CHostClock.h"
#include "host/services/CIndexTemplateManager.h"
#include "host/services/CSelfStockManager.h"
#include "host/services/CStockManager.h"
#include "host/services/IdGenerator.h"
#include "tests/fakehost/FakeHost.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>

using namespace TC;

namespace {

bool isMissing(const char *name) {
    const std::vector<std::string> names = missingServices();
    return std::count(names.begin(), names.end(), name) > 0;
}

} // namespace

TEST(DefaultServices, MissingServicesAreToldTogetherByReadableNames) {
    const std::vector<std::string> names = missingServices();
    EXPECT_EQ(names.size(), 20u);
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_TRUE(isMissing("TC::CHostClock"));
    EXPECT_TRUE(isMissing("kvservice::StockTypeCenter"));
    EXPECT_TRUE(isMissing("se::IdGenerator"));
}

TEST(DefaultServices, AllThatAWholeHostHasIsKnown) {
    const fakehost::FakeHost host;
    EXPECT_TRUE(missingServices().empty());
}

TEST(DefaultServices, ClockInstrumentsAndSeriesAreTheHostsOwn) {
    const DefaultServices defaults;
    EXPECT_EQ(missingServices(),
              (std::vector<std::string>{"TC::CFormulaManager", "TC::CHostClock", "TC::CStockManager"}));
}

TEST(DefaultServices, TheyGoWithTheirOwner) {
    { const DefaultServices defaults; }
    EXPECT_EQ(missingServices().size(), 20u);
}

TEST(DefaultServices, AServiceOfTheHostStays) {
    fakehost::FakeConfigService own;
    CSingletonT<CConfigService>::install(&own);
    {
        const DefaultServices defaults;
        EXPECT_EQ(&CSingletonT<CConfigService>::instance(), &own);
    }
    EXPECT_EQ(CSingletonT<CConfigService>::install(nullptr), &own);
}

TEST(DefaultServices, AServiceThatIsInstalledLaterStaysWhenTheDefaultsGo) {
    fakehost::FakeConfigService own;
    {
        const DefaultServices defaults;
        CSingletonT<CConfigService>::install(&own);
    }
    EXPECT_EQ(CSingletonT<CConfigService>::install(nullptr), &own);
}

TEST(DefaultServices, TheCatalogueHoldsTheFormulasOfTheMainChart) {
    const DefaultServices defaults;
    auto &catalogue = CSingletonT<CFormulaOperateManager>::instance();
    ASSERT_TRUE(catalogue.getFormula(QStringLiteral("realtime")));
    EXPECT_EQ(catalogue.getFormula(QStringLiteral("realtime"))->mName, QStringLiteral("REALTIME"));
    EXPECT_TRUE(catalogue.getFormula(QStringLiteral("REALTIMEVOL")));
    EXPECT_FALSE(catalogue.getFormula(QStringLiteral("MACD")));
    ASSERT_TRUE(catalogue.getRootCatalog());
    EXPECT_TRUE(catalogue.getRootCatalog()->children().isEmpty());
    QString name;
    EXPECT_FALSE(catalogue.saveFormula(name, QStringLiteral("text")).isGood());
}

TEST(DefaultServices, RequestIdsDiffer) {
    const DefaultServices defaults;
    const std::string first = se::IdGenerator::genId(1, QStringLiteral("REALTIME"), QStringLiteral("600000"));
    EXPECT_NE(first, se::IdGenerator::genId(1, QStringLiteral("REALTIME"), QStringLiteral("600000")));
    const int round = genRequestID();
    EXPECT_NE(round, genRequestID());
}

TEST(DefaultServices, SettingsAreKeptInMemory) {
    const DefaultServices defaults;
    UserConfigRecord record = SingletonManager::getIndexUserConfig().read();
    record.mShowVwap = !record.mShowVwap;
    SingletonManager::getIndexUserConfig().write(record);
    EXPECT_EQ(SingletonManager::getIndexUserConfig().read().mShowVwap, record.mShowVwap);
    getUserConfig()->setTableConfig(542, QStringLiteral("layout"));
    EXPECT_EQ(getUserConfig()->tableConfig(542), QStringLiteral("layout"));
    EXPECT_EQ(getUserConfig()->tableConfig(544), QString());
}

TEST(DefaultServices, TemplatesAndListsAreKeptInMemory) {
    const DefaultServices defaults;
    auto &templates = CSingletonT<CIndexTemplateManager>::instance();
    templates.saveTemplate({QStringLiteral("a"), {QStringLiteral("MACD")}});
    templates.saveTemplate({QStringLiteral("a"), {QStringLiteral("KDJ")}});
    ASSERT_EQ(templates.templates().size(), 1);
    EXPECT_EQ(templates.templates()[0].mFormulas, QVector<QString>{QStringLiteral("KDJ")});
    templates.removeTemplate(QStringLiteral("a"));
    templates.removeTemplate(QStringLiteral("a"));
    EXPECT_TRUE(templates.templates().isEmpty());

    auto &lists = CSingletonT<CSelfStockManager>::instance();
    ASSERT_EQ(lists.groups().size(), 1) << "there is always one";
    const QString list = lists.groups()[0];
    EXPECT_EQ(lists.addStocks(list, {QStringLiteral("SH600000"), QStringLiteral("SH600000")}), QString());
    EXPECT_EQ(lists.stocks(list), QVector<QString>{QStringLiteral("SH600000")});
    lists.addStocks(QStringLiteral("new"), {QStringLiteral("SZ000001")});
    EXPECT_EQ(lists.groups(), (QVector<QString>{list, QStringLiteral("new")}));
    lists.removeStocks(list, {QStringLiteral("SH600000")});
    EXPECT_TRUE(lists.stocks(list).isEmpty());
    EXPECT_TRUE(lists.stocks(QStringLiteral("unknown")).isEmpty());
}

TEST(DefaultServices, AReadOfAFileEndsWithoutSuccessAfterItsNumberIsKnown) {
    const DefaultServices defaults;
    auto &files = CSingletonT<CFileClient>::instance();
    QSignalSpy ends(&files, &CFileClient::sigReadFinished);
    int first = 0;
    int second = 0;
    const auto line = [](const QString &) { return 0; };
    files.readFileByLine(first, EFileType(), QStringLiteral("a"), line);
    files.readFileByLine(second, EFileType(), QStringLiteral("b"), line);
    EXPECT_NE(first, second);
    EXPECT_EQ(ends.count(), 0);
    QCoreApplication::processEvents();
    ASSERT_EQ(ends.count(), 2);
    EXPECT_EQ(ends[0][0].toInt(), first);
    EXPECT_FALSE(ends[0][1].toBool());
    EXPECT_FALSE(ends[0][2].toString().isEmpty());
}
