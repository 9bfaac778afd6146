#include "host/Translation.h"

#include "host/toolkit/CHpfDataTable.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/Wording.h"
#include "host/windows/CSmartKeyboardDialog.h"

#include <QCoreApplication>
#include <QLocale>

#include <gtest/gtest.h>

namespace {

class TranslationTest : public ::testing::Test {
protected:
    void TearDown() override { ASSERT_TRUE(timeshare::installTranslation(QLocale::c())); }

    static QString yes() { return QCoreApplication::translate("GZ::CMessageBox", "是"); }
    static QString scaled(double number, int decimals = 2) {
        return GZ::formatDoubleNumber(number, decimals, utils::eFormatScaled, false, QStringLiteral("--"));
    }
};

} // namespace

TEST_F(TranslationTest, ALocaleOfEnglishGivesEnglishAndOneOfChineseGivesItBack) {
    EXPECT_EQ(yes(), QStringLiteral("是"));
    for (const char *english : {"en", "en_US", "en_GB"}) {
        EXPECT_TRUE(timeshare::installTranslation(QLocale(english)));
        EXPECT_EQ(yes(), QStringLiteral("Yes")) << english;
    }
    for (const char *chinese : {"zh_CN", "zh_TW", "C"}) {
        ASSERT_TRUE(timeshare::installTranslation(QLocale(QLocale::English)));
        EXPECT_TRUE(timeshare::installTranslation(QLocale(chinese)));
        EXPECT_EQ(yes(), QStringLiteral("是")) << chinese;
    }
}

TEST_F(TranslationTest, AnotherLanguageChangesNothing) {
    EXPECT_FALSE(timeshare::installTranslation(QLocale(QLocale::German)));
    EXPECT_EQ(yes(), QStringLiteral("是"));
    ASSERT_TRUE(timeshare::installTranslation(QLocale(QLocale::English)));
    EXPECT_FALSE(timeshare::installTranslation(QLocale(QLocale::German)));
    EXPECT_EQ(yes(), QStringLiteral("Yes"));
}

TEST_F(TranslationTest, ACatalogueThatIsMissingIsTold) {
    const QLocale english(QLocale::English);
    EXPECT_FALSE(timeshare::installTranslation(english, QStringLiteral(":/nowhere"), QStringLiteral("host")));
    EXPECT_TRUE(timeshare::installTranslation(english));
    EXPECT_EQ(yes(), QStringLiteral("Yes"));
}

TEST_F(TranslationTest, LargeNumbersAreCountedAsTheLanguageCounts) {
    EXPECT_EQ(scaled(12340), QStringLiteral("1.23万"));
    EXPECT_EQ(scaled(2.5e9), QStringLiteral("25.00亿"));
    EXPECT_EQ(scaled(3e12), QStringLiteral("3.00万亿"));
    ASSERT_TRUE(timeshare::installTranslation(QLocale(QLocale::English)));
    EXPECT_EQ(scaled(9999), QStringLiteral("9999.00")) << "written out, as in Chinese";
    EXPECT_EQ(scaled(12340), QStringLiteral("12.34K"));
    EXPECT_EQ(scaled(-999999, 0), QStringLiteral("-1000K"));
    EXPECT_EQ(scaled(1e6), QStringLiteral("1.00M"));
    EXPECT_EQ(scaled(2.5e9), QStringLiteral("2.50B"));
    EXPECT_EQ(scaled(3e12), QStringLiteral("3.00T"));
    EXPECT_EQ(scaled(4.5e15, 0), QStringLiteral("4500T"));
    EXPECT_EQ(GZ::getGraphShowTick(12345, 0), 2);
}

TEST_F(TranslationTest, ListsAndCounts) {
    const QStringList names{QStringLiteral("MA"), QStringLiteral("VOL")};
    EXPECT_EQ(GZ::namesText(names), QStringLiteral("MA、VOL"));
    EXPECT_EQ(GZ::listText(names), QStringLiteral("MA，VOL"));
    EXPECT_EQ(GZ::phrasesText(names), QStringLiteral("MA；VOL"));
    EXPECT_EQ(GZ::countText(1234567), QStringLiteral("1,234,567"));
    const char *found = "共%n项，↑↓选择，回车确定";
    const char *context = "TC::CSmartKeyboardDialog";
    EXPECT_EQ(QCoreApplication::translate(context, found, nullptr, 1),
              QStringLiteral("共1项，↑↓选择，回车确定"));
    ASSERT_TRUE(timeshare::installTranslation(QLocale(QLocale::English)));
    EXPECT_EQ(GZ::namesText(names), QStringLiteral("MA, VOL"));
    EXPECT_EQ(GZ::listText(names), QStringLiteral("MA, VOL"));
    EXPECT_EQ(GZ::phrasesText(names), QStringLiteral("MA; VOL"));
    EXPECT_EQ(GZ::countText(0), QStringLiteral("0"));
    EXPECT_TRUE(QCoreApplication::translate(context, found, nullptr, 1).startsWith(QStringLiteral("1 match,")));
    EXPECT_TRUE(
        QCoreApplication::translate(context, found, nullptr, 2).startsWith(QStringLiteral("2 matches,")));
}

TEST_F(TranslationTest, LinesOfTheMainChartFollowAndThoseOfFormulasStay) {
    EXPECT_EQ(GZ::lineText(QStringLiteral("均价")), QStringLiteral("均价"));
    ASSERT_TRUE(timeshare::installTranslation(QLocale(QLocale::English)));
    EXPECT_EQ(GZ::lineText(QStringLiteral("价格")), QStringLiteral("Price"));
    EXPECT_EQ(GZ::lineText(QStringLiteral("均价")), QStringLiteral("Average"));
    EXPECT_EQ(GZ::lineText(QStringLiteral("成交量")), QStringLiteral("Volume"));
    EXPECT_EQ(GZ::lineText(QStringLiteral("偏离度")), QStringLiteral("偏离度"));
    EXPECT_EQ(GZ::lineText(QString()), QString());
}

TEST_F(TranslationTest, TheLayoutOfATableLoadsInTheOtherLanguage) {
    const auto headings = [](const GZ::CHpfDataTable &table) {
        QStringList texts;
        for (int column = 0; column < table.columnCount(); ++column) {
            texts.append(table.horizontalHeaderItem(column)->text());
        }
        return texts;
    };
    const QString chinese = QStringLiteral(R"({"descending":true,"hidden":["委托价格"],"sort":"委托数量"})");
    GZ::CHpfDataTable first(GZ::CHpfDataTable::eOrders, 1, nullptr, false);
    ASSERT_TRUE(first.loadConfigStr(chinese));
    const int hidden = headings(first).indexOf(QStringLiteral("委托价格"));
    ASSERT_TRUE(first.isColumnHidden(hidden));
    ASSERT_TRUE(timeshare::installTranslation(QLocale(QLocale::English)));
    GZ::CHpfDataTable second(GZ::CHpfDataTable::eOrders, 1, nullptr, false);
    ASSERT_EQ(headings(second).value(hidden), QStringLiteral("Order price"));
    ASSERT_TRUE(second.loadConfigStr(first.saveConfigStr()));
    EXPECT_TRUE(second.isColumnHidden(hidden));
    EXPECT_EQ(second.saveConfigStr(), first.saveConfigStr());
    EXPECT_TRUE(second.saveConfigStr().contains(QStringLiteral("委托数量")));
}
