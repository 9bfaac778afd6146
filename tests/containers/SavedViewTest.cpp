// A view as it is saved, and what is left of it when the text is not sound.

#include "tests/containers/MainWidgetFixture.h"

#include "containers/ViewDocument.h"
#include "host/windows/CIndexModelWidget.h"

#include <random>

using namespace TC;

namespace {

using Texts = QVector<QString>;

std::optional<ViewDocument> read(const char *text, bool concise = false) {
    return ViewDocument::fromText(QString::fromUtf8(text), concise);
}

// The text

TEST(ViewDocumentText, KeysStandInTheirOrder) {
    ViewDocument view;
    view.mFormulas = Texts{"KDJ", "MACD"};
    view.mBarFormulas = Texts{"KDJ"};
    view.mBarTemplates = Texts();
    view.mOverlays = {"SH600001"};
    view.mTradeSetting = {{"a", true}, {"b", false}};
    view.mSectorLevel = -1;
    view.mOverlayFlags = 1;
    view.mConvertibles = Texts{"SH110001"};
    view.mAttached = {"MA", "BOLL"};
    EXPECT_EQ(view.toText(),
              R"({ "index" : [ "KDJ", "MACD" ], "slectindex" : [ "KDJ" ], "selecttempalte" : [  ], )"
              R"("superposstock" : [ "SH600001" ], "linkagedialogsetting" : [ "1", "a", "0", "b" ], )"
              R"("swbkzslevel" : -1, "addstockflags" : 1, "addconvertiblecodes" : [ "SH110001" ], )"
              R"("mainAttchIndex" : "MA", "mainAttchIndex" : "BOLL" })");
}

TEST(ViewDocumentText, WhatIsEmptyIsLeftOutButForTheLists) {
    EXPECT_EQ(ViewDocument().toText(), R"({ "index" : [  ], "linkagedialogsetting" : [  ] })");
}

TEST(ViewDocumentText, NothingIsADocumentWithoutAListOfFormulas) {
    for (const char *text : {"", "  ", "null", "[]", "{", "{}", R"({"superposstock":["SH600001"]})",
                             R"({"index":"KDJ"})", R"({"index":{"0":"KDJ"}})", R"({"index":["KDJ",1]})",
                             R"({"index":[null]})", R"({"index":["KDJ"]} x)", R"({"index":["KDJ"])"}) {
        EXPECT_FALSE(read(text)) << text;
    }
    EXPECT_EQ(read(R"({"index":[]})")->mFormulas, Texts());
    EXPECT_EQ(read(R"({"index":["KDJ"],"index":5})")->mFormulas, Texts{"KDJ"}) << "the first of equal keys";
}

TEST(ViewDocumentText, TemplateKeysMeanSomethingInTheConciseStyleOnly) {
    const char *text = R"({"index":["KDJ"],"slectindex":["A"],"selecttempalte":["B","C"]})";
    EXPECT_FALSE(read(text)->mBarFormulas);
    EXPECT_FALSE(read(text)->mBarTemplates);
    EXPECT_EQ(read(text, true)->mBarFormulas, Texts{"A"});
    EXPECT_EQ(read(text, true)->mBarTemplates, (Texts{"B", "C"}));
    const char *wrong = R"({"index":["KDJ"],"slectindex":["A"],"selecttempalte":5,"superposstock":["S"]})";
    EXPECT_EQ(read(wrong)->mFormulas, Texts{"KDJ"});
    EXPECT_EQ(read(wrong, true)->mBarFormulas, Texts{"A"});
    EXPECT_FALSE(read(wrong, true)->mFormulas) << "the fault stands in front of the panes";
    EXPECT_TRUE(read(wrong, true)->mOverlays.isEmpty());
}

TEST(ViewDocumentText, FaultAmongTheOverlaysKeepsThePanesAsTheyAre) {
    for (const char *text :
         {R"({"index":[],"superposstock":"SH600001"})", R"({"index":[],"superposstock":[1]})"}) {
        ASSERT_TRUE(read(text)) << text;
        EXPECT_FALSE(read(text)->mFormulas) << text;
    }
}

TEST(ViewDocumentText, TradeSettingIsValueThenName) {
    using Setting = QVector<QPair<QString, bool>>;
    EXPECT_EQ(read(R"({"index":[],"linkagedialogsetting":["1","a","0","b"]})")->mTradeSetting,
              (Setting{{"a", true}, {"b", false}}));
    EXPECT_EQ(read(R"({"index":[],"linkagedialogsetting":["1","a","0"]})")->mTradeSetting,
              (Setting{{"a", true}}))
        << "a value without a name";
    EXPECT_EQ(read(R"({"index":[],"linkagedialogsetting":["true","a"]})")->mTradeSetting,
              (Setting{{"a", false}}));
    const auto broken = read(R"({"index":[],"linkagedialogsetting":["1","a",0,"b"],"swbkzslevel":2})");
    EXPECT_EQ(broken->mTradeSetting, (Setting{{"a", true}}));
    EXPECT_FALSE(broken->mSectorLevel) << "nothing behind the fault";
    EXPECT_FALSE(read(R"({"index":[],"linkagedialogsetting":{},"swbkzslevel":2})")->mSectorLevel);
}

TEST(ViewDocumentText, LevelAndFlagsAreIntegersOf32Bits) {
    const auto whole =
        read(R"({"index":[],"swbkzslevel":3,"addstockflags":-2147483648,"mainAttchIndex":"MA"})");
    EXPECT_EQ(whole->mSectorLevel, 3);
    EXPECT_EQ(whole->mOverlayFlags, -2147483647 - 1);
    EXPECT_EQ(whole->mAttached, Texts{"MA"});
    for (const char *level : {"1.0", "2147483648", "\"1\"", "true", "null", "[1]"}) {
        const std::string text = std::string(R"({"index":["KDJ"],"swbkzslevel":)") + level +
                                 R"(,"addstockflags":1,"mainAttchIndex":"MA"})";
        const auto view = read(text.c_str());
        EXPECT_EQ(view->mFormulas, Texts{"KDJ"}) << level;
        EXPECT_FALSE(view->mSectorLevel) << level;
        EXPECT_FALSE(view->mOverlayFlags) << level;
        EXPECT_TRUE(view->mAttached.isEmpty()) << level;
    }
    const auto flags = read(R"({"index":[],"swbkzslevel":3,"addstockflags":1.5,"mainAttchIndex":"MA"})");
    EXPECT_EQ(flags->mSectorLevel, 3);
    EXPECT_TRUE(flags->mAttached.isEmpty());
}

TEST(ViewDocumentText, CodesNeedTheFlagsAndMayBeOfAnyType) {
    const auto without = read(R"({"index":[],"addconvertiblecodes":["SH110001"],"mainAttchIndex":"MA"})");
    EXPECT_FALSE(without->mConvertibles);
    EXPECT_EQ(without->mAttached, Texts{"MA"});
    const auto other = read(R"({"index":[],"addstockflags":1,"addconvertiblecodes":7,"mainAttchIndex":"MA"})");
    EXPECT_FALSE(other->mConvertibles);
    EXPECT_EQ(other->mAttached, Texts{"MA"});
    const auto mixed =
        read(R"({"index":[],"addstockflags":1,"addconvertiblecodes":["A",2,"B"],"mainAttchIndex":"MA"})");
    EXPECT_EQ(mixed->mConvertibles, (Texts{"A", "B"})) << "each of its texts";
    EXPECT_EQ(mixed->mAttached, Texts{"MA"});
}

TEST(ViewDocumentText, FirstAttachedFormulaCounts) {
    EXPECT_EQ(read(R"({"index":[],"mainAttchIndex":"MA","mainAttchIndex":"BOLL"})")->mAttached, Texts{"MA"});
    EXPECT_TRUE(read(R"({"index":[],"mainAttchIndex":1,"mainAttchIndex":"BOLL"})")->mAttached.isEmpty());
}

TEST(ViewDocumentText, MoreFormulasThanAnyViewShowsAreCounted) {
    ViewDocument view;
    view.mFormulas = Texts(ViewDocument::kMostFormulas + 3, "KDJ");
    const auto back = ViewDocument::fromText(view.toText(), false);
    EXPECT_EQ(back->mFormulas->size(), ViewDocument::kMostFormulas);
    EXPECT_EQ(back->mFormulasLeftOut, 3);
}

TEST(ViewDocumentText, AnyTextReadsBackTheSame) {
    ViewDocument view;
    view.mFormulas =
        Texts{QString::fromUtf8("VWAP成交均价"), QStringLiteral("a\"\\/\n\t"), QString(), QString(QChar(0x1F))};
    view.mAttached = {QString::fromUtf8("分时😀")};
    const auto back = ViewDocument::fromText(view.toText(), false);
    EXPECT_EQ(back->mFormulas, view.mFormulas);
    EXPECT_EQ(back->mAttached, view.mAttached);
}

// The view

class MainWidgetSaved : public tests::MainWidgetFixture {
protected:
    MainWidgetSaved() { mHost.mStocks.add("SH", "600001", 20.0); }
    void restore(const char *text) { mMain->setParam(QString::fromUtf8(text)); }
    QList<Names> paneFormulas() const {
        QList<Names> found;
        for (const CRealtimeWidget *one : mMain->getSubIndexWidgets()) {
            found.append(formulasOf(one));
        }
        return found;
    }
    /// Every pane is wired as one that was added by hand.
    void expectSound(const std::string &after) {
        const QVector<CRealtimeWidget *> subs = mMain->getSubIndexWidgets();
        ASSERT_EQ(list()->count(), subs.size() + 1) << after;
        EXPECT_EQ(list()->widgetAt(0), pane()) << after;
        EXPECT_EQ(mMain->getStretchFactorList().size(), static_cast<std::size_t>(subs.size()) + 1) << after;
        int id = 0;
        for (int i = 0; i < subs.size(); ++i) {
            EXPECT_EQ(list()->widgetAt(i + 1), subs[i]) << after;
            EXPECT_GT(subs[i]->getId(), id) << after;
            id = subs[i]->getId();
            EXPECT_EQ(subs[i]->getUiParam(), mUi) << after;
            EXPECT_TRUE(subs[i]->getCrossLineWidget()) << after;
            EXPECT_EQ(subs[i]->getGrapWidgetCount(), mUi->mDayCount) << after;
            EXPECT_FALSE(subs[i]->isHidden()) << after;
        }
    }
};

TEST_F(MainWidgetSaved, FreshViewSaysThatThereIsNothing) {
    makeView();
    EXPECT_EQ(mMain->param(), R"({ "index" : [  ], "linkagedialogsetting" : [  ], "swbkzslevel" : -1, )"
                              R"("addstockflags" : 0, "addconvertiblecodes" : [  ] })");
    EXPECT_EQ(mMain->getIndexParam(), Texts());
}

TEST_F(MainWidgetSaved, ViewComesBackAsItWas) {
    showView(2);
    sub(1)->addIndex("VOL");
    mMain->updateIndex("MA", 0, EFormulaLanguage::Native, corvane::ERunMode::Ordinary);
    mUi->addStock("SH600001", QString(), false);
    mUi->mAddSwBkzsLevel = 2;
    mUi->mAddStockFlags = 1;
    mUi->mAddConvertibleCodes = {"SH110001"};
    mMain->presetLinkageDialogSetting({{"order", true}, {"deal", false}});
    const QString text = mMain->param();
    EXPECT_EQ(mMain->getIndexParam(), (Texts{"KDJ", "MACD", "VOL"}));
    makeView();
    mMain->setParam(text);
    EXPECT_EQ(paneFormulas(), (QList<Names>{{"KDJ"}, {"MACD"}, {"VOL"}})) << "each formula has a pane now";
    EXPECT_EQ(mMain->getStretchFactorList(), (std::vector<int>{2, 1, 1, 1}));
    EXPECT_EQ(mMain->getAddStockList(), QList<QString>{"SH600001"});
    EXPECT_EQ(mUi->mAddStocks.size(), 1) << "it comes back with an axis";
    EXPECT_EQ(mUi->mAddSwBkzsLevel, 2);
    EXPECT_EQ(mUi->mAddStockFlags, 1);
    EXPECT_EQ(mUi->mAddConvertibleCodes, QSet<QString>{"SH110001"});
    EXPECT_EQ(formulasOf(pane()), (Names{"REALTIME", "REALTIMEVOL", "MA"}));
    EXPECT_EQ(mMain->getLinkageDialogSetting(), (QMap<QString, bool>{{"order", true}, {"deal", false}}));
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty()) << "the host requests";
    expectSound("restored");
}

TEST_F(MainWidgetSaved, TextWithoutAListOfFormulasChangesNothing) {
    showView(1);
    const QString before = mMain->param();
    for (const char *text : {"", "nonsense", R"({"superposstock":["SH600001"],"mainAttchIndex":"MA"})",
                             R"({"index":["KDJ",5],"superposstock":["SH600001"]})"}) {
        restore(text);
        EXPECT_EQ(mMain->param(), before) << text;
        EXPECT_EQ(ids(), QList<int>{1}) << text;
    }
}

TEST_F(MainWidgetSaved, EmptyListTakesAllPanesAndKeepsTheOverlays) {
    showView(2);
    mUi->addStock("SH600001", QString(), true);
    restore(R"({"index":[]})");
    EXPECT_TRUE(ids().isEmpty());
    EXPECT_EQ(mMain->getAddStockList(), QList<QString>{"SH600001"});
    EXPECT_TRUE(frame()->isHidden());
}

TEST_F(MainWidgetSaved, OverlaysComeBeforeAFaultAndPanesDoNot) {
    showView(1);
    restore(
        R"({"index":["MACD","VOL"],"superposstock":["SH600001","SH999999"],"swbkzslevel":1.5,"mainAttchIndex":"MA"})");
    EXPECT_EQ(mMain->getAddStockList(), QList<QString>{"SH600001"}) << "an unknown key is skipped";
    EXPECT_EQ(paneFormulas(), (QList<Names>{{"MACD"}, {"VOL"}}));
    EXPECT_EQ(mUi->mAddSwBkzsLevel, -1);
    EXPECT_FALSE(pane()->findIndex("MA"));
    restore(R"({"index":[],"superposstock":[5]})");
    EXPECT_EQ(ids().size(), 2);
}

TEST_F(MainWidgetSaved, TradeSettingGoesToADialogYetToBeMade) {
    showView();
    mMain->presetLinkageDialogSetting({{"task", true}});
    restore(R"({"index":[],"linkagedialogsetting":["1","order","0","deal"]})");
    EXPECT_EQ(mMain->getLinkageDialogSetting(),
              (QMap<QString, bool>{{"deal", false}, {"order", true}, {"task", true}}))
        << "other names stay";
}

TEST_F(MainWidgetSaved, FirstAttachedFormulaComesBack) {
    showView();
    restore(R"({"index":[],"mainAttchIndex":"BOLL","mainAttchIndex":"MA"})");
    EXPECT_EQ(formulasOf(pane()), (Names{"REALTIME", "REALTIMEVOL", "BOLL"}));
}

TEST_F(MainWidgetSaved, SeveralAttachedFormulasAreAllTold) {
    showView();
    pane()->addIndex("MA");
    pane()->addIndex("BOLL");
    EXPECT_TRUE(mMain->param().endsWith(R"("mainAttchIndex" : "MA", "mainAttchIndex" : "BOLL" })"));
}

TEST_F(MainWidgetSaved, BarHearsOfItInTheConciseStyle) {
    mHost.mConfig.mConfig.mConcise = true;
    mHost.mTemplates.mTemplates = {{QStringLiteral("短线"), {"KDJ", "RSI"}}};
    showView(0, EIndexViewType::Template);
    restore(R"({"index":["KDJ"],"slectindex":["KDJ"],"selecttempalte":["短线"]})");
    EXPECT_EQ(mMain->getSelectIndex(), Texts{"KDJ"});
    EXPECT_EQ(mMain->getSelectTempalte(), Texts{QString::fromUtf8("短线")});
    const QString text = mMain->param();
    EXPECT_TRUE(text.startsWith(QString::fromUtf8(
        R"({ "index" : [ "KDJ" ], "slectindex" : [ "KDJ" ], "selecttempalte" : [ "短线" ], "linkage)")))
        << text.toStdString();
    mHost.mConfig.mConfig.mConcise = false;
    makeView(EIndexViewType::Template);
    mMain->setParam(text);
    EXPECT_EQ(paneFormulas(), QList<Names>{{"KDJ"}}) << "it reads fine in the other style";
    mHost.mConfig.mConfig.mConcise = true;
    makeView();
    EXPECT_TRUE(mMain->param().contains(R"("slectindex" : [  ], "selecttempalte" : [  ])")) << "without a bar";
}

TEST_F(MainWidgetSaved, SettingsTakeStretchFactorsAsFarAsTheyGo) {
    showView(1);
    QVector<QString> formulas{"MACD", "VOL"};
    std::vector<int> stretches{5, 3};
    takeEvents();
    mMain->loadSettings(formulas, stretches);
    EXPECT_EQ(mMain->getStretchFactorList(), (std::vector<int>{5, 3, 1}));
    EXPECT_EQ(ids(), (QList<int>{2, 3})) << "ids are never used again";
    EXPECT_TRUE(takeEvents().empty());
    stretches.clear();
    mMain->loadSettings(formulas, stretches);
    EXPECT_EQ(mMain->getStretchFactorList(), (std::vector<int>{2, 1, 1}));
}

TEST_F(MainWidgetSaved, RestoredPanesAreWiredAsAddedOnes) {
    mHost.mConfig.mClientType = EClientType::Trading;
    showView(2);
    mMain->setCreateNewWorkShow(false);
    doubleClick(graph(sub(1)), {100, 10}); // maximised
    restore(R"({"index":["KDJ","MACD"]})");
    settle();
    expectSound("restored");
    EXPECT_TRUE(list()->isDragEnable()) << "the maximised pane has gone";
    fill();
    key(Qt::Key_Left);
    EXPECT_TRUE(sub(0)->getCrossLineWidget()->isVisible());
    expectScreenComplete("the keyboard's cross line");
    mUi->mCrossIndex = 119; // beside the newest of 121: all follow
    pane()->handleEvent(3029, 0, 0, QString(), nullptr);
    EXPECT_EQ(mUi->mCrossIndex, 120);
    expectScreenComplete("it has followed the newest point");
    doubleClick(graph(sub(1)), {100, 10});
    EXPECT_FALSE(list()->isDragEnable());
    sub(0)->destorySubWidget();
    EXPECT_EQ(ids().size(), 1);
}

// Hostile texts

/// Changes a text in one to four places: bytes, numbers, pieces of it and of others.
std::string mutated(const std::vector<std::string> &seeds, std::mt19937 &random) {
    const auto below = [&random](std::size_t bound) { return bound ? random() % bound : 0; };
    static const std::vector<std::string> pieces = {"\"",
                                                    "[",
                                                    "]",
                                                    "{",
                                                    "}",
                                                    ",",
                                                    ":",
                                                    "null",
                                                    "true",
                                                    "-1",
                                                    "1.5",
                                                    "2147483648",
                                                    "1e999",
                                                    "\\u0000",
                                                    "\\ud800",
                                                    "\xff",
                                                    "\"index\"",
                                                    "\"mainAttchIndex\":\"MA\"",
                                                    "\"swbkzslevel\":",
                                                    "\"addconvertiblecodes\":[\"x\"]",
                                                    "{\"$numberInt\":\"5\"}",
                                                    "{\"$date\":1}",
                                                    "\"KDJ\"",
                                                    "[[[[",
                                                    "]]]]"};
    std::string text = seeds[below(seeds.size())];
    for (std::size_t times = 1 + below(4); times > 0; --times) {
        const std::size_t at = below(text.size() + 1);
        switch (below(6)) {
        case 0:
            text.insert(at, pieces[below(pieces.size())]);
            break;
        case 1:
            text.erase(at, 1 + below(8));
            break;
        case 2:
            if (at < text.size()) {
                text[at] = static_cast<char>(below(256));
            }
            break;
        case 3:
            text.replace(at, below(12), pieces[below(pieces.size())]);
            break;
        case 4: {
            const std::string &other = seeds[below(seeds.size())];
            text.insert(at, other.substr(below(other.size()), below(40)));
            break;
        }
        default:
            text.insert(at, text.substr(below(text.size()), below(30)));
            break;
        }
    }
    return text;
}

const std::vector<std::string> &seeds() {
    static const std::vector<std::string> all = {
        R"({ "index" : [ "KDJ", "MACD" ], "linkagedialogsetting" : [ "1", "order" ], "swbkzslevel" : -1, "addstockflags" : 0, "addconvertiblecodes" : [  ] })",
        R"({ "index" : [ "KDJ" ], "slectindex" : [ "KDJ" ], "selecttempalte" : [ "x" ], "superposstock" : [ "SH600001" ], "linkagedialogsetting" : [  ], "swbkzslevel" : 2, "addstockflags" : 1, "addconvertiblecodes" : [ "SH110001" ], "mainAttchIndex" : "MA" })",
        R"({"index":[],"mainAttchIndex":"MA","mainAttchIndex":"BOLL"})",
        R"({"index":["TREND","MA","no such","VOL"],"superposstock":[],"linkagedialogsetting":["1","a","0","b","1"]})",
    };
    return all;
}

TEST(ViewDocumentText, HundredThousandMutatedTextsAreReadAsFarAsTheyAreSound) {
    std::mt19937 random(20240315);
    int sound = 0;
    for (int i = 0; i < 100000; ++i) {
        const QString text = QString::fromUtf8(mutated(seeds(), random).c_str());
        const std::optional<ViewDocument> view = ViewDocument::fromText(text, i % 2 == 0);
        if (!view || !view->mFormulas) {
            continue;
        }
        ++sound;
        ASSERT_LE(view->mFormulas->size(), ViewDocument::kMostFormulas);
        ASSERT_LE(view->mAttached.size(), 1);
        const QString written = view->toText();
        const std::optional<ViewDocument> again = ViewDocument::fromText(written, true);
        ASSERT_TRUE(again) << text.toStdString();
        ASSERT_EQ(again->toText(), written) << text.toStdString();
    }
    EXPECT_GT(sound, 5000) << "or the mutations would show little";
}

TEST_F(MainWidgetSaved, MutatedTextsNeverLeaveAHalfWiredPane) {
    showView(1);
    std::mt19937 random(715);
    const bool isLong = qEnvironmentVariableIntValue("TIMESHARE_LONG_TESTS") == 1;
    const int texts = isLong ? 100000 : 400;
    for (int i = 0; i < texts; ++i) {
        const std::string text = mutated(seeds(), random);
        mMain->setParam(QString::fromUtf8(text.c_str()));
        expectSound(text);
        ASSERT_FALSE(HasFailure()) << text;
        EXPECT_TRUE(pane()->findIndex("REALTIME")) << text;
        if (i % 50 == 0) {
            mMain->request(false);
            answer("REALTIME", std::vector<double>(20, 10.5));
            settle();
        }
    }
    expectScreenComplete("after all of them");
}

} // namespace
