#include "terminal/formula/FormulaCatalogue.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

using namespace terminal;
using Node = TC::CFormulaCatalogDetail;

namespace {

const QByteArray kGood = "formula { name = \"%1\", type = 1, lines = {{\"X\", precision = 1}} }\n"
                         "function run() return CLOSE end\n";

QByteArray formulaText(const char *name) {
    return QByteArray(kGood).replace("%1", name);
}

class FormulaCatalogueTest : public ::testing::Test {
protected:
    QString userFolder() const { return mFolder.filePath("formulas"); }
    QString scriptFolder() const { return mFolder.filePath("scripts"); }
    QString configPath() const { return mFolder.filePath("config.json"); }
    void writeUserFile(const QString &name, const QByteArray &text) const {
        const QString path = userFolder() + '/' + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QByteArray readUserFile(const QString &name) const {
        QFile file(userFolder() + '/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    FormulaCatalogue &open() {
        mErrors.clear();
        mCatalogue.reset();
        mConfig.reset(); // writes what waits
        mConfig = std::make_unique<ConfigService>(configPath());
        mCatalogue =
            std::make_unique<FormulaCatalogue>(*mConfig, userFolder(), scriptFolder(),
                                               [this](const FormulaError &error) { mErrors.append(error); });
        return *mCatalogue;
    }
    /// Names along the way to a formula, from the root; empty when the tree does not hold it.
    static QStringList pathTo(const TC::CFormulaCatalogDetailPtr &node, const QString &formula) {
        for (const TC::CFormulaCatalogDetailPtr &child : node->children()) {
            if (!child->isFolder() && child->catalogName() == formula) {
                return {formula};
            }
            const QStringList below = pathTo(child, formula);
            if (!below.isEmpty()) {
                return QStringList(child->catalogName()) + below;
            }
        }
        return {};
    }
    static QStringList folders(const TC::CFormulaCatalogDetailPtr &node) {
        QStringList names;
        for (const TC::CFormulaCatalogDetailPtr &child : node->children()) {
            if (child->isFolder()) {
                names.append(child->catalogName());
            }
        }
        return names;
    }
    static TC::CFormulaParameter number(const QString &name, double value) {
        TC::CFormulaParameter made;
        made.mName = name;
        made.mValue = value;
        return made;
    }
    static TC::CFormulaParam request(const QString &name) {
        TC::CFormulaParam made;
        made.mFormulaName = name;
        return made;
    }

    QTemporaryDir mFolder;
    QVector<FormulaError> mErrors;
    std::unique_ptr<ConfigService> mConfig;
    std::unique_ptr<FormulaCatalogue> mCatalogue;
};

} // namespace

TEST_F(FormulaCatalogueTest, EveryBuiltInFormulaIsGoodAndNamesItsSource) {
    FormulaCatalogue &catalogue = open();
    EXPECT_TRUE(mErrors.isEmpty());
    EXPECT_GE(catalogue.names().size(), 30);
    for (const QString &name : catalogue.names()) {
        const auto file = catalogue.fileOf(request(name));
        ASSERT_TRUE(file) << qPrintable(name);
        const auto error = checkLuaFormula(*file);
        EXPECT_FALSE(error) << qPrintable(name) << ":" << error->line << ": " << qPrintable(error->text);
        const FormulaDescription description = *catalogue.description(name);
        EXPECT_FALSE(description.text.isEmpty()) << qPrintable(name);
        EXPECT_FALSE(description.source.isEmpty()) << qPrintable(name);
    }
}

TEST_F(FormulaCatalogueTest, TheMainFormulasReplaceTheMainChartAndAreNotOffered) {
    FormulaCatalogue &catalogue = open();
    for (const char *name : {"REALTIME", "REALTIMEVOL", "量价分析", "量价分析-量", "偏离度分析", "预计下单"}) {
        const TC::CFormulaDetailPtr record = catalogue.getFormula(name);
        ASSERT_TRUE(record) << name;
        EXPECT_EQ(record->mType, 2) << name;
        EXPECT_FALSE(record->mVisible) << name;
    }
    for (const char *name : {"VWAP成交均价", "IOPV"}) {
        ASSERT_TRUE(catalogue.getFormula(name)) << name;
        EXPECT_EQ(catalogue.getFormula(name)->mType, 1) << name;
    }
    EXPECT_EQ(catalogue.getFormula("REALTIMEVOL")->mPrecisions, (QMap<int, int>{{0, 0}}));
    EXPECT_TRUE(catalogue.getFormula("REALTIME")->mPrecisions.isEmpty()) << "prices follow the price step";
}

TEST_F(FormulaCatalogueTest, TheFormulasOfNewSubPanesArePaneFormulasInTheMenu) {
    FormulaCatalogue &catalogue = open();
    for (const char *name : {"KDJ", "MACD", "VOL", "CCI", "RSI", "OBV", "PSY", "AD", "CR"}) {
        const TC::CFormulaDetailPtr record = catalogue.getFormula(name);
        ASSERT_TRUE(record) << name;
        EXPECT_EQ(record->mType, 0) << name;
        EXPECT_TRUE(record->mVisible) << name;
        EXPECT_EQ(pathTo(catalogue.getRootCatalog(), name).size(), 2) << name;
    }
}

TEST_F(FormulaCatalogueTest, ScriptModelsAreThoseOfTheFolderThatIsGiven) {
    EXPECT_EQ(open().pythonDir(), scriptFolder());
    EXPECT_FALSE(folders(mCatalogue->getRootCatalog()).contains("PYTHON模型指标"));
    ASSERT_TRUE(QDir().mkpath(scriptFolder()));
    QFile file(scriptFolder() + "/ABC.py");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# type: 1\n");
    file.close();
    const TC::CFormulaDetailPtr record = open().getFormula("ABC");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->mLanguage, TC::EFormulaLanguage::Python);
    EXPECT_EQ(record->mType, 1);
    EXPECT_EQ(pathTo(mCatalogue->getRootCatalog(), "ABC"), (QStringList{"PYTHON模型指标", "ABC"}));
}

TEST_F(FormulaCatalogueTest, WithoutAFolderThereAreNoScriptModels) {
    ConfigService config;
    FormulaCatalogue catalogue(config);
    EXPECT_EQ(catalogue.pythonDir(), QString());
    EXPECT_FALSE(folders(catalogue.getRootCatalog()).contains("PYTHON模型指标"));
}

TEST_F(FormulaCatalogueTest, AFormulaIsFoundInAnyLetterCase) {
    FormulaCatalogue &catalogue = open();
    EXPECT_EQ(catalogue.getFormula("kdj"), catalogue.getFormula("KDJ"));
    EXPECT_EQ(catalogue.getFormula("vwap成交均价")->mName, "VWAP成交均价");
    EXPECT_FALSE(catalogue.getFormula("NOSUCH"));
    EXPECT_FALSE(catalogue.getFormula(""));
    EXPECT_TRUE(catalogue.genLuaFormula("KDJ", "KDJ"));
    EXPECT_FALSE(catalogue.genLuaFormula("KDJ", "NOSUCH"));
}

TEST_F(FormulaCatalogueTest, FoldersStandInTheirOrderWithoutTheirNumbers) {
    FormulaCatalogue &catalogue = open();
    const TC::CFormulaCatalogDetailPtr root = catalogue.getRootCatalog();
    EXPECT_EQ(folders(root), (QStringList{"趋势指标", "摆动指标", "成交量指标", "能量指标", "波动指标",
                                          "主图叠加", "主图替换", "示例"}));
    EXPECT_EQ(pathTo(root, "MACD"), (QStringList{"趋势指标", "MACD"}));
    EXPECT_EQ(pathTo(root, "REALTIME"), QStringList{"REALTIME"});
    for (const TC::CFormulaCatalogDetailPtr &child : root->children()) {
        EXPECT_EQ(child->modelType(), Node::eOrdinary);
    }
}

TEST_F(FormulaCatalogueTest, TheRecordHoldsNumbersAndTextsInParallelLists) {
    FormulaCatalogue &catalogue = open();
    const TC::CFormulaDetailPtr kdj = catalogue.getFormula("KDJ");
    EXPECT_EQ(kdj->mParamNames, (QVector<QString>{"N", "M1", "M2"}));
    EXPECT_EQ(kdj->mParamValues, (QVector<double>{9, 3, 3}));
    EXPECT_TRUE(kdj->mStrParamNames.isEmpty());
    EXPECT_EQ(kdj->mPrecisions, (QMap<int, int>{{0, 2}, {1, 2}, {2, 2}}));
    const TC::CFormulaDetailPtr styles = catalogue.getFormula("画线样式");
    EXPECT_EQ(styles->mParamNames, QVector<QString>{"STEP"});
    EXPECT_EQ(styles->mStrParamNames, QVector<QString>{"LABEL"});
    EXPECT_EQ(styles->mStrParamValues, QVector<QString>{"标记"});
}

TEST_F(FormulaCatalogueTest, OneFormulaShowsEveryDrawStyle) {
    QSet<int> shown;
    const auto description = open().description("画线样式");
    for (const FormulaLine &line : description->lines) {
        shown.insert(line.style);
    }
    for (const int style :
         {0, 27, 1, 2, 4, 8, 6, 5, 10, 40, 12, 13, 14, 19, 15, 16, 17, 18, 26, 28, 31, 36, 37, 41, 42}) {
        EXPECT_TRUE(shown.contains(style)) << style;
    }
}

TEST_F(FormulaCatalogueTest, ChangedParametersReachTheRecordTheRequestAndTheNextStart) {
    FormulaCatalogue &catalogue = open();
    QStringList heard;
    catalogue.setChangeListener([&heard](const QString &name) { heard.append(name); });
    const TC::CFormulaDetailPtr before = catalogue.getFormula("KDJ");
    EXPECT_EQ(catalogue.setParameters("kdj", {number("N", 14), number("M2", 5)}), "");
    EXPECT_EQ(before->mParamValues, (QVector<double>{9, 3, 3})) << "who holds a record keeps it as it is";
    EXPECT_EQ(catalogue.getFormula("KDJ")->mParamValues, (QVector<double>{14, 3, 5}));
    EXPECT_EQ(catalogue.fileOf(request("KDJ"))->arguments.value("N").toDouble(), 14.0);
    EXPECT_EQ(heard, QStringList{"KDJ"});
    EXPECT_EQ(open().getFormula("KDJ")->mParamValues, (QVector<double>{14, 3, 5}));
    EXPECT_EQ(mCatalogue->parameters("KDJ")[0].mValue, 14.0);
    EXPECT_EQ(mCatalogue->parameters("KDJ")[0].mDefault, 9.0);
}

TEST_F(FormulaCatalogueTest, ATextParameterIsKept) {
    FormulaCatalogue &catalogue = open();
    TC::CFormulaParameters all = catalogue.parameters("画线样式");
    ASSERT_EQ(all.size(), 2);
    ASSERT_TRUE(all[1].mIsText);
    all[1].mStrValue = "看这里";
    EXPECT_EQ(catalogue.setParameters("画线样式", all), "");
    EXPECT_EQ(open().getFormula("画线样式")->mStrParamValues, QVector<QString>{"看这里"});
}

TEST_F(FormulaCatalogueTest, ParametersOfAScriptModelAreChangedAndKeptToo) {
    QDir().mkpath(scriptFolder());
    QFile file(scriptFolder() + "/BAND.py");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# type: 1\n# parameter N: 20\n# parameter group: \"SH600000\"\n");
    file.close();
    TC::CFormulaParameters all = open().parameters("band");
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all[0].mDefault, 20.0);
    EXPECT_TRUE(all[1].mIsText);
    all[0].mValue = 30.0;
    all[1].mStrValue = "SZ000001";
    const TC::CFormulaDetailPtr held = mCatalogue->getFormula("BAND");
    EXPECT_EQ(mCatalogue->setParameters("BAND", all), "");
    EXPECT_EQ(held->mParamValues, QVector<double>{20.0}) << "who holds a record keeps it as it is";
    EXPECT_EQ(mCatalogue->getFormula("BAND")->mParamValues, QVector<double>{30.0});
    FormulaCatalogue &later = open();
    EXPECT_EQ(later.getFormula("BAND")->mParamValues, QVector<double>{30.0});
    EXPECT_EQ(later.getFormula("BAND")->mStrParamValues, QVector<QString>{"SZ000001"});
    EXPECT_EQ(later.parameters("BAND")[0].mValue, 30.0);
    EXPECT_EQ(later.parameters("BAND")[0].mDefault, 20.0);
    EXPECT_EQ(later.parameters("BAND")[1].mStrDefault, "SH600000");
    EXPECT_NE(later.setParameters("BAND", {number("group", 1)}), "") << "it is a text";
    EXPECT_NE(later.setParameters("BAND", {number("N", std::nan(""))}), "");
    EXPECT_EQ(later.getFormula("BAND")->mParamValues, QVector<double>{30.0});
}

TEST_F(FormulaCatalogueTest, ParametersThatCannotBeAreRefusedAndNothingChanges) {
    FormulaCatalogue &catalogue = open();
    EXPECT_NE(catalogue.setParameters("KDJ", {number("M1", 5), number("N", 0)}), "");
    EXPECT_NE(catalogue.setParameters("KDJ", {number("N", std::nan(""))}), "");
    EXPECT_NE(catalogue.setParameters("KDJ", {number("N", 9.5)}), "") << "no formula can run with it";
    EXPECT_NE(catalogue.setParameters("NOSUCH", {number("N", 9)}), "");
    EXPECT_EQ(catalogue.getFormula("KDJ")->mParamValues, (QVector<double>{9, 3, 3}));
    EXPECT_EQ(open().getFormula("KDJ")->mParamValues, (QVector<double>{9, 3, 3}));
}

TEST_F(FormulaCatalogueTest, WhatTheConfigurationHoldsBesideIsKeptAndWhatIsWrongInItPassedOver) {
    QFile file(configPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        R"({"later": 1, "formulas": {"KDJ": {"N": 7, "OLD": 3, "M1": "x", "M2": 1000}, "GONE": {"A": 2}}})");
    file.close();
    FormulaCatalogue &catalogue = open();
    EXPECT_EQ(catalogue.getFormula("KDJ")->mParamValues, (QVector<double>{7, 3, 3}));
    EXPECT_EQ(catalogue.setParameters("KDJ", {number("N", 8)}), "");
    ASSERT_TRUE(mConfig->waitUntilWritten());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject all = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonObject formulas = all["formulas"].toObject();
    EXPECT_EQ(all["later"].toInt(), 1);
    EXPECT_EQ(formulas["KDJ"].toObject()["N"].toInt(), 8);
    EXPECT_EQ(formulas["KDJ"].toObject()["OLD"].toInt(), 3);
    EXPECT_EQ(formulas["GONE"].toObject()["A"].toInt(), 2);
}

TEST_F(FormulaCatalogueTest, AFileOfTheUserTakesThePlaceOfTheBuiltInFormula) {
    writeUserFile("my.lua", formulaText("kdj"));
    FormulaCatalogue &catalogue = open();
    EXPECT_TRUE(mErrors.isEmpty());
    EXPECT_EQ(catalogue.getFormula("KDJ")->mType, 1);
    EXPECT_EQ(catalogue.getFormula("KDJ")->mPrecisions, (QMap<int, int>{{0, 1}}));
    EXPECT_EQ(catalogue.fileOf(request("KDJ"))->text, formulaText("KDJ"));
    EXPECT_EQ(pathTo(catalogue.getRootCatalog(), "KDJ"), (QStringList{"摆动指标", "KDJ"}));
    EXPECT_TRUE(catalogue.source("KDJ").mIsUserMade);
    EXPECT_TRUE(catalogue.source("KDJ").mHasBuiltin);
}

TEST_F(FormulaCatalogueTest, AFormulaNamedInOtherLettersIsNamedInCapitalsAndItsFileIsMigrated) {
    writeUserFile("mine.lua", formulaText("MyInd"));
    FormulaCatalogue &catalogue = open();
    EXPECT_TRUE(mErrors.isEmpty());
    EXPECT_EQ(catalogue.getFormula("MyInd")->mName, "MYIND");
    EXPECT_EQ(catalogue.getFormula("MyInd")->mFileName, "MYIND");
    EXPECT_EQ(pathTo(catalogue.getRootCatalog(), "MYIND"), (QStringList{"自编指标", "MYIND"}));
    EXPECT_TRUE(catalogue.names().contains("MYIND"));
    EXPECT_EQ(catalogue.source("MYIND").mText, QString::fromUtf8(formulaText("MYIND")));
    EXPECT_EQ(readUserFile("mine.lua"), formulaText("MYIND"));
}

TEST_F(FormulaCatalogueTest, WhereAFileCannotBeMigratedItsFormulaIsNamedInCapitalsAllTheSame) {
    const QByteArray text = formulaText("MyInd").replace("\"MyInd\"", "\"My\" .. \"Ind\"");
    writeUserFile("mine.lua", text);
    EXPECT_EQ(open().getFormula("MYIND")->mName, "MYIND");
    EXPECT_EQ(readUserFile("mine.lua"), text);
}

TEST_F(FormulaCatalogueTest, AFileOfTheSameNameInOtherLettersIsLeftAsItIs) {
    writeUserFile("a.lua", formulaText("SAME"));
    writeUserFile("b.lua", formulaText("same"));
    open();
    EXPECT_EQ(readUserFile("b.lua"), formulaText("same"));
}

TEST_F(FormulaCatalogueTest, ASavedFormulaIsNamedInCapitals) {
    FormulaCatalogue &catalogue = open();
    QString name;
    EXPECT_TRUE(catalogue.saveFormula(name, formulaText("MyInd")).isGood());
    EXPECT_EQ(name, "MYIND");
    EXPECT_EQ(catalogue.getFormula("myind")->mName, "MYIND");
    EXPECT_EQ(readUserFile("MYIND.lua"), formulaText("MYIND"));
}

TEST_F(FormulaCatalogueTest, FormulasThatTheUserAddsStandInAFolderOfTheirOwn) {
    writeUserFile("2短线/one.lua", formulaText("ONE"));
    writeUserFile("two.lua", formulaText("TWO"));
    FormulaCatalogue &catalogue = open();
    const TC::CFormulaCatalogDetailPtr root = catalogue.getRootCatalog();
    EXPECT_EQ(pathTo(root, "ONE"), (QStringList{"自编指标", "短线", "ONE"}));
    EXPECT_EQ(pathTo(root, "TWO"), (QStringList{"自编指标", "TWO"}));
    EXPECT_EQ(root->children().last()->modelType(), Node::eUserMade);
    EXPECT_EQ(root->children().last()->catalogType(), Node::eUserFolder);
    EXPECT_TRUE(catalogue.getFormula("one")->mVisible);
    EXPECT_TRUE(catalogue.names().contains("TWO"));
}

TEST_F(FormulaCatalogueTest, AFaultyFileOfTheUserIsToldAndTheBuiltInFormulaStands) {
    writeUserFile("KDJ.lua", "formula { name = \"KDJ\" lines = {{\"K\"}} }\n");
    writeUserFile("RSI.lua", formulaText("RSI").replace("CLOSE", "NOSUCH()"));
    FormulaCatalogue &catalogue = open();
    ASSERT_EQ(mErrors.size(), 2);
    EXPECT_EQ(mErrors[0].formula, "KDJ");
    EXPECT_EQ(mErrors[0].line, 1);
    EXPECT_EQ(mErrors[1].formula, "RSI");
    EXPECT_EQ(mErrors[1].line, 2);
    EXPECT_EQ(catalogue.getFormula("KDJ")->mParamNames.size(), 3);
    EXPECT_EQ(catalogue.getFormula("RSI")->mType, 0);
    EXPECT_TRUE(catalogue.source("KDJ").mText.startsWith("formula { name = \"KDJ\" lines")) << "to be mended";
    EXPECT_EQ(catalogue.restoreFormula("KDJ"), "");
    EXPECT_EQ(readUserFile("KDJ.lua"), "<missing>");
}

TEST_F(FormulaCatalogueTest, AFileThatIsTooLargeOrNamesAFormulaTwiceIsTold) {
    writeUserFile("a.lua", formulaText("SAME"));
    writeUserFile("b.lua", formulaText("same"));
    writeUserFile("big.lua", QByteArray((1 << 20) + 1, ' '));
    FormulaCatalogue &catalogue = open();
    EXPECT_EQ(mErrors.size(), 2);
    EXPECT_EQ(catalogue.getFormula("SAME")->mName, "SAME");
}

TEST_F(FormulaCatalogueTest, ASavedFormulaIsUsedAtOnceAndAfterTheNextStart) {
    FormulaCatalogue &catalogue = open();
    const TC::CFormulaDetailPtr before = catalogue.getFormula("KDJ");
    QStringList heard;
    catalogue.setChangeListener([&heard](const QString &name) { heard.append(name); });
    QString name = "KDJ";
    const TC::CFormulaFault fault = catalogue.saveFormula(name, formulaText("KDJ"));
    EXPECT_TRUE(fault.isGood()) << qPrintable(fault.mMessage);
    EXPECT_EQ(before->mType, 0) << "who holds a record keeps it as it is";
    EXPECT_EQ(catalogue.getFormula("KDJ")->mType, 1);
    EXPECT_EQ(heard, QStringList{"KDJ"});
    EXPECT_EQ(readUserFile("KDJ.lua"), formulaText("KDJ"));
    EXPECT_EQ(open().getFormula("KDJ")->mType, 1);
    EXPECT_EQ(mCatalogue->restoreFormula("KDJ"), "");
    EXPECT_EQ(mCatalogue->getFormula("KDJ")->mType, 0);
    EXPECT_EQ(readUserFile("KDJ.lua"), "<missing>");
    EXPECT_NE(mCatalogue->restoreFormula("KDJ"), "");
}

TEST_F(FormulaCatalogueTest, AFaultyTextIsNotKept) {
    FormulaCatalogue &catalogue = open();
    QString name = "KDJ";
    const TC::CFormulaFault fault = catalogue.saveFormula(
        name, "formula { name = \"KDJ\", lines = {{\"K\"}} }\n\nfunction run( return 1 end\n");
    EXPECT_EQ(fault.mLine, 3);
    EXPECT_FALSE(fault.isGood());
    EXPECT_EQ(readUserFile("KDJ.lua"), "<missing>");
    EXPECT_EQ(catalogue.getFormula("KDJ")->mParamNames.size(), 3);
    EXPECT_EQ(
        catalogue.checkFormula("formula { name = \"A\", lines = {{\"K\"}} }\n\nfunction run( return 1 end")
            .mLine,
        3);
    EXPECT_TRUE(catalogue.checkFormula(QString::fromUtf8(formulaText("A"))).isGood());
}

TEST_F(FormulaCatalogueTest, ANewFormulaNeedsANameThatNoOtherHas) {
    FormulaCatalogue &catalogue = open();
    QString name;
    EXPECT_FALSE(catalogue.saveFormula(name, formulaText("kdj")).isGood());
    EXPECT_EQ(name, "");
    EXPECT_FALSE(catalogue.saveFormula(name, formulaText("../evil")).isGood());
    EXPECT_FALSE(catalogue.saveFormula(name, formulaText(".hidden")).isGood());
    EXPECT_TRUE(catalogue.saveFormula(name, formulaText("我的")).isGood());
    EXPECT_EQ(name, "我的");
    EXPECT_EQ(pathTo(catalogue.getRootCatalog(), "我的"), (QStringList{"自编指标", "我的"}));
    EXPECT_TRUE(catalogue.checkFormula(catalogue.newFormulaText("")).isGood());
}

TEST_F(FormulaCatalogueTest, SavingDoesNotOverwriteAFileThatHoldsAnotherFormula) {
    writeUserFile("KDJ.lua", formulaText("OTHER"));
    FormulaCatalogue &catalogue = open();
    QString name = "KDJ";
    EXPECT_TRUE(catalogue.saveFormula(name, formulaText("KDJ")).isGood());
    EXPECT_EQ(readUserFile("KDJ.lua"), formulaText("OTHER"));
    EXPECT_EQ(readUserFile("KDJ 2.lua"), formulaText("KDJ"));
}

TEST_F(FormulaCatalogueTest, AFolderThatCannotBeWrittenIsSaid) {
    QFile blocker(userFolder());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    FormulaCatalogue &catalogue = open();
    QString name = "KDJ";
    const TC::CFormulaFault fault = catalogue.saveFormula(name, formulaText("KDJ"));
    EXPECT_TRUE(fault.mMessage.contains("KDJ.lua")) << qPrintable(fault.mMessage);
    EXPECT_EQ(catalogue.getFormula("KDJ")->mType, 0);
}
