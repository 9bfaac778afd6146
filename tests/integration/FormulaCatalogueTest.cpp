// The catalogue's formulas through the terminal's own services.

#include "tests/integration/TerminalFixture.h"

#include "terminal/market/MarketDate.h"

namespace {

class FormulaCatalogueTest : public tests::TerminalFixture {
protected:
    TC::CFormulaParam param(const QString &formula, const QString &market = "SH",
                            const QString &code = "600000") {
        TC::CFormulaParam made;
        made.mRequestId = formula.toStdString();
        made.mMarket = market;
        made.mCode = code;
        made.mFormulaName = formula;
        made.mPeriod = 60000;
        made.mDataMode = 1;
        made.mDataDemand = 1;
        int day = terminal::dayOf(mToday);
        auto &stocks = TC::CSingletonT<TC::CStockManager>::instance();
        const auto bounds = stocks.getStartEndTime(stocks.getInstrumentDetail(market + code), day);
        made.mStart = {bounds.first, 0};
        made.mEnd = {bounds.second, 0};
        return made;
    }
    TC::FormulaResultPtr run(const TC::CFormulaParam &param) {
        QVector<TC::CFormulaParam> params{param};
        std::vector<TC::FormulaMetaPtr> metas;
        std::vector<TC::FormulaResultPtr> results;
        mServices->formulas().requestFormulasSync(params, metas, results);
        mMeta = metas.at(0);
        return results.at(0);
    }
    /// Points of a line that can be drawn.
    static int drawn(const se::RPCFormulaResult &result, size_t line) {
        int count = 0;
        for (size_t i = 0; i < result.mValues.at(line).size(); ++i) {
            const double value = result.mValues[line][i];
            count += result.mValid[i] == 1 && std::isfinite(value) && value < TC::kUnsetValue ? 1 : 0;
        }
        return count;
    }

    TC::FormulaMetaPtr mMeta;
};

} // namespace

TEST_F(FormulaCatalogueTest, TheFormulasOfNewSubPanesHaveValuesToDraw) {
    const QMap<QString, int> lines{{"KDJ", 3}, {"MACD", 3}, {"VOL", 3}, {"CCI", 1}, {"RSI", 3},
                                   {"OBV", 2}, {"PSY", 2},  {"AD", 1},  {"CR", 3}};
    for (auto formula = lines.cbegin(); formula != lines.cend(); ++formula) {
        const TC::FormulaResultPtr result = run(param(formula.key()));
        EXPECT_EQ(mMeta->mLineCount, formula.value()) << qPrintable(formula.key());
        ASSERT_EQ(result->mValues.size(), size_t(formula.value())) << qPrintable(formula.key());
        for (size_t line = 0; line < result->mValues.size(); ++line) {
            EXPECT_GT(drawn(*result, line), 20) << qPrintable(formula.key()) << " line " << line;
        }
    }
    QCoreApplication::processEvents();
    EXPECT_TRUE(mServices->messages().messages().isEmpty());
}

TEST_F(FormulaCatalogueTest, EveryFormulaRunsForEveryKindOfInstrumentWithoutAMessage) {
    const QList<QPair<QString, QString>> instruments{
        {"SH", "600000"}, {"SH", "510300"}, {"SH", "000001"}, {"SH", "113050"}, {"CFFEX", "IF2612"}};
    for (const auto &instrument : instruments) {
        const size_t points = run(param("REALTIME", instrument.first, instrument.second))->mTimes.size();
        EXPECT_GT(points, 30u) << qPrintable(instrument.second);
        for (const QString &name : mServices->catalogue().names()) {
            const TC::FormulaResultPtr result = run(param(name, instrument.first, instrument.second));
            EXPECT_EQ(result->mTimes.size(), points) << qPrintable(name + ' ' + instrument.second);
        }
    }
    QCoreApplication::processEvents();
    for (const terminal::FormulaMessage &message : mServices->messages().messages()) {
        ADD_FAILURE() << qPrintable(message.error.formula) << ": " << qPrintable(message.error.text);
    }
}

TEST_F(FormulaCatalogueTest, AChangedParameterIsUsedByTheNextRequest) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    const auto before = run(param("MA"));
    TC::CFormulaParameters parameters = catalogue.parameters("MA");
    parameters[0].mValue = 1;
    ASSERT_EQ(catalogue.setParameters("MA", parameters), "");
    const auto after = run(param("MA"));
    EXPECT_EQ(drawn(*before, 0), drawn(*after, 0) - 4) << "the first four points have no average of five";
    const auto price = run(param("REALTIME"));
    EXPECT_EQ(after->mValues[0], price->mValues[0]) << "an average of one point is the price";
}

TEST_F(FormulaCatalogueTest, AnEditedFormulaIsUsedByTheNextRequestAndItsErrorsReachTheMessages) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    QString name = "OBV";
    const TC::CFormulaFault fault =
        catalogue.saveFormula(name, "formula { name = \"OBV\", lines = {{\"A\"}} }\n"
                                    "function run()\n"
                                    "  if TIME[1] == 930 then error(\"太多\") end\n"
                                    "  return CLOSE\n"
                                    "end\n");
    ASSERT_TRUE(fault.isGood()) << qPrintable(fault.mMessage);
    run(param("OBV"));
    EXPECT_EQ(mMeta->mLineCount, 1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !mServices->messages().messages().isEmpty(); }));
    const terminal::FormulaError error = mServices->messages().messages().first().error;
    EXPECT_EQ(error.formula, "OBV");
    EXPECT_EQ(error.line, 3);
    EXPECT_TRUE(error.text.contains("太多")) << qPrintable(error.text);
    ASSERT_EQ(catalogue.restoreFormula("OBV"), "");
    run(param("OBV"));
    EXPECT_EQ(mMeta->mLineCount, 2);
}
