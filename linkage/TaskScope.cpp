#include "linkage/TaskScope.h"

#include "chartdata/LinkageScope.h"
#include "host/services/CLinkageManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {
namespace {

/// Whose tasks in an instrument the view shows; false when nobody's.
bool readScope(const CRealtimeUiParam &view, const CInstrumentDetailPtr &instrument, LinkageScope &scope) {
    if (view.mLinkageFlags & eSelectedDataView) {
        scope.accounts = view.mLinkageAccounts;
        scope.strategies = view.mLinkageStrategys;
        scope.filter = view.mLinkageShow[eFilterStrategies];
        return true;
    }
    if (view.mLinkageFlags & eAccountView) {
        const bool futures = isFuturesMarket(getDetailQsMarket(instrument));
        return view.service<CLinkageManager>().getAccounts(futures ? view.mFutureAccounts : view.mStockAccounts,
                                                           scope.accounts);
    }
    return true;
}

bool isFollowed(const boost::shared_ptr<kvservice::CTaskDetail> &task, const LinkageScope &scope) {
    return task && task->mCommand && !task->mItems.empty() && task->mItems.front() &&
           task->mItems.front()->mAccount && scope.admits(task->mCommand->mStrategyName);
}

} // namespace

std::vector<kvservice::IDataPtr> followedTasks(const CRealtimeUiParam &view,
                                               const CInstrumentDetailPtr &instrument) {
    LinkageScope scope;
    if (!readScope(view, instrument, scope)) {
        return {};
    }
    std::vector<boost::shared_ptr<kvservice::CTaskDetail>> kept;
    CLinkageManager &service = view.service<CLinkageManager>();
    for (const auto &account : service.getTaskDetails(getDetailKey(instrument), scope.accounts)) {
        for (const auto &task : account.second) {
            if (isFollowed(task.second, scope)) {
                kept.push_back(task.second);
            }
        }
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const auto &task, const auto &other) { return kvservice::isOlder(*task, *other); });
    return {kept.begin(), kept.end()};
}

} // namespace TC
