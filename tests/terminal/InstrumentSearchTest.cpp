#include "terminal/app/InstrumentSearch.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

const InstrumentSearch kSearch({{"SH600000", "600000", "浦发银行", "PFYH"},
                                {"SZ000001", "000001", "平安银行", "PAYH"},
                                {"SH000001", "000001", "上证指数", "SZZS"},
                                {"SH600519", "600519", "贵州茅台", "GZMT"}});

QStringList keys(const QVector<SearchEntry> &entries) {
    QStringList found;
    for (const SearchEntry &entry : entries) {
        found.append(entry.key);
    }
    return found;
}

} // namespace

TEST(InstrumentSearch, FindsByCodeKeyInitialsAndName) {
    EXPECT_EQ(keys(kSearch.find("6005")), QStringList({"SH600519"}));
    EXPECT_EQ(keys(kSearch.find("sh600")), QStringList({"SH600000", "SH600519"}));
    EXPECT_EQ(keys(kSearch.find("pfyh")), QStringList({"SH600000"}));
    EXPECT_EQ(keys(kSearch.find("银行")), QStringList({"SH600000", "SZ000001"}));
    EXPECT_EQ(keys(kSearch.find(" gz ")), QStringList({"SH600519"}));
    EXPECT_TRUE(kSearch.find("").isEmpty());
    EXPECT_TRUE(kSearch.find("zzz").isEmpty());
}

TEST(InstrumentSearch, TheWholeTextComesBeforeItsBeginning) {
    // "SZ" begins the key SZ000001 and the initials of SH000001: keys stand before initials.
    EXPECT_EQ(keys(kSearch.find("SZ")), QStringList({"SZ000001", "SH000001"}));
    EXPECT_EQ(keys(kSearch.find("SZZS")), QStringList({"SH000001"}));
}

TEST(InstrumentSearch, AtMostTheLimitIsFound) {
    EXPECT_EQ(kSearch.find("0", 1).size(), 1);
    EXPECT_TRUE(kSearch.find("0", 0).isEmpty());
}

TEST(InstrumentSearch, ExactWantsOneInstrument) {
    EXPECT_EQ(kSearch.exact("sz000001"), "SZ000001");
    EXPECT_EQ(kSearch.exact("600519"), "SH600519");
    EXPECT_EQ(kSearch.exact("贵州茅台"), "SH600519");
    EXPECT_TRUE(kSearch.exact("000001").isEmpty()) << "two instruments have that code";
    EXPECT_TRUE(kSearch.exact("60051").isEmpty());
    EXPECT_TRUE(kSearch.exact("").isEmpty());
}

TEST(InstrumentSearch, NearestNamesByEditDistance) {
    EXPECT_EQ(kSearch.nearest("SH600510", 1), QStringList({"SH600519 贵州茅台"})); // one digit
    EXPECT_EQ(kSearch.nearest("SH60000", 1), QStringList({"SH600000 浦发银行"}));
    EXPECT_EQ(kSearch.nearest("x", 99).size(), 4);
}
