#include "terminal/app/SmartKeyService.h"

#include <gtest/gtest.h>

using namespace terminal;
using TC::ESmartKeyType;

namespace {

class SmartKeyServiceTest : public ::testing::Test {
protected:
    SmartKeyServiceTest() {
        mService.add(ESmartKeyType::Shortcut, {{QString(), "03", "上证指数", QString()}});
        mService.add(ESmartKeyType::Stock,
                     {{"SH600000", "600000", "浦发银行", "PFYH"}, {"SZ030001", "030001", "零三转债", "LSZZ"}});
    }
    SmartKeyService mService;
};

TEST_F(SmartKeyServiceTest, FindsByCodeInitialsAndName) {
    for (const char *text : {"600000", "pfyh", "浦发", "sh6"}) {
        const QList<TC::CSmartKeyItem> found = mService.search(QString::fromUtf8(text), 10);
        ASSERT_EQ(found.size(), 1) << text;
        EXPECT_EQ(found[0].mStock.key(), QStringLiteral("SH600000"));
        EXPECT_EQ(found[0].mStock.mCode, QStringLiteral("600000"));
        EXPECT_EQ(found[0].mName, QStringLiteral("浦发银行"));
        EXPECT_EQ(found[0].mInitials, QStringLiteral("PFYH"));
        EXPECT_EQ(found[0].mType, ESmartKeyType::Stock);
    }
    EXPECT_TRUE(mService.search(QString(), 10).isEmpty());
    EXPECT_TRUE(mService.search(QStringLiteral("6"), 0).isEmpty());
}

TEST_F(SmartKeyServiceTest, EarlierGroupsStandFirstAndTheLimitHoldsForAll) {
    const QList<TC::CSmartKeyItem> found = mService.search(QStringLiteral("03"), 10);
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].mType, ESmartKeyType::Shortcut);
    EXPECT_EQ(found[0].mStock.mCode, QStringLiteral("03"));
    EXPECT_EQ(found[1].mStock.key(), QStringLiteral("SZ030001"));
    EXPECT_EQ(mService.search(QStringLiteral("03"), 1).size(), 1);
    mService.clear();
    EXPECT_TRUE(mService.search(QStringLiteral("03"), 10).isEmpty());
}

} // namespace
