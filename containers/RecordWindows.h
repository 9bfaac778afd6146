#pragma once

#include <QString>
#include <boost/shared_ptr.hpp>

class QWidget;

namespace TC {

class CRealtimeData;
class CRealtimeDealDialog;
class CRealtimeOrderDialog;
class CRealtimeTaskTableDialog;
class CRealtimeUiParam;

/// The dialogs of the orders, deals and tasks behind a mark, of which one at a time is open. Each is made when it is first
/// needed.
class RecordWindows {
public:
    RecordWindows(QWidget *view, boost::shared_ptr<CRealtimeUiParam> uiParam);
    ~RecordWindows();
    RecordWindows(const RecordWindows &) = delete;
    RecordWindows &operator=(const RecordWindows &) = delete;

    /// Opens the dialog of a kind, "linkage_orders", "linkage_deals" or "linkage_tasks", with the records of some data at a
    /// point of its graph, and hides the others; when there are none nothing changes. With the user's quick cancel, or
    /// without a configuration of the user, tasks are cancelled at once instead.
    void show(const CRealtimeData &data, const QString &kind, int x, int y);
    void hide();
    /// As the view goes.
    void deleteAll();

private:
    void showOrders(const CRealtimeData &data, int x, int y);
    void showDeals(const CRealtimeData &data, int x, int y);
    void showTasks(const CRealtimeData &data, int x, int y);
    void hideAllBut(const QWidget *shown);

    QWidget *mView;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    CRealtimeOrderDialog *mOrders = nullptr;
    CRealtimeDealDialog *mDeals = nullptr;
    CRealtimeTaskTableDialog *mTasks = nullptr;
};

} // namespace TC
