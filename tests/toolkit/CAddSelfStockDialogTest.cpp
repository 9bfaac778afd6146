// Adding instruments to the user's own lists.

#include "host/windows/CAddSelfStockDialog.h"
#include "host/toolkit/CParameterAction.h"
#include "tests/fakehost/FakeHost.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

class AddSelfStock : public ::testing::Test {
protected:
    AddSelfStock() { mHost.mStocks.add("SH", "600000")->mName = "浦发银行"; }
    static QString texts(const QDialog &dialog) {
        QStringList all;
        for (const QLabel *label : dialog.findChildren<QLabel *>()) {
            all.append(label->text());
        }
        return all.join('|');
    }
    static QString message(const QDialog &dialog) {
        return dialog.findChild<QLabel *>(QStringLiteral("message"))->text();
    }
    static QComboBox &groups(const QDialog &dialog) { return *dialog.findChild<QComboBox *>(); }
    QVector<QString> stocks(const char *group) { return mHost.mSelfStocks.stocks(QString::fromUtf8(group)); }

    fakehost::FakeHost mHost;
};

TEST_F(AddSelfStock, InstrumentsAreNamedAndAddedToTheFirstList) {
    TC::CAddSelfStockDialog dialog({"SH600000", "CD1"});
    EXPECT_TRUE(texts(dialog).contains(QStringLiteral("SH600000 浦发银行，CD1")));
    EXPECT_EQ(groups(dialog).currentText(), QStringLiteral("自选股"));
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(stocks("自选股"), (QVector<QString>{"SH600000", "CD1"}));
}

TEST_F(AddSelfStock, AListIsMadeByItsName) {
    TC::CAddSelfStockDialog dialog({"SH600000"});
    groups(dialog).setEditText(QStringLiteral("  银行 "));
    dialog.accept();
    EXPECT_EQ(stocks("银行"), QVector<QString>{"SH600000"});
    EXPECT_TRUE(stocks("自选股").isEmpty());
}

TEST_F(AddSelfStock, WhatAListHasAlreadyIsTold) {
    mHost.mSelfStocks.addStocks(QStringLiteral("银行"), {"SH600000"});
    TC::CAddSelfStockDialog dialog({"SH600000"});
    EXPECT_EQ(message(dialog), QString());
    groups(dialog).setCurrentIndex(1);
    EXPECT_EQ(message(dialog), QStringLiteral("列表中已有 SH600000 浦发银行"));
}

TEST_F(AddSelfStock, AListNeedsAName) {
    TC::CAddSelfStockDialog dialog({"SH600000"});
    groups(dialog).setEditText(QStringLiteral(" "));
    dialog.show();
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(message(dialog), QStringLiteral("请键入列表的名称"));
}

TEST_F(AddSelfStock, ARefusalIsToldAndTheDialogStays) {
    mHost.mSelfStocks.mRefusal = QStringLiteral("满了");
    TC::CAddSelfStockDialog dialog({"SH600000"});
    dialog.show();
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(message(dialog), QStringLiteral("满了"));
}

TEST_F(AddSelfStock, OnlyTheFirstOfManyAreNamed) {
    TC::CAddSelfStockDialog dialog({"A1", "A2", "A3", "A4", "A5", "A6"});
    EXPECT_TRUE(texts(dialog).contains(QStringLiteral("A5，等6个品种")));
    EXPECT_FALSE(texts(dialog).contains("A6"));
}

TEST(ParameterAction, AnEntryTellsItsNumberAndText) {
    GZ::CParameterAction action(QStringLiteral("x"), 12, QStringLiteral("66,1,2"));
    QSignalSpy told(&action, &GZ::CParameterAction::triggered);
    action.trigger();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0], (QVariantList{false, 12, QStringLiteral("66,1,2")}));
    action.setCheckable(true);
    action.trigger();
    EXPECT_EQ(told[1], (QVariantList{true, 12, QStringLiteral("66,1,2")}));
}

} // namespace
