#include "host/services/CLinkageManager.h"

namespace kvservice {
namespace {

constexpr int kBuyDirection = 48; ///< 49 sells

} // namespace

bool isBuyByDirection(int direction, int) {
    return direction == kBuyDirection;
}

bool DataHelper::isBuy(EOperationType operation) {
    return operation == EOperationType::Buy || operation == EOperationType::BuyByAmount;
}

} // namespace kvservice
