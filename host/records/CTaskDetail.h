#pragma once

#include "host/Export.h"
#include "host/records/CAccountInfo.h"
#include "host/records/CCommandDetail.h"
#include "host/records/Enumerations.h"
#include "host/records/IData.h"

#include <vector>

namespace kvservice {

/// What a task item does. Values that are not named are carried unchanged.
enum class EOperationType : int { Sell = 24, BuyByAmount = 25, Buy = 23 };

/// How the orders of a task item are priced. Values that are not named are carried unchanged.
enum EPriceType : int {
    eLimitPrice = 11, ///< at a limit
};

/// One instrument's part of a task.
struct CTaskItem {
    boost::shared_ptr<CAccountInfo> mAccount;
    EOperationType mOperation = EOperationType::Buy;
    std::string mMarket;
    std::string mCode;
    int mPriceType = 0; ///< EPriceType
    double mPrice = 0.0;
    long long mQuantity = 0;
};

/// Where a task stands. Other numbers are carried unchanged.
enum ETaskStatus : int {
    eTaskWaiting = 3, ///< has not started; can be cancelled
    eTaskRunning = 4, ///< can be cancelled
    eTaskCancelled = 5,
    eTaskFinished = 8, ///< everything filled
    eTaskExpired = 10, ///< its time was over before everything was filled
};

/// One algorithmic task of the user.
class TIMESHARE_EXPORT CTaskDetail : public IData {
public:
    std::string getKey() const override { return std::to_string(mTaskId); }

    int mTaskId = 0;
    int mFlag = 0; ///< first flag; 0 on a task that can count as finished
    int mStatus = 0; ///< ETaskStatus: 3 and 4 can be cancelled, 8 and 10 are finished
    int mStartTime = TC::kUnsetTime; ///< seconds since the epoch
    int mEndTime = TC::kUnsetTime; ///< seconds since the epoch
    int mCancelTime = TC::kUnsetTime; ///< seconds since the epoch, the second end time
    std::vector<boost::shared_ptr<CTaskItem>> mItems;
    boost::shared_ptr<CCommandDetail> mCommand;
};

/// Whether a task was started before another; at the same second the lower number was. One whose start is not set is the
/// newest.
inline bool isOlder(const CTaskDetail &task, const CTaskDetail &other) {
    return task.mStartTime != other.mStartTime ? task.mStartTime < other.mStartTime
                                               : task.mTaskId < other.mTaskId;
}

} // namespace kvservice
