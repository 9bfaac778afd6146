#include "host/drawing/IndexBaseData.h"

#include <gtest/gtest.h>

namespace {

using TC::CFormulaKey;
using TC::IndexBaseDataReq;

const CFormulaKey kPrice(QStringLiteral("SH600000"), QStringLiteral("REALTIME"));
const CFormulaKey kVolume(QStringLiteral("SH600000"), QStringLiteral("REALTIMEVOL"));

TEST(IndexBaseDataReq, FindsInBothDirections) {
    IndexBaseDataReq registry;
    EXPECT_TRUE(registry.add(kPrice, QStringLiteral("1")));
    EXPECT_TRUE(registry.add(kVolume, QStringLiteral("2")));
    CFormulaKey key;
    QString id;
    EXPECT_TRUE(registry.getKey(key, QStringLiteral("2")));
    EXPECT_EQ(key, kVolume);
    EXPECT_TRUE(registry.getReq(id, kPrice));
    EXPECT_EQ(id, QStringLiteral("1"));
    EXPECT_EQ(registry.reqIds(), (QVector<QString>{QStringLiteral("1"), QStringLiteral("2")}));
}

TEST(IndexBaseDataReq, AnAbsentEntryChangesNothing) {
    IndexBaseDataReq registry;
    CFormulaKey key = kPrice;
    QString id = QStringLiteral("kept");
    EXPECT_FALSE(registry.getKey(key, QStringLiteral("9")));
    EXPECT_FALSE(registry.getReq(id, kVolume));
    EXPECT_EQ(key, kPrice);
    EXPECT_EQ(id, QStringLiteral("kept"));
    EXPECT_FALSE(registry.removeReq(QStringLiteral("9")));
}

TEST(IndexBaseDataReq, ANewIdReplacesTheOldOneOfItsKey) {
    IndexBaseDataReq registry;
    registry.add(kPrice, QStringLiteral("1"));
    EXPECT_TRUE(registry.add(kPrice, QStringLiteral("2")));
    CFormulaKey key;
    EXPECT_FALSE(registry.getKey(key, QStringLiteral("1")));
    EXPECT_EQ(registry.reqIds(), QVector<QString>{QStringLiteral("2")});
}

TEST(IndexBaseDataReq, AnIdGivenToAnotherKeyLeavesTheFirst) {
    IndexBaseDataReq registry;
    registry.add(kPrice, QStringLiteral("1"));
    EXPECT_TRUE(registry.add(kVolume, QStringLiteral("1")));
    QString id;
    EXPECT_FALSE(registry.getReq(id, kPrice));
    EXPECT_TRUE(registry.getReq(id, kVolume));
}

TEST(IndexBaseDataReq, AKnownPairAndAnEmptyIdAreRefused) {
    IndexBaseDataReq registry;
    EXPECT_TRUE(registry.add(kPrice, QStringLiteral("1")));
    EXPECT_FALSE(registry.add(kPrice, QStringLiteral("1")));
    EXPECT_FALSE(registry.add(kVolume, QString()));
    EXPECT_EQ(registry.reqIds().size(), 1);
}

TEST(IndexBaseDataReq, ForgetsOneOrAll) {
    IndexBaseDataReq registry;
    registry.add(kPrice, QStringLiteral("1"));
    registry.add(kVolume, QStringLiteral("2"));
    EXPECT_TRUE(registry.removeReq(QStringLiteral("1")));
    QString id;
    EXPECT_FALSE(registry.getReq(id, kPrice));
    EXPECT_TRUE(registry.getReq(id, kVolume));
    registry.clear();
    EXPECT_TRUE(registry.reqIds().isEmpty());
    EXPECT_TRUE(registry.add(kPrice, QStringLiteral("1")));
}

} // namespace
