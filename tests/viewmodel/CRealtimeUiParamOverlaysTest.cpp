#include "tests/fakehost/FakeHost.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

/// The overlay colours are 100, 200 and 300; the catalogue has six shares and three sector indexes.
class CRealtimeUiParamOverlays : public ::testing::Test {
protected:
    CRealtimeUiParamOverlays() {
        for (const char *code : {"600000", "600001", "600002", "600003", "600004", "600005"}) {
            mHost.mStocks.add("SH", code);
        }
        for (const char *code : {"BANK", "STEEL", "FOOD"}) {
            mHost.mStocks.add("BKZS", code);
        }
        mHost.mSectors.mIndexOfSector = {{"bank", "BKZSBANK"}, {"steel", "BKZSSTEEL"}, {"ghost", "BKZSGHOST"}};
        mParam.mAddStockColors = {100, 200, 300};
        mParam.setStock("SH600000", false);
    }
    QStringList keysOf(const QList<CInstrumentDetailPtr> &details) {
        QStringList keys;
        for (const CInstrumentDetailPtr &detail : details) {
            keys << getDetailQsKey(detail);
        }
        return keys;
    }
    void setSectorOfMain(const QString &sector) {
        mHost.mSectors.mSectorOfStock[qMakePair(QString("SH600000"), 1)] = sector;
    }
    void showSector(const QString &sector) {
        setSectorOfMain(sector);
        mParam.setAddSwBkzsLevel(1);
        mParam.updateAddSwBkzsCode();
    }

    fakehost::FakeHost mHost;
    CRealtimeUiParam mParam{EIndexViewType::Ordinary};
};

TEST_F(CRealtimeUiParamOverlays, ThreeInAnyMixAreTheLimit) {
    mParam.addStock("SH600001", "", true);
    mParam.addStock("SH600002", "", false);
    EXPECT_TRUE(mParam.canAddStock());
    mParam.addStock("SH600003", "", false);
    EXPECT_FALSE(mParam.canAddStock());
}

TEST_F(CRealtimeUiParamOverlays, AddStockItselfDoesNotCheckTheLimit) {
    for (const char *key : {"SH600001", "SH600002", "SH600003", "SH600004"}) {
        mParam.addStock(key, "", true);
    }
    EXPECT_EQ(mParam.mAddStocks.size(), 4);
}

TEST_F(CRealtimeUiParamOverlays, ColoursGoRoundByPosition) {
    mParam.addStock("SH600001", "", true);
    mParam.addStock("SH600002", "", false); // position 0 + 1
    mParam.addStock("SH600003", "", true); // position 1
    mParam.addStock("SH600004", "", false); // position 1 + 2
    EXPECT_EQ(mParam.mStockColors,
              (QMap<QString, int>{{"SH600001", 100}, {"SH600002", 200}, {"SH600003", 200}, {"SH600004", 100}}));
}

TEST_F(CRealtimeUiParamOverlays, FirstOverlayWithoutAxisHasTheFirstColour) {
    mParam.addStock("SH600001", "", false);
    EXPECT_EQ(mParam.mStockColors.value("SH600001"), 100);
}

TEST_F(CRealtimeUiParamOverlays, ColoursAreNeverGivenBackSoThatTwoCanShareOne) {
    mParam.addStock("SH600001", "", true);
    mParam.addStock("SH600002", "", true);
    mParam.mAddStocks.removeFirst();
    mParam.addStock("SH600003", "", true);
    EXPECT_EQ(mParam.mStockColors.value("SH600002"), 200);
    EXPECT_EQ(mParam.mStockColors.value("SH600003"), 200);
}

TEST_F(CRealtimeUiParamOverlays, SameKeyWithTheSameAxisChoiceChangesNothing) {
    mParam.addStock("SH600001", "", true);
    mParam.addStock("SH600002", "", true);
    mParam.mStockColors["SH600001"] = 7;
    mParam.addStock("SH600001", "", true);
    EXPECT_EQ(keysOf(mParam.mAddStocks), (QStringList{"SH600001", "SH600002"}));
    EXPECT_EQ(mParam.mStockColors.value("SH600001"), 7);
    mParam.addStock("SH600003", "", false);
    mParam.mStockColors["SH600003"] = 8;
    mParam.addStock("SH600003", "", false);
    EXPECT_EQ(mParam.mAddNoAxisStocks.size(), 1);
    EXPECT_EQ(mParam.mStockColors.value("SH600003"), 8);
}

TEST_F(CRealtimeUiParamOverlays, SameKeyWithTheOtherAxisChoiceIsOverlaidTwice) {
    mParam.addStock("SH600001", "", true);
    mParam.addStock("SH600001", "", false);
    EXPECT_EQ(keysOf(mParam.getAllAddStockList()), (QStringList{"SH600001", "SH600001"}));
}

TEST_F(CRealtimeUiParamOverlays, UnknownKeyChangesNothing) {
    mParam.addStock("nothing", "name", true);
    EXPECT_TRUE(mParam.getAllAddStockList().isEmpty());
    EXPECT_TRUE(mParam.mStockColors.isEmpty());
    EXPECT_EQ(mParam.mAddBkzsCode, QString());
}

TEST_F(CRealtimeUiParamOverlays, SectorIsOverlaidByItsName) {
    mParam.addStock("bank", "", true);
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"BKZSBANK"});
    EXPECT_EQ(mParam.mAddBkzsCode, "BKZSBANK");
    EXPECT_EQ(mParam.mStockColors.value("BKZSBANK"), 100);
}

TEST_F(CRealtimeUiParamOverlays, SectorWhoseIndexIsUnknownIsNotOverlaid) {
    mParam.addStock("ghost", "", true);
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
    EXPECT_EQ(mParam.mAddBkzsCode, QString());
}

TEST_F(CRealtimeUiParamOverlays, UserDefinedIndexIsCopiedAndHasAnAxisWhateverIsAskedFor) {
    CIndexDetail *index = mHost.mIndexes.add("MyIndex");
    mParam.addStock("SH600001", "", true);
    mParam.addStock("MyIndex", "", false);
    ASSERT_EQ(mParam.mAddIndexes.size(), 1);
    EXPECT_NE(mParam.mAddIndexes[0], index);
    EXPECT_EQ(keysOf(mParam.mAddStocks), (QStringList{"SH600001", "MyIndex"}));
    EXPECT_TRUE(mParam.mAddNoAxisStocks.isEmpty());
    EXPECT_EQ(mParam.mStockColors.value("MyIndex"), 200);
    EXPECT_TRUE(mParam.isOverlayIndex("myINDEX"));
    EXPECT_FALSE(mParam.isOverlayIndex("My"));
    EXPECT_FALSE(mParam.isOverlayIndex("SH600001"));
}

TEST_F(CRealtimeUiParamOverlays, UserDefinedIndexIsNotCheckedForDuplicates) {
    mHost.mIndexes.add("MyIndex");
    mParam.addStock("MyIndex", "", true);
    mParam.addStock("MyIndex", "", true);
    EXPECT_EQ(mParam.mAddIndexes.size(), 2);
    EXPECT_EQ(mParam.mAddStocks.size(), 2);
    EXPECT_EQ(mParam.mStockColors.value("MyIndex"), 200);
}

TEST_F(CRealtimeUiParamOverlays, CatalogueComesBeforeUserDefinedIndexesOfTheSameKey) {
    mHost.mIndexes.add("SH600001");
    mParam.addStock("SH600001", "", true);
    EXPECT_TRUE(mParam.mAddIndexes.isEmpty());
    EXPECT_EQ(mParam.mAddStocks.size(), 1);
}

TEST_F(CRealtimeUiParamOverlays, FragmentOfAKeyFindsAnOverlayInAnyLetterCase) {
    mParam.addStock("SH600001", "", true);
    mParam.addStock("SH600002", "", false);
    EXPECT_TRUE(mParam.isOverlayStock("600001"));
    EXPECT_TRUE(mParam.isOverlayStock("sh6000"));
    EXPECT_TRUE(mParam.isOverlayStock("600002"));
    EXPECT_FALSE(mParam.isOverlayStock("600003"));
    EXPECT_FALSE(mParam.isNoAxisOverlayStock("600001"));
    EXPECT_TRUE(mParam.isNoAxisOverlayStock("h600002"));
}

TEST_F(CRealtimeUiParamOverlays, ListHasThoseWithAnAxisFirst) {
    mParam.addStock("SH600001", "", false);
    mParam.addStock("SH600002", "", true);
    EXPECT_EQ(keysOf(mParam.getAllAddStockList()), (QStringList{"SH600002", "SH600001"}));
}

TEST_F(CRealtimeUiParamOverlays, DeletingAllForgetsTheRulesButNotTheSector) {
    mHost.mIndexes.add("MyIndex");
    mParam.mSector = "bank";
    mParam.addStock("SH600001", "", true);
    mParam.addStock("SH600002", "", false);
    mParam.addStock("MyIndex", "", true);
    mParam.mAddSwBkzsLevel = 1;
    mParam.mAddBkzsCode = "BKZSBANK";
    mParam.mAddStockFlags = 1;
    mParam.mAddConvertibleCodes << "SH600001";
    mParam.delAllStock();
    EXPECT_TRUE(mParam.getAllAddStockList().isEmpty());
    EXPECT_TRUE(mParam.mAddIndexes.isEmpty());
    EXPECT_TRUE(mParam.mStockColors.isEmpty());
    EXPECT_EQ(mParam.mAddSwBkzsLevel, -1);
    EXPECT_EQ(mParam.mAddBkzsCode, QString());
    EXPECT_EQ(mParam.mAddStockFlags, 0);
    EXPECT_TRUE(mParam.mAddConvertibleCodes.isEmpty());
    EXPECT_EQ(mParam.mSector, "bank");
}

TEST_F(CRealtimeUiParamOverlays, SameSectorKeepsAllOverlays) {
    mParam.setSector("bank", "");
    mParam.addStock("SH600001", "", true);
    mParam.setSector("bank", "");
    EXPECT_EQ(mParam.mAddStocks.size(), 1);
}

TEST_F(CRealtimeUiParamOverlays, NewSectorDropsAllOverlaysThoseMadeByRuleToo) {
    showSector("bank");
    mParam.addStock("SH600001", "", false);
    mParam.setSector("steel", "");
    EXPECT_TRUE(mParam.getAllAddStockList().isEmpty());
    EXPECT_EQ(mParam.mSector, "steel");
    EXPECT_EQ(mParam.mAddSwBkzsLevel, -1);
}

TEST_F(CRealtimeUiParamOverlays, NewSectorIsOverlaidWhenTheUserWantsIt) {
    mHost.mConfig.mRecord.mOverlaySector = true;
    mParam.setSector("bank", "");
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"BKZSBANK"});
    mParam.setSector("", "");
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
    EXPECT_EQ(mParam.mSector, QString());
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleIsOffWithoutALevel) {
    setSectorOfMain("bank");
    mParam.updateAddSwBkzsCode();
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
    EXPECT_EQ(mParam.mAddBkzsCode, QString());
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleAddsTheIndexOfTheSectorWithAnAxis) {
    mParam.addStock("SH600001", "", true);
    showSector("bank");
    EXPECT_EQ(keysOf(mParam.mAddStocks), (QStringList{"SH600001", "BKZSBANK"}));
    EXPECT_EQ(mParam.mStockColors.value("BKZSBANK"), 200);
    EXPECT_EQ(mParam.mAddBkzsCode, "BKZSBANK");
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleAddsNothingBeyondTheLimitButRemembersTheSector) {
    for (const char *key : {"SH600001", "SH600002", "SH600003"}) {
        mParam.addStock(key, "", false);
    }
    showSector("bank");
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
    EXPECT_FALSE(mParam.mStockColors.contains("BKZSBANK"));
    EXPECT_EQ(mParam.mAddBkzsCode, "BKZSBANK");
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleReplacesTheLastSectorIndexWithAnAxisInItsPlace) {
    mParam.addStock("BKZSFOOD", "", true);
    mParam.addStock("BKZSSTEEL", "", true);
    mParam.addStock("SH600001", "", true);
    showSector("bank");
    EXPECT_EQ(keysOf(mParam.mAddStocks), (QStringList{"BKZSFOOD", "BKZSBANK", "SH600001"}));
    EXPECT_EQ(mParam.mStockColors.value("BKZSBANK"), 200);
}

TEST_F(CRealtimeUiParamOverlays, ReplacedSectorIndexLeavesItsColourBehind) {
    showSector("bank");
    showSector("steel");
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"BKZSSTEEL"});
    EXPECT_TRUE(mParam.mStockColors.contains("BKZSBANK"));
    EXPECT_EQ(mParam.mStockColors.value("BKZSSTEEL"), 100);
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleReplacesASectorIndexWithoutAxisInItsPlace) {
    mParam.addStock("SH600001", "", false);
    mParam.addStock("BKZSSTEEL", "", false);
    mParam.addStock("SH600002", "", true);
    showSector("bank");
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600002"});
    EXPECT_EQ(keysOf(mParam.mAddNoAxisStocks), (QStringList{"SH600001", "BKZSBANK"}));
    EXPECT_EQ(mParam.mStockColors.value("BKZSBANK"), 200);
    EXPECT_EQ(mParam.mAddBkzsCode, "BKZSBANK");
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleTakesTheOneWithAnAxisBeforeTheOneWithout) {
    mParam.addStock("BKZSSTEEL", "", false);
    mParam.addStock("BKZSFOOD", "", true);
    showSector("bank");
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"BKZSBANK"});
    EXPECT_EQ(keysOf(mParam.mAddNoAxisStocks), QStringList{"BKZSSTEEL"});
}

TEST_F(CRealtimeUiParamOverlays, SectorWithoutARecordTakesTheSectorIndexAway) {
    showSector("bank");
    showSector("ghost");
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
    EXPECT_EQ(mParam.mAddBkzsCode, "BKZSGHOST");
    mParam.addStock("BKZSSTEEL", "", false);
    mParam.mAddBkzsCode.clear();
    mParam.updateAddSwBkzsCode();
    EXPECT_TRUE(mParam.mAddNoAxisStocks.isEmpty());
    EXPECT_EQ(mParam.mAddBkzsCode, "BKZSGHOST");
}

TEST_F(CRealtimeUiParamOverlays, SectorWithoutARecordTakesOneSectorIndexAwayThatWithAnAxisFirst) {
    showSector("bank");
    mParam.addStock("BKZSSTEEL", "", false);
    showSector("ghost");
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
    EXPECT_EQ(mParam.mAddNoAxisStocks.size(), 1);
}

TEST_F(CRealtimeUiParamOverlays, InstrumentWithoutASectorLosesSectorIndexesWithAnAxisAlone) {
    mParam.addStock("BKZSSTEEL", "", true);
    mParam.addStock("SH600001", "", true);
    mParam.addStock("BKZSFOOD", "", true);
    mParam.addStock("BKZSBANK", "", false);
    mParam.mAddBkzsCode = "BKZSBANK";
    showSector("");
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600001"});
    EXPECT_EQ(keysOf(mParam.mAddNoAxisStocks), QStringList{"BKZSBANK"});
    EXPECT_EQ(mParam.mStockColors.keys(), (QList<QString>{"BKZSBANK", "SH600001"}));
    EXPECT_EQ(mParam.mAddBkzsCode, QString());
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleDoesNothingForTheSectorOverlaidAlready) {
    showSector("bank");
    mParam.mAddStocks.clear();
    mParam.updateAddSwBkzsCode();
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
}

TEST_F(CRealtimeUiParamOverlays, SectorRuleWithMoreOverlaysThanColoursGoesRound) {
    for (const char *key : {"SH600001", "SH600002", "SH600003", "BKZSSTEEL"}) {
        mParam.addStock(key, "", true);
    }
    showSector("bank");
    EXPECT_EQ(mParam.mStockColors.value("BKZSBANK"), 100);
}

TEST_F(CRealtimeUiParamOverlays, ClearingTheSectorRuleRemovesAllSectorIndexesWithTheirColours) {
    mParam.addStock("BKZSSTEEL", "", true);
    mParam.addStock("SH600001", "", true);
    mParam.addStock("BKZSFOOD", "", false);
    mParam.mAddBkzsCode = "BKZSSTEEL";
    mParam.mAddSwBkzsLevel = 2;
    mParam.clearAddSwBkzsCode();
    EXPECT_EQ(keysOf(mParam.getAllAddStockList()), QStringList{"SH600001"});
    EXPECT_EQ(mParam.mStockColors.keys(), QList<QString>{"SH600001"});
    EXPECT_EQ(mParam.mAddBkzsCode, QString());
    EXPECT_EQ(mParam.mAddSwBkzsLevel, 2);
}

TEST_F(CRealtimeUiParamOverlays, ConvertibleRuleIsOffWithoutItsBit) {
    mHost.mSectors.mConvertibles["SH600000"] = {"SH600001"};
    mParam.mAddStockFlags = 2;
    mParam.mAddConvertibleCodes << "SH600003";
    mParam.updateAddConvertibleCode();
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
    EXPECT_EQ(mParam.mAddConvertibleCodes, QSet<QString>{"SH600003"});
}

TEST_F(CRealtimeUiParamOverlays, ConvertibleRuleOverlaysWhatTheCatalogueOfSectorsTells) {
    mHost.mSectors.mConvertibles["SH600000"] = {"SH600001", "SHunknown"};
    mHost.mTypes.mBonds[{"SH", "600000"}] = "600005";
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600001"});
    EXPECT_EQ(mParam.mStockColors.value("SH600001"), 100);
    EXPECT_EQ(mParam.mAddConvertibleCodes, QSet<QString>{"SH600001"});
}

TEST_F(CRealtimeUiParamOverlays, ConvertibleRuleStopsAtTheLimit) {
    mHost.mSectors.mConvertibles["SH600000"] = {"SH600001", "SH600002", "SH600003"};
    mParam.addStock("SH600004", "", true);
    mParam.addStock("SH600005", "", false);
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    EXPECT_EQ(mParam.mAddStocks.size(), 2);
    EXPECT_EQ(mParam.mAddConvertibleCodes.size(), 1);
    EXPECT_FALSE(mParam.canAddStock());
    EXPECT_EQ(mParam.mStockColors.value(*mParam.mAddConvertibleCodes.begin()), 200);
}

TEST_F(CRealtimeUiParamOverlays, ConvertibleRuleFirstRemovesWhatItMadeBefore) {
    mHost.mSectors.mConvertibles["SH600000"] = {"SH600001"};
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    mParam.addStock("SH600001", "", false);
    mParam.addStock("SH600004", "", true);
    mHost.mSectors.mConvertibles["SH600000"] = {"SH600002"};
    mParam.updateAddConvertibleCode();
    EXPECT_EQ(keysOf(mParam.mAddStocks), (QStringList{"SH600004", "SH600002"}));
    EXPECT_TRUE(mParam.mAddNoAxisStocks.isEmpty());
    EXPECT_FALSE(mParam.mStockColors.contains("SH600001"));
    EXPECT_EQ(mParam.mAddConvertibleCodes, QSet<QString>{"SH600002"});
}

TEST_F(CRealtimeUiParamOverlays, ConvertibleBondOverlaysItsShareInTheBondsOwnMarket) {
    const CInstrumentDetailPtr bond = mHost.mStocks.add("SH", "110000");
    bond->mUnderlying = std::make_shared<CUnderlyingInfo>();
    bond->mUnderlying->mMarket = "SZ"; // not looked at
    bond->mUnderlying->mCode = "600001";
    mHost.mTypes.mBonds[{"SH", "110000"}] = "600005";
    for (const int type : {10019, 135}) {
        mHost.mTypes.mTypes = {{type, "SH", "110000"}};
        mParam.delAllStock();
        mParam.setStock("SH110000", false);
        mParam.mAddStockFlags = 1;
        mParam.updateAddConvertibleCode();
        EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600001"}) << type;
    }
}

TEST_F(CRealtimeUiParamOverlays, ConvertibleBondWithoutAnUnderlyingIsTreatedAsAShare) {
    const CInstrumentDetailPtr bond = mHost.mStocks.add("SH", "110000");
    mHost.mTypes.mTypes = {{135, "SH", "110000"}};
    mHost.mTypes.mBonds[{"SH", "110000"}] = "600005";
    mParam.setStock("SH110000", false);
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600005"});
    bond->mUnderlying = std::make_shared<CUnderlyingInfo>();
    mParam.updateAddConvertibleCode();
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600005"});
}

TEST_F(CRealtimeUiParamOverlays, ShareOverlaysItsConvertibleBond) {
    mHost.mTypes.mBonds[{"SH", "600000"}] = "600005";
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600005"});
    mHost.mTypes.mBonds.clear();
    mParam.updateAddConvertibleCode();
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
}

TEST_F(CRealtimeUiParamOverlays, ClearingTheConvertibleRuleKeepsItsBit) {
    mHost.mSectors.mConvertibles["SH600000"] = {"SH600001"};
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    mParam.addStock("SH600002", "", true);
    mParam.clearAddConvertibleCode();
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"SH600002"});
    EXPECT_EQ(mParam.mStockColors.keys(), QList<QString>{"SH600002"});
    EXPECT_TRUE(mParam.mAddConvertibleCodes.isEmpty());
    EXPECT_EQ(mParam.mAddStockFlags, 1);
}

TEST_F(CRealtimeUiParamOverlays, ConvertibleRuleOfAPortfolioFindsNothing) {
    mHost.mStocks.mPortfolios << "7";
    mParam.setStock("7", false);
    mHost.mTypes.mTypes = {{135, "", ""}};
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
}

TEST_F(CRealtimeUiParamOverlays, SwitchBetweenInstrumentsRefreshesTheOverlaysMadeByRule) {
    mHost.mSectors.mSectorOfStock[qMakePair(QString("SH600001"), 1)] = "steel";
    mHost.mSectors.mConvertibles["SH600001"] = {"SH600002"};
    mParam.setAddSwBkzsLevel(1);
    mParam.mAddStockFlags = 1;
    mParam.setStock("SH600001", false);
    EXPECT_EQ(keysOf(mParam.mAddStocks), (QStringList{"BKZSSTEEL", "SH600002"}));
}

TEST_F(CRealtimeUiParamOverlays, SameInstrumentAgainDoesNotTouchTheOverlaysMadeByRule) {
    setSectorOfMain("steel");
    mParam.setAddSwBkzsLevel(1);
    mHost.mSectors.mConvertibles["SH600000"] = {"SH600002"};
    mParam.mAddStockFlags = 1;
    mParam.setStock("SH600000", false);
    EXPECT_TRUE(mParam.mAddStocks.isEmpty());
}

TEST_F(CRealtimeUiParamOverlays, SwitchToAnotherKindDoesNotTouchTheOverlaysMadeByRule) {
    mHost.mIndexes.add("MyIndex");
    mHost.mStocks.mPortfolios << "7";
    showSector("bank");
    mParam.setStock("MyIndex", false);
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"BKZSBANK"});
    mParam.setStock("7", false);
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"BKZSBANK"});
    mParam.setStock("nothing", false);
    EXPECT_EQ(keysOf(mParam.mAddStocks), QStringList{"BKZSBANK"});
}

TEST_F(CRealtimeUiParamOverlays, NullRecordsAndMissingColoursAreHarmless) {
    mParam.mAddStocks << nullptr;
    mParam.mAddNoAxisStocks << nullptr;
    mParam.mAddStockColors.clear();
    EXPECT_FALSE(mParam.isOverlayStock("600001"));
    mParam.addStock("SH600001", "", true);
    EXPECT_EQ(mParam.mStockColors.value("SH600001", -1), 0);
    showSector("bank");
    mParam.mAddStockFlags = 1;
    mParam.updateAddConvertibleCode();
    mParam.clearAddSwBkzsCode();
    EXPECT_EQ(mParam.mAddStocks.size(), 2);
}

} // namespace
