#include "terminal/formula/FormulaShelf.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

CataloguedFormulaPtr formula(const char *name, const char *path, bool isUserMade = false,
                             const QStringList &folders = {}) {
    auto made = std::make_shared<CataloguedFormula>();
    made->file = {QString::fromLatin1(path), folders, QByteArray("-- ") + path};
    made->description.name = QString::fromLatin1(name);
    made->isUserMade = isUserMade;
    return made;
}

QStringList namesOf(const FormulaShelf &shelf) {
    QStringList names;
    for (const FormulaShelf::Place &place : shelf.places()) {
        names.append(place.formula->description.name + (place.isOwn ? "*" : ""));
    }
    return names;
}

} // namespace

TEST(FormulaShelf, FindsInAnyLetterCase) {
    FormulaShelf shelf;
    shelf.addBuiltin(formula("Macd", "a.lua"));
    ASSERT_TRUE(shelf.find("mACD"));
    EXPECT_EQ(shelf.find("mACD")->description.name, "Macd");
    EXPECT_FALSE(shelf.find("RSI"));
}

TEST(FormulaShelf, AUsersFormulaStandsInThePlaceOfTheBuiltInOne) {
    FormulaShelf shelf;
    shelf.addBuiltin(formula("MACD", "a.lua", false, {"Trend"}));
    shelf.addBuiltin(formula("RSI", "b.lua"));
    shelf.putUser(formula("macd", "user.lua", true));
    EXPECT_EQ(shelf.find("MACD")->file.path, "user.lua");
    EXPECT_EQ(namesOf(shelf), QStringList({"macd", "RSI"}));
    EXPECT_EQ(shelf.places().first().folders, QStringList("Trend")) << "where the built-in one stands";
    shelf.removeUser("Macd");
    EXPECT_EQ(shelf.find("MACD")->file.path, "a.lua");
}

TEST(FormulaShelf, TheUsersOwnComeLastByName) {
    FormulaShelf shelf;
    shelf.addBuiltin(formula("RSI", "b.lua"));
    shelf.putUser(formula("Zeta", "z.lua", true));
    shelf.putUser(formula("alpha", "a.lua", true));
    EXPECT_EQ(namesOf(shelf), QStringList({"RSI", "alpha*", "Zeta*"}));
}

TEST(FormulaShelf, AFaultyFileStandsAside) {
    FormulaShelf shelf;
    shelf.addBuiltin(formula("MACD", "a.lua"));
    shelf.addFaulty({"/home/u/macd.lua", {}, "oops"});
    EXPECT_EQ(shelf.find("MACD")->file.path, "a.lua");
    EXPECT_EQ(shelf.source("macd").mText, "oops") << "the editor shows what the user wrote";
    EXPECT_TRUE(shelf.source("macd").mIsUserMade);
    EXPECT_EQ(shelf.userPath("MACD"), "/home/u/macd.lua");
    EXPECT_FALSE(shelf.hasUser("MACD"));
    shelf.putUser(formula("MACD", "/home/u/macd.lua", true));
    EXPECT_EQ(shelf.source("MACD").mText, "-- /home/u/macd.lua");
}

TEST(FormulaShelf, AnUnknownNameHasNoSource) {
    const FormulaShelf shelf;
    EXPECT_TRUE(shelf.source("NO").mText.isEmpty());
    EXPECT_TRUE(shelf.userPath("NO").isEmpty());
}

TEST(FormulaShelf, ARenewedFormulaIsAnotherAndTheOldOneStays) {
    FormulaShelf shelf;
    shelf.addBuiltin(formula("MACD", "a.lua"));
    const CataloguedFormulaPtr old = shelf.find("MACD");
    shelf.renew("macd", [](const CataloguedFormula &before) {
        auto made = std::make_shared<CataloguedFormula>(before);
        made->file.path = "new.lua";
        return made;
    });
    EXPECT_EQ(shelf.find("MACD")->file.path, "new.lua");
    EXPECT_EQ(old->file.path, "a.lua");
}
