// The menus of the formula catalogue.

#include "chartview/FormulaMenu.h"
#include "tests/chartview/GraphMenuFixture.h"

using namespace TC;

namespace {

class FormulaMenuTest : public tests::GraphMenuFixture {
protected:
    FormulaMenuTest() {
        mHost.mCatalogue.add("MA", 1);
        mHost.mCatalogue.add("Boll", 1);
        mHost.mCatalogue.add("CANDLES", 2);
    }
    /// What the menu of overlays of a chart has; nothing when there is none.
    QString overlays() {
        const FormulaMenu menu(
            EIndexDisplayType::Main, [](const QString &) { return false; }, [](QAction *) {},
            ServiceContext::processWide());
        return outlineOf(menu.makeOverlayMenu(mKeeper.get()));
    }
    QString replacements(EIndexDisplayType type = EIndexDisplayType::Sub) {
        const FormulaMenu menu(
            type, [](const QString &) { return false; }, [](QAction *) {}, ServiceContext::processWide());
        return outlineOf(menu.makeReplaceMenu(mKeeper.get(), QStringLiteral("SH")));
    }
    void hideModels(bool hidden) { mHost.mConfig.mHideModel = hidden; }

private:
    static QString outlineOf(QMenu *menu) {
        const std::unique_ptr<QMenu> owned(menu);
        return owned ? owned->title() + '{' + tests::outline(*owned) + '}' : QString();
    }
};

TEST_F(FormulaMenuTest, AChartIsOfferedAttachedFormulasAndAPaneTheOthers) {
    addFolder(QStringLiteral("一"), {"MA", "MACD", "CANDLES", "BOLL"});
    EXPECT_EQ(overlays(), QStringLiteral("叠加指标{一{MA|Boll}}"));
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{一{MACD|CANDLES}}"));
    EXPECT_EQ(replacements(EIndexDisplayType::Main), QStringLiteral("更改指标{一{MA|Boll}}"));
}

TEST_F(FormulaMenuTest, WhatHasNoRecordOrIsNotToBeSeenIsSkipped) {
    mHost.mCatalogue.getFormula("MA")->mVisible = false;
    addFolder(QStringLiteral("一"), {"MA", "BOLL", "GONE"});
    EXPECT_EQ(overlays(), QStringLiteral("叠加指标{一{Boll}}"));
}

TEST_F(FormulaMenuTest, FoldersOfBothKindsAreSubmenusAtAnyDepth) {
    const auto outer = addFolder(QStringLiteral("外"), {});
    auto own =
        boost::make_shared<CFormulaCatalogDetail>(QStringLiteral("自编"), CFormulaCatalogDetail::eUserFolder);
    own->addChild(boost::make_shared<CFormulaCatalogDetail>(QStringLiteral("MA"), 3)); // any other type
    outer->addChild(own);
    addFolder(QStringLiteral("内"), {"BOLL"}, 0, outer);
    EXPECT_EQ(overlays(), QStringLiteral("叠加指标{外{自编{MA}|内{Boll}}}"));
}

TEST_F(FormulaMenuTest, AFolderWithoutEntriesDoesNotAppearAtAnyDepth) {
    const auto outer = addFolder(QStringLiteral("外"), {"KDJ"});
    addFolder(QStringLiteral("内"), {"MACD"}, 0, addFolder(QStringLiteral("中"), {}, 0, outer));
    EXPECT_EQ(overlays(), QString());
    addFolder(QStringLiteral("一"), {"MA"});
    EXPECT_EQ(overlays(), QStringLiteral("叠加指标{一{MA}}"));
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ|中{内{MACD}}}}"));
}

TEST_F(FormulaMenuTest, FormulasOutsideAllFoldersAreNotOffered) {
    mHost.mCatalogue.mRoot->addChild(
        boost::make_shared<CFormulaCatalogDetail>(QStringLiteral("MA"), CFormulaCatalogDetail::eFormula));
    EXPECT_EQ(overlays(), QString());
}

TEST_F(FormulaMenuTest, UsersFormulasAreForThoseWhoMayEditThem) {
    const auto outer = addFolder(QStringLiteral("外"), {"KDJ"});
    addFolder(QStringLiteral("里"), {"MACD"}, 1, outer); // only the root is looked at
    addFolder(QStringLiteral("自编"), {"KDJ"}, 1);
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ|里{MACD}}}"));
    mHost.mConfig.mUserConfig.mEditorAuth = true;
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ|里{MACD}}|自编{KDJ}}"));
    mHost.mConfig.mHasUserConfig = false;
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ|里{MACD}}|自编{KDJ}}"));
}

TEST_F(FormulaMenuTest, ATradingClientIsOfferedNoModelsAtTheRoot) {
    const auto outer = addFolder(QStringLiteral("外"), {"KDJ"});
    addFolder(QStringLiteral("里"), {"MACD"}, 4, outer);
    addFolder(QStringLiteral("四"), {"MACD"}, 4);
    addFolder(QStringLiteral("五"), {"MACD"}, 5);
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ|里{MACD}}|四{MACD}|五{MACD}}"));
    mHost.mConfig.mClientType = EClientType::Trading;
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ|里{MACD}}}"));
}

TEST_F(FormulaMenuTest, ModelsAreForThoseWhoMaySeeThem) {
    const auto outer = addFolder(QStringLiteral("外"), {"KDJ"});
    for (const char *name : {"常用模板", "择时策略示范", "PYTHON模型指标", "财务指标", "因子函数"}) {
        addFolder(QString::fromUtf8(name), {"KDJ"}, 0, outer);
    }
    addFolder(QStringLiteral("四"), {"KDJ"}, 4, outer);
    addFolder(QStringLiteral("五"), {"KDJ"}, 5, outer);
    addFolder(QStringLiteral("常用模板"), {"KDJ"});
    const QString others = QStringLiteral("财务指标{KDJ}|因子函数{KDJ}");
    const QString everything =
        QStringLiteral(
            "更改副图指标{外{KDJ|常用模板{KDJ}|择时策略示范{KDJ}|PYTHON模型指标{KDJ}|%1|四{KDJ}|五{KDJ}}|"
            "常用模板{KDJ}}")
            .arg(others);
    EXPECT_EQ(replacements(), everything);
    mHost.mConfig.mUserConfig.mShowModel = false;
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ|%1}}").arg(others));
    mHost.mConfig.mHasUserConfig = false;
    EXPECT_EQ(replacements(), everything);
    hideModels(true);
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{KDJ}}"));
}

TEST_F(FormulaMenuTest, FormulasOfTenLevelQuotesAreForThoseWhoHaveThem) {
    addFolder(QStringLiteral("Level2专用"), {"KDJ"}, 0, addFolder(QStringLiteral("外"), {"MACD"}));
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{MACD}}"));
    mHost.mConfig.mLevel2Markets.insert(QStringLiteral("SZ"));
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{MACD}}"));
    mHost.mConfig.mLevel2Markets.insert(QStringLiteral("SH"));
    EXPECT_EQ(replacements(), QStringLiteral("更改副图指标{外{MACD|Level2专用{KDJ}}}"));
}

TEST_F(FormulaMenuTest, NoneOfThatIsLeftOutOfTheMenuOfOverlays) {
    mHost.mConfig.mUserConfig.mShowModel = false;
    mHost.mConfig.mClientType = EClientType::Trading;
    hideModels(true);
    addFolder(QStringLiteral("自编"), {"MA"}, 1);
    addFolder(QStringLiteral("四"), {"MA"}, 4);
    addFolder(QStringLiteral("因子函数"), {"MA"});
    addFolder(QStringLiteral("Level2专用"), {"MA"});
    EXPECT_EQ(overlays(), QStringLiteral("叠加指标{自编{MA}|四{MA}|因子函数{MA}|Level2专用{MA}}"));
}

TEST_F(FormulaMenuTest, ANewFormulaIsAskedForOverTheChart) {
    addFolder(QStringLiteral("一"), {"MA", "BOLL"});
    showMain();
    EXPECT_EQ(choose(QStringLiteral("叠加指标/一/Boll")), (Events{{208, 0, 1, "Boll", nullptr}}));
    EXPECT_TRUE(menu().contains(QStringLiteral("|-|叠加指标{一{MA|Boll}}|")));
    mGraph->addIndex("BOLL");
    EXPECT_TRUE(menu().contains(QStringLiteral("|-|叠加指标{一{MA|+Boll}}|取消叠加指标{+Boll}|")));
}

TEST_F(FormulaMenuTest, AnotherFormulaTakesThePlaceOfThePresentOnes) {
    addFolder(QStringLiteral("一"), {"MACD", "KDJ"});
    showSub();
    mGraph->addIndex("VOL");
    EXPECT_EQ(choose(QStringLiteral("更改副图指标/一/KDJ")).back(), (tests::Event{180, 0, 0, "", nullptr}));
    EXPECT_EQ(mData->getFormulas(), QList<QString>{"KDJ"});
    EXPECT_FALSE(mHost.mFormulas.mLive.find("KDJ.lua", "600000").id().isEmpty());
}

// The menu of the title

TEST_F(FormulaMenuTest, TheMenuOfTheTitleOffersFormulasInPlaceOfThePresentOnes) {
    addFolder(QStringLiteral("一"), {"MACD", "KDJ", "MA"});
    showSub();
    const QPoint at = mGraph->mapToGlobal(QPoint(60, 20));
    QString text;
    EXPECT_TRUE(duringMenu([&] { mGraph->showTitleMenu(at); },
                           [&](QMenu &open) {
                               text = tests::outline(open);
                               EXPECT_EQ(open.pos(), at);
                               EXPECT_FALSE(open.styleSheet().isEmpty());
                               tests::entryOf(open, QStringLiteral("一/KDJ"))->trigger();
                           }));
    EXPECT_EQ(text, QStringLiteral("一{+MACD|KDJ}"));
    EXPECT_EQ(mData->getFormulas(), QList<QString>{"KDJ"});
}

TEST_F(FormulaMenuTest, TheMenuOfTheTitleOfAChartChangesItsAttachedFormula) {
    addFolder(QStringLiteral("一"), {"MACD", "BOLL", "MA"});
    showMain();
    mGraph->addIndex("MA");
    EXPECT_TRUE(duringMenu([&] { mGraph->showTitleMenu({}); },
                           [&](QMenu &open) { tests::entryOf(open, QStringLiteral("一/Boll"))->trigger(); }));
    EXPECT_EQ(mData->getFormulas(), (QList<QString>{"REALTIME", "REALTIMEVOL", "BOLL"}));
}

TEST_F(FormulaMenuTest, AnEmptyCatalogueHasNoMenuOfTheTitle) {
    showSub();
    EXPECT_FALSE(duringMenu([&] { mGraph->showTitleMenu({}); }, [](QMenu &) {}));
}

} // namespace
