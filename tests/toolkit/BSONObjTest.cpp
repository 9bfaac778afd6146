#include "host/records/BSONObj.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using bson::BSONError;
using bson::BSONObj;
using bson::BSONObjBuilder;

TEST(BSONObj, AFreshDocumentIsEmpty) {
    const BSONObj document;
    EXPECT_TRUE(document.isEmpty());
    EXPECT_EQ(document.nFields(), 0);
    EXPECT_FALSE(document.hasField("a"));
    EXPECT_TRUE(BSONObj::fromJson(document.jsonString()).isEmpty());
}

TEST(BSONObj, ReadsTextsNumbersAndDocuments) {
    const BSONObj document =
        BSONObj::fromJson("{\"a\":1,\"b\":2.5,\"c\":\"分时\",\"d\":{\"x\":7},\"e\":[3,4],\"f\":5000000000}");
    EXPECT_EQ(document.nFields(), 6);
    EXPECT_EQ(document.getNumber("a"), 1.0);
    EXPECT_EQ(document.getNumber("b"), 2.5);
    EXPECT_EQ(document.getString("c"), "分时");
    EXPECT_EQ(document.getObject("d").getNumber("x"), 7.0);
    EXPECT_EQ(document.getObject("e").getNumber("1"), 4.0);
    EXPECT_EQ(document.getNumber("f"), 5000000000.0);
}

TEST(BSONObj, TheFirstOfEqualKeysCountsAndAllStay) {
    const BSONObj document = BSONObj::fromJson("{\"k\":\"A\",\"K\":\"B\",\"k\":\"C\"}");
    EXPECT_EQ(document.getString("k"), "A");
    EXPECT_EQ(document.nFields(), 3);
    const std::vector<bson::BSONElement> fields = document.elements();
    ASSERT_EQ(fields.size(), 3u);
    EXPECT_EQ(fields[1].key(), "K");
    EXPECT_EQ(fields[2].key(), "k");
    EXPECT_EQ(fields[2].getString(), "C");
    BSONObjBuilder builder;
    builder.append("k", "A").append("k", 2);
    EXPECT_EQ(builder.obj().jsonString(), "{ \"k\" : \"A\", \"k\" : 2 }");
}

TEST(BSONObj, IntegersOf32BitsAreAType) {
    const BSONObj document = BSONObj::fromJson("{\"i\":-1,\"max\":2147483647,\"min\":-2147483648,\"l\":"
                                               "2147483648,\"d\":1.0,\"e\":1e3,\"s\":\"1\",\"b\":true}");
    EXPECT_EQ(document.getInt("i"), -1);
    EXPECT_EQ(document.getInt("max"), 2147483647);
    EXPECT_EQ(document.getInt("min"), -2147483647 - 1);
    for (const char *key : {"l", "d", "e", "s", "b", "missing"}) {
        EXPECT_THROW(document.getInt(key), BSONError) << key;
    }
    const BSONObj back = BSONObj::fromJson(document.jsonString());
    EXPECT_EQ(back.getInt("min"), -2147483647 - 1);
    EXPECT_THROW(back.getInt("d"), BSONError) << "a double stays one";
    EXPECT_THROW(back.getInt("l"), BSONError);
}

TEST(BSONObj, ArraysAreWalkedInOrderWithTheirTypes) {
    const BSONObj document =
        BSONObj::fromJson("{\"a\":[\"x\",2,2.5,null,[\"y\"],{\"z\":1},5000000000,true],\"o\":{}}");
    const std::vector<bson::BSONElement> all = document.getArray("a").elements();
    ASSERT_EQ(all.size(), 8u);
    EXPECT_TRUE(all[0].isText());
    EXPECT_EQ(all[0].getString(), "x");
    EXPECT_EQ(all[1].getInt(), 2);
    EXPECT_EQ(all[1].getNumber(), 2.0);
    EXPECT_EQ(all[2].getNumber(), 2.5);
    EXPECT_EQ(all[4].key(), "4");
    EXPECT_TRUE(all[4].isArray());
    EXPECT_EQ(all[4].getArray().getString("0"), "y");
    EXPECT_FALSE(all[5].isArray());
    EXPECT_EQ(all[5].getObject().getInt("z"), 1);
    EXPECT_EQ(all[6].getNumber(), 5000000000.0);
    for (const std::size_t i : {std::size_t(3), std::size_t(7)}) {
        EXPECT_THROW(all[i].getString(), BSONError);
        EXPECT_THROW(all[i].getNumber(), BSONError);
        EXPECT_THROW(all[i].getObject(), BSONError);
    }
    EXPECT_THROW(document.getArray("o"), BSONError) << "a document is no array";
    EXPECT_NO_THROW(document.getObject("a")) << "an array is a document of its elements";
}

TEST(BSONObj, ErrorsSayWhatWasExpected) {
    const BSONObj document = BSONObj::fromJson("{\"n\":1}");
    const auto message = [](auto read) -> std::string {
        try {
            read();
        } catch (const BSONError &error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(message([&] { document.getString("n"); }), "wrong type for field \"n\"");
    EXPECT_EQ(message([&] { document.getString("m"); }), "field not found, expected type: \"m\"");
}

TEST(BSONObj, AccessorsThrowOnAbsentFieldsAndOtherTypes) {
    const BSONObj document = BSONObj::fromJson("{\"n\":1,\"s\":\"1\",\"b\":true,\"z\":null,\"o\":{}}");
    EXPECT_THROW(document.getString("missing"), BSONError);
    EXPECT_THROW(document.getNumber("missing"), BSONError);
    EXPECT_THROW(document.getObject("missing"), BSONError);
    EXPECT_THROW(document.getString("n"), BSONError);
    EXPECT_THROW(document.getNumber("s"), BSONError);
    EXPECT_THROW(document.getNumber("b"), BSONError);
    EXPECT_THROW(document.getNumber("z"), BSONError);
    EXPECT_THROW(document.getObject("n"), BSONError);
    EXPECT_NO_THROW(document.getObject("o"));
}

TEST(BSONObj, ThrowsOnTextThatIsNoDocument) {
    for (const char *text :
         {"", "  ", "null", "12", "[1,2]", "{", "{\"a\":1", "{\"a\":1,}", "{'a':1}", "{a:1}", "{\"a\":01}",
          "{\"a\":1}{\"b\":2}", "{\"a\":1} x", "\xEF\xBB\xBF{}", "{\"a\":\"\xB7\xD6\"}"}) {
        EXPECT_THROW(BSONObj::fromJson(text), BSONError) << text;
    }
}

TEST(BSONObj, BlanksAroundADocumentAreFine) {
    EXPECT_EQ(BSONObj::fromJson(" \n{\"a\" : 1}\t\r\n ").getNumber("a"), 1.0);
}

TEST(BSONObj, WhatIsBuiltReadsBackTheSame) {
    BSONObjBuilder inner;
    inner.append("0", 1.0).append("1", "二");
    BSONObjBuilder builder;
    builder.append("i", 7).append("l", 5000000000LL).append("d", 0.1).append("t", true);
    builder.append("s", std::string("a\"\\\n\tb")).append("o", inner.obj()).appendArray("a", inner.obj());
    const BSONObj back = BSONObj::fromJson(builder.obj().jsonString());
    EXPECT_EQ(back.nFields(), 7);
    EXPECT_EQ(back.getNumber("i"), 7.0);
    EXPECT_EQ(back.getNumber("l"), 5000000000.0);
    EXPECT_EQ(back.getNumber("d"), 0.1);
    EXPECT_EQ(back.getString("s"), "a\"\\\n\tb");
    EXPECT_EQ(back.getObject("o").getString("1"), "二");
    EXPECT_EQ(back.getObject("a").getNumber("0"), 1.0);
}

TEST(BSONObj, NumbersThatAreNotFiniteReadBack) {
    BSONObjBuilder builder;
    builder.append("nan", std::nan("")).append("inf", std::numeric_limits<double>::infinity());
    builder.append("max", std::numeric_limits<double>::max()).append("tiny", 5e-324);
    const BSONObj back = BSONObj::fromJson(builder.obj().jsonString());
    EXPECT_TRUE(std::isnan(back.getNumber("nan")));
    EXPECT_EQ(back.getNumber("inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(back.getNumber("max"), std::numeric_limits<double>::max());
    EXPECT_EQ(back.getNumber("tiny"), 5e-324);
}

TEST(BSONObj, WholeNumbersStayWhole) {
    BSONObjBuilder builder;
    builder.append("i", 3);
    EXPECT_EQ(BSONObj::fromJson(builder.obj().jsonString()).jsonString(), "{ \"i\" : 3 }");
}

TEST(BSONObj, InvalidBytesBecomeTheReplacementCharacter) {
    BSONObjBuilder builder;
    builder.append("s", std::string("a\xB7")).append(std::string("k\xFF"), 1);
    const BSONObj back = BSONObj::fromJson(builder.obj().jsonString());
    EXPECT_EQ(back.getString("s"), "a\xEF\xBF\xBD");
    EXPECT_EQ(back.getNumber("k\xEF\xBF\xBD"), 1.0);
}

TEST(BSONObj, AKeyEndsAtAZeroAndATextDoesNot) {
    BSONObjBuilder builder;
    builder.append(std::string("k\0x", 3), std::string("a\0b", 3));
    EXPECT_EQ(BSONObj::fromJson(builder.obj().jsonString()).getString("k"), std::string("a\0b", 3));
}

TEST(BSONObj, ANullTextIsEmpty) {
    BSONObjBuilder builder;
    builder.append("s", static_cast<const char *>(nullptr));
    EXPECT_EQ(builder.obj().getString("s"), "");
}

TEST(BSONObj, NinetyLevelsReadBackAndAMillionAreRefused) {
    BSONObj nested;
    for (int level = 1; level < 90; ++level) {
        BSONObjBuilder builder;
        builder.append("k", nested);
        nested = builder.obj();
    }
    BSONObj back = BSONObj::fromJson(nested.jsonString());
    for (int level = 1; level < 90; ++level) {
        back = back.getObject("k");
    }
    EXPECT_TRUE(back.isEmpty());
    std::string deep;
    for (int level = 0; level < 1000000; ++level) {
        deep += "{\"k\":";
    }
    EXPECT_THROW(BSONObj::fromJson(deep), BSONError);
}

TEST(BSONObj, WhatABuilderGaveDoesNotChangeWithIt) {
    BSONObjBuilder builder;
    builder.append("a", 1);
    const BSONObj before = builder.obj();
    builder.append("b", 2);
    EXPECT_EQ(before.nFields(), 1);
    EXPECT_EQ(builder.obj().nFields(), 2);
}

} // namespace
