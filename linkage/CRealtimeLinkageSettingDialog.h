#pragma once

#include "host/Export.h"
#include "host/records/CAccountInfo.h"
#include "host/records/CInstrumentDetail.h"
#include "host/toolkit/CCommonDialog.h"
#include "linkage/ChoiceGroup.h"
#include "linkage/KindChoice.h"
#include "linkage/SlotBond.h"
#include "linkage/TradeImport.h"

#include <QMap>
#include <QString>
#include <boost/shared_ptr.hpp>
#include <boost/signals2/connection.hpp>

#include <array>
#include <atomic>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QTimer;
class QWidget;

namespace GZ {
class CPushButton;
class CWidgetList;
} // namespace GZ

namespace TC {

class CLinkageManager;
class CMessageTipWidget;

/// The dialog in which the user chooses which of his trades a chart shows: the kinds of marks and curves, and for which
/// accounts, strategies and instruments. Orders and deals from outside are imported here as well. It tells its parent
/// by events: 3161 when the choice has changed, 3163 when the data have, 3162 when it closes.
///
/// Not modal, of a fixed size, and hidden rather than destroyed. It follows the trade service once a second, whether it
/// is shown or not; rows are only ever added.
class TIMESHARE_EXPORT CRealtimeLinkageSettingDialog : public GZ::CCommonDialog {
    Q_OBJECT
public:
    using ShowFlags = KindChoice::Flags; ///< by ELinkageShow

    explicit CRealtimeLinkageSettingDialog(QWidget *parent);
    ~CRealtimeLinkageSettingDialog() override;

    /// What is checked, by ten names: those of the kinds, "seebystrategy", "stockselectall", "strategyselectall".
    QMap<QString, bool> param() const;
    /// Takes over what the map holds of these. "seebystrategy" is read the other way round than param() writes it: true
    /// picks the button that shows all. It changes neither what is shown nor what a calculator does.
    void setParam(const QMap<QString, bool> &param);

    const ShowFlags &showFlags() const { return mKinds.flags(); }
    /// Keys of what is checked.
    std::set<std::string> getAccounts() const { return mAccountTable.chosen(); }
    std::set<std::string> getStrategys() const { return mStrategyChoice.table().chosen(); }
    std::set<std::string> getStocks() const { return mStockChoice.table().chosen(); }

    bool handleEvent(int event, int sub, int param, QString text, void *data) override;

public Q_SLOTS:
    /// Takes over what the service has told since the last time.
    void slotTimeout();
    /// The end of a read of the file reader, this dialog's or another one's.
    void slotImportFinished(int seq, bool bSuccess, QString qsMsg);
    /// Comes back from the small tip.
    void slotMouseDoubleClick();

protected:
    void createUi();

    // Import. The handlers take one line each on a thread of the reader and always answer 2; they need no dialog, which
    // may have gone by then.
    void importOrder();
    void importDeal();
    static int handleImportOrder(const QString &line, const QString &separator);
    static int handleImportDeal(const QString &line, const QString &separator);
    void clearImportData();

    // By the user: `row` is of the table.
    void selectAccount(int row, bool select);
    void selectStock(int row, bool select);
    void selectStrategy(int row, bool select);
    void selectAllStock();
    void selectAllStrategy();
    void selectRevertStock();
    void selectRevertStrategy();

    // What the service knows. True when the choice has changed while the dialog is open.
    bool updateAccounts();
    bool updateAccountTable();
    bool updateStocks();
    bool updateStockTable();
    bool updateStrategys();
    bool updateStrategyTable();

    // What the service tells, on any thread.
    void onNewTradingDay(const std::string &day);
    void onUpdateAccounts();
    void onUpdateDatas();
    void onUpdateStocks();
    void onUpdateStrategys();

    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    GZ::CWidgetList *createBody();
    void connectService();

    void handleButton(int id);
    void handleCheckBox(int id, bool checked, const QString &table);
    void seeByStrategy(bool byStrategy);
    void minimise();
    void notifyChosen();
    void deliver(int event);

    CLinkageManager &mLinkage;
    QTimer *mTimer;
    bool mIsShown = false;
    KindChoice mKinds;
    TradeImport mImport;
    ChoiceTable mAccountTable;
    ChoiceGroup mStrategyChoice;
    ChoiceGroup mStockChoice;
    GZ::CPushButton *mMinButton = nullptr;
    CMessageTipWidget *mMessageTip = nullptr; ///< from the first minimising on

    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> mAccounts; ///< as the service last gave them
    std::set<std::string> mStrategys;
    std::map<std::string, CInstrumentDetailPtr> mStocks; ///< only grows

    std::atomic<bool> mNewTradingDay{false}; ///< nothing changes with the day
    std::atomic<bool> mAccountsDirty{true};
    std::atomic<bool> mStrategysDirty{true};
    std::atomic<bool> mStocksDirty{true};
    std::atomic<bool> mDatasDirty{true};
    std::shared_ptr<SlotBond<CRealtimeLinkageSettingDialog>> mBond;
    std::array<boost::signals2::scoped_connection, 5> mConnections;
};

} // namespace TC
