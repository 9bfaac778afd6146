#include "chartdata/PaneFormulas.h"

#include "tests/chartdata/PartsFixture.h"

using namespace TC;

namespace tests {
namespace {

class Formulas : public PartsFixture {
protected:
    Formulas() { mFormulas.clear(); }
    PaneFormulas mList{mView, mFormulas, [](const QString &name) { return name.startsWith(QLatin1Char('R')); }};
};

TEST_F(Formulas, NamesAreCapitalsAndStandOnce) {
    mList.add(QStringLiteral("Macd"));
    mList.add(QStringLiteral("kdj"));
    mList.add(QStringLiteral("MACD"));
    EXPECT_EQ(mFormulas, (QList<QString>{"MACD", "KDJ"}));
    EXPECT_TRUE(mList.has(QStringLiteral("macd")));
    mList.remove(QStringLiteral("MACD"));
    EXPECT_FALSE(mList.has(QStringLiteral("MACD")));
}

TEST_F(Formulas, MainGraphIsAMainFormulaThatIsNoVolume) {
    EXPECT_EQ(mList.mainGraph(), QString());
    for (const char *name : {"MACD", "REALTIMEVOL"}) {
        mList.add(QString::fromLatin1(name));
        EXPECT_EQ(mList.mainGraph(), QString()) << name;
    }
    mList.add(QStringLiteral("RANGE"));
    mList.add(QStringLiteral("REALTIME"));
    EXPECT_EQ(mList.mainGraph(), QStringLiteral("RANGE"));
    EXPECT_EQ(mList.sub(), QList<QString>{"MACD"});
}

TEST_F(Formulas, ReplacingLeavesTheFormulasOfTheOrdinaryChart) {
    for (const char *name : {"REALTIME", "MACD", "RANGE", "REALTIMEVOL"}) {
        mList.add(QString::fromLatin1(name));
    }
    mList.replace(QStringLiteral("kdj"));
    EXPECT_EQ(mFormulas, (QList<QString>{"REALTIME", "REALTIMEVOL", "KDJ"}));
}

} // namespace
} // namespace tests
