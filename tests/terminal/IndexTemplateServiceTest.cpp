#include "terminal/config/IndexTemplateService.h"

#include "tests/fakehost/FakeFormulaServices.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace terminal;

namespace {

class IndexTemplateServiceTest : public ::testing::Test {
protected:
    IndexTemplateServiceTest() {
        for (const char *name : {"MACD", "KDJ", "OBV"}) {
            mFormulas.add(QLatin1String(name));
        }
    }
    QString path() const { return mFolder.filePath(QStringLiteral("config.json")); }

    fakehost::CallLog mLog;
    fakehost::FakeFormulaOperateManager mFormulas{mLog};
    QTemporaryDir mFolder;
};

TEST_F(IndexTemplateServiceTest, OffersTheFormulasThatThereAre) {
    ConfigService config;
    IndexTemplateService service(config, mFormulas);
    EXPECT_EQ(service.indexes(), (QVector<QString>{"KDJ", "MACD", "OBV"}));
    EXPECT_TRUE(service.templates().isEmpty());
}

TEST_F(IndexTemplateServiceTest, TemplatesOutliveTheProgram) {
    {
        ConfigService config(path());
        IndexTemplateService service(config, mFormulas);
        service.saveTemplate({QStringLiteral("短线"), {QStringLiteral("KDJ")}});
        service.saveTemplate({QStringLiteral("趋势"), {QStringLiteral("MACD"), QStringLiteral("OBV")}});
        service.saveTemplate({QStringLiteral("短线"), {QStringLiteral("OBV"), QStringLiteral("KDJ")}});
    }
    ConfigService config(path());
    IndexTemplateService service(config, mFormulas);
    ASSERT_EQ(service.templates().size(), 2);
    EXPECT_EQ(service.templates()[0].mName, QStringLiteral("短线"));
    EXPECT_EQ(service.templates()[0].mFormulas, (QVector<QString>{"OBV", "KDJ"}));
    EXPECT_EQ(service.templates()[1].mFormulas, (QVector<QString>{"MACD", "OBV"}));
    service.removeTemplate(QStringLiteral("短线"));
    ASSERT_EQ(service.templates().size(), 1);
    EXPECT_EQ(service.templates()[0].mName, QStringLiteral("趋势"));
}

TEST_F(IndexTemplateServiceTest, PassesOverWhatItCannotRead) {
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"indexTemplates": {"a": 3, "b": ["MACD", 7, "gone"], "c": ["gone"]}})");
    file.close();
    ConfigService config(path());
    IndexTemplateService service(config, mFormulas);
    ASSERT_EQ(service.templates().size(), 1);
    EXPECT_EQ(service.templates()[0].mName, QStringLiteral("b"));
    EXPECT_EQ(service.templates()[0].mFormulas, (QVector<QString>{"MACD"}));
}

} // namespace
