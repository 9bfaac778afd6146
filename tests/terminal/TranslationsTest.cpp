#include "terminal/app/Translations.h"

#include "terminal/app/CommandLine.h"
#include "terminal/config/ConfigService.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTemporaryDir>
#include <QTranslator>

#include <gtest/gtest.h>

using terminal::Language;

namespace {

class TranslationsTest : public ::testing::Test {
protected:
    void TearDown() override {
        for (QTranslator *texts : QCoreApplication::instance()->findChildren<QTranslator *>()) {
            QCoreApplication::removeTranslator(texts);
            delete texts;
        }
        QLocale::setDefault(mBefore);
    }
    const QLocale mBefore;
};

} // namespace

TEST_F(TranslationsTest, DialogsOfFilesSpeakTheProgramsLanguage) {
    ASSERT_TRUE(terminal::installLanguage(Language::Chinese));
    // The context and the source texts of Qt's own dialog of files, and of its buttons.
    EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Files of type:"), QStringLiteral("文件类型："));
    EXPECT_NE(QCoreApplication::translate("QFileDialog", "Look in:"), QStringLiteral("Look in:"));
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    ASSERT_TRUE(terminal::installLanguage(Language::English));
    EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Files of type:"), QStringLiteral("Files of type:"));
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
}

TEST_F(TranslationsTest, TextsOfTheTerminalAndOfTheLibraryFollow) {
    const QString chinese = terminal::commandLineHelp();
    EXPECT_TRUE(chinese.startsWith(QStringLiteral("用法:")));
    ASSERT_TRUE(terminal::installLanguage(Language::English));
    EXPECT_TRUE(
        terminal::commandLineHelp().startsWith(QStringLiteral("Usage: timeshare-terminal [options]\n")));
    EXPECT_EQ(QCoreApplication::translate("GZ::CMessageBox", "不保存"), QStringLiteral("Don't save"));
    ASSERT_TRUE(terminal::installLanguage(Language::Chinese));
    EXPECT_EQ(terminal::commandLineHelp(), chinese);
}

TEST_F(TranslationsTest, TheLanguageIsTheOneGivenOrTheMachines) {
    EXPECT_EQ(terminal::languageOf({}, QLocale("zh_CN")), Language::Chinese);
    EXPECT_EQ(terminal::languageOf({}, QLocale("zh_TW")), Language::Chinese);
    EXPECT_EQ(terminal::languageOf({}, QLocale::c()), Language::Chinese);
    EXPECT_EQ(terminal::languageOf({}, QLocale("en_US")), Language::English);
    EXPECT_EQ(terminal::languageOf({}, QLocale("de_DE")), Language::English);
    EXPECT_EQ(terminal::languageOf(QStringLiteral("en"), QLocale("zh_CN")), Language::English);
    EXPECT_EQ(terminal::languageOf(QStringLiteral("zh"), QLocale("en_US")), Language::Chinese);
    EXPECT_EQ(terminal::languageOf(QStringLiteral("fr"), QLocale("zh_CN")), Language::Chinese);
}

TEST_F(TranslationsTest, TheLanguageIsKeptInTheConfiguration) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("config.json"));
    EXPECT_EQ(terminal::keptValue(path, QStringLiteral("language")), QString());
    {
        terminal::ConfigService config(path);
        config.setValue(QStringLiteral("language"), QStringLiteral("en"));
        EXPECT_EQ(terminal::keptValue(path, QStringLiteral("language")), QStringLiteral("en"));
        ASSERT_TRUE(config.waitUntilWritten());
    }
    EXPECT_EQ(terminal::keptValue(path, QStringLiteral("language")), QStringLiteral("en"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("damaged");
    file.close();
    EXPECT_EQ(terminal::keptValue(path, QStringLiteral("language")), QString());
    EXPECT_TRUE(QFile::exists(path)) << "only looked at";
}
