#pragma once

#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CRadioButton.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "host/toolkit/CStandardTable.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "tests/chartview/ChartFixture.h"

#include <QtTest>
#include <boost/make_shared.hpp>

#include <memory>
#include <set>
#include <string>

namespace tests {

/// The dialog with its protected operations.
class SettingDialog : public TC::CRealtimeLinkageSettingDialog {
public:
    using CRealtimeLinkageSettingDialog::clearImportData;
    using CRealtimeLinkageSettingDialog::CRealtimeLinkageSettingDialog;
    using CRealtimeLinkageSettingDialog::handleImportDeal;
    using CRealtimeLinkageSettingDialog::handleImportOrder;
    using CRealtimeLinkageSettingDialog::selectAccount;
    using CRealtimeLinkageSettingDialog::selectAllStock;
    using CRealtimeLinkageSettingDialog::selectAllStrategy;
    using CRealtimeLinkageSettingDialog::selectRevertStock;
    using CRealtimeLinkageSettingDialog::selectRevertStrategy;
    using CRealtimeLinkageSettingDialog::selectStock;
    using CRealtimeLinkageSettingDialog::selectStrategy;
    using CRealtimeLinkageSettingDialog::updateAccounts;
    using CRealtimeLinkageSettingDialog::updateStocks;
    using CRealtimeLinkageSettingDialog::updateStrategys;
};

/// The dialog, not shown yet, below a keeper of events; the test plays the poll.
class SettingDialogFixture : public ChartFixture {
protected:
    using Keys = std::set<std::string>;
    using Names = QStringList;

    SettingDialogFixture() { makeDialog(); }
    ~SettingDialogFixture() override { mDialog.reset(); }

    void makeDialog() { mDialog = std::make_unique<SettingDialog>(mKeeper.get()); }
    void show() {
        mDialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mDialog.get()));
    }
    void addAccount(const std::string &id, const std::string &name) {
        auto account = boost::make_shared<kvservice::CAccountInfo>();
        account->mAccountId = id;
        account->mAccountName = name;
        mHost.mLinkage.mAccounts.push_back(account);
    }
    /// Accounts a1 and a2, strategies s1 and s2, instruments SH600000 and SZ000001.
    void fillService() {
        addAccount("a1", "股票账号");
        addAccount("a2", "期货账号");
        mHost.mStocks.add("SZ", "000001")->mName = "平安银行";
        mHost.mLinkage.mStrategys = {"s1", "s2"};
        mHost.mLinkage.mStocks = {"SH600000", "SZ000001"};
    }
    /// The dialog is open, with the rows of fillService(), and nothing is due.
    void showFilled() {
        fillService();
        mDialog->slotTimeout();
        mDialog->slotTimeout();
        show();
        forget();
    }
    void forget() {
        mKeeper->mEvents.clear();
        mHost.mLog.clear();
    }
    /// Numbers of the events that reached the parent, and then forgets them.
    std::vector<int> events() {
        std::vector<int> numbers;
        for (const Event &event : mKeeper->mEvents) {
            EXPECT_EQ(event.first, 0);
            EXPECT_EQ(event.second, 0);
            EXPECT_EQ(event.text, QString());
            EXPECT_EQ(event.data, nullptr);
            numbers.push_back(event.number);
        }
        mKeeper->mEvents.clear();
        return numbers;
    }
    Names calls() {
        const Names found = mHost.mLog.of(QStringLiteral("CLinkageManager::"));
        mHost.mLog.clear();
        return found;
    }
    bool event(int number, int sub, int param = 0, const QString &text = {}) {
        return mDialog->handleEvent(number, sub, param, text, nullptr);
    }

    template <class Control> Control *control(int id) const {
        for (Control *found : mDialog->findChildren<Control *>()) {
            if (found->id() == id && found->objectName().isEmpty()) {
                return found;
            }
        }
        return nullptr;
    }
    GZ::CCheckBox *box(int id) const { return control<GZ::CCheckBox>(id); }
    GZ::CRadioButton *radio(int id) const { return control<GZ::CRadioButton>(id); }
    GZ::CSmallNoNormalButton *button(int id) const { return control<GZ::CSmallNoNormalButton>(id); }
    /// The table of an id: 0 accounts, 1 strategies, 2 instruments.
    GZ::CStandardTable *table(int id) const {
        for (GZ::CStandardTable *found : mDialog->findChildren<GZ::CStandardTable *>()) {
            if (found->getID() == id) {
                return found;
            }
        }
        return nullptr;
    }
    GZ::CCheckBox *rowBox(int tableId, int row) const {
        return static_cast<GZ::CCheckBox *>(table(tableId)->widgetAt(row, 0));
    }
    Names texts(int tableId, int row) const {
        Names found;
        for (int column = 1; column < table(tableId)->columnCount(); ++column) {
            found.append(table(tableId)->textAt(row, column));
        }
        return found;
    }
    static void click(QWidget *on) {
        QTest::mouseClick(on, Qt::LeftButton, Qt::NoModifier, QPoint(6, on->height() / 2));
    }

    std::unique_ptr<SettingDialog> mDialog;
};

} // namespace tests
