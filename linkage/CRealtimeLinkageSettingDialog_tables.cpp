// Accounts, strategies and instruments: the rows, and what of them is chosen.

#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CStandardTable.h"
#include "host/toolkit/Text.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "linkage/LinkageControls.h"

namespace TC {
namespace {

using GZ::CCheckBox;
using GZ::CStandardTable;

/// Adds a row of a check box and texts at the end; answers its number.
int addRow(CStandardTable &table, const QString &name, bool checked, const QStringList &texts) {
    const int row = table.addRow();
    auto *box = new CCheckBox(QString(), row);
    box->setObjectName(name);
    box->setChecked(checked);
    table.setWidget(row, 0, box, Qt::AlignCenter);
    for (int column = 0; column < texts.size(); ++column) {
        table.setText(row, column + 1, texts[column]);
    }
    return row;
}

CCheckBox *boxAt(const CStandardTable &table, int row) {
    return static_cast<CCheckBox *>(table.widgetAt(row, 0));
}

/// Checks and chooses what is not checked; whether there was any.
bool chooseAll(const CStandardTable &table, const RowsOfKeys &rows, ChosenKeys &chosen) {
    bool changed = false;
    for (const auto &[key, row] : rows) {
        CCheckBox *box = boxAt(table, row);
        if (!box->isChecked()) {
            box->setChecked(true);
            chosen.insert(key);
            changed = true;
        }
    }
    return changed;
}

void revert(const CStandardTable &table, const RowsOfKeys &rows, ChosenKeys &chosen) {
    for (const auto &[key, row] : rows) {
        CCheckBox *box = boxAt(table, row);
        box->setChecked(!box->isChecked());
        choose(chosen, key, box->isChecked());
    }
}

} // namespace

// By the user

void CRealtimeLinkageSettingDialog::selectAccount(int row, bool select) {
    chooseRow(mSelectedAccounts, mAccountRows, row, select);
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectStock(int row, bool select) {
    chooseRow(mSelectedStocks, mStockRows, row, select);
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectStrategy(int row, bool select) {
    chooseRow(mSelectedStrategys, mStrategyRows, row, select);
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectAllStock() {
    if (chooseAll(*mStockTable, mStockRows, mSelectedStocks)) {
        notifyChosen();
    }
}

void CRealtimeLinkageSettingDialog::selectAllStrategy() {
    if (chooseAll(*mStrategyTable, mStrategyRows, mSelectedStrategys)) {
        notifyChosen();
    }
}

void CRealtimeLinkageSettingDialog::selectRevertStock() {
    revert(*mStockTable, mStockRows, mSelectedStocks);
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectRevertStrategy() {
    revert(*mStrategyTable, mStrategyRows, mSelectedStrategys);
    notifyChosen();
}

// What the service knows

bool CRealtimeLinkageSettingDialog::updateAccounts() {
    mAccounts = service().getAccounts();
    return updateAccountTable();
}

bool CRealtimeLinkageSettingDialog::updateAccountTable() {
    bool added = false;
    for (const auto &account : mAccounts) {
        if (!account || mAccountRows.count(account->getKey())) {
            continue;
        }
        const std::string key = account->getKey();
        mAccountRows[key] = addRow(*mAccountTable, kAccountTable, true,
                                   {GZ::sToQs(account->mAccountId), GZ::sToQs(account->mAccountName)});
        mSelectedAccounts.insert(key);
        added = true;
    }
    return added && mIsShown;
}

bool CRealtimeLinkageSettingDialog::updateStrategys() {
    mStrategys = service().getStrategys();
    return updateStrategyTable();
}

bool CRealtimeLinkageSettingDialog::updateStrategyTable() {
    bool changed = false;
    for (const std::string &name : mStrategys) {
        if (mStrategyRows.count(name)) {
            continue;
        }
        mStrategyRows[name] = addRow(*mStrategyTable, kStrategyTable, mStrategySelectAll, {GZ::sToQs(name)});
        if (mStrategySelectAll) {
            mSelectedStrategys.insert(name);
            changed = true;
        }
    }
    return changed && mIsShown;
}

bool CRealtimeLinkageSettingDialog::updateStocks() {
    CStockManager &catalogue = CSingletonT<CStockManager>::instance();
    for (const std::string &key : service().getStocks()) {
        if (!mStocks.count(key)) {
            if (const CInstrumentDetailPtr detail = catalogue.getInstrumentDetail(GZ::sToQs(key))) {
                mStocks[key] = detail;
            }
        }
    }
    return updateStockTable();
}

bool CRealtimeLinkageSettingDialog::updateStockTable() {
    bool changed = false;
    for (const auto &[key, detail] : mStocks) {
        if (!detail || mStockRows.count(key)) {
            continue;
        }
        mStockRows[key] = addRow(*mStockTable, kStockTable, mStockSelectAll,
                                 {getDetailQsMarket(detail), getDetailQsCode(detail), getDetailQsName(detail)});
        if (mStockSelectAll) {
            mSelectedStocks.insert(key);
            changed = true;
        }
    }
    return changed && mIsShown;
}

} // namespace TC
