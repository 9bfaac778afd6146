#include "terminal/app/Translations.h"

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

TEST(TranslationsTest, DialogsOfFilesSpeakTheProgramsLanguage) {
    ASSERT_TRUE(terminal::installTranslation());
    // The context and the source texts of Qt's own dialog of files, and of its buttons.
    EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Files of type:"), QStringLiteral("文件类型："));
    EXPECT_NE(QCoreApplication::translate("QFileDialog", "Look in:"), QStringLiteral("Look in:"));
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    for (QTranslator *texts : QCoreApplication::instance()->findChildren<QTranslator *>()) {
        QCoreApplication::removeTranslator(texts);
        delete texts;
    }
}
