#include "terminal/trade/TradeTexts.h"

#include "host/records/CTaskDetail.h"
#include "terminal/market/MarketSessions.h"

#include <QCoreApplication>

namespace terminal {
namespace {

QString text(const char *source) {
    return QCoreApplication::translate("TradeTexts", source);
}

} // namespace

QString taskStatusText(int status) {
    switch (status) {
    case kvservice::eTaskWaiting:
        return text("未开始");
    case kvservice::eTaskRunning:
        return text("执行中");
    case kvservice::eTaskCancelled:
        return text("已撤销");
    case kvservice::eTaskFinished:
        return text("已完成");
    case kvservice::eTaskExpired:
        return text("已到期");
    default:
        return text("状态 %1").arg(status);
    }
}

QString priceTypeText(int priceType) {
    return priceType == kvservice::eLimitPrice ? text("限价") : text("价格类型 %1").arg(priceType);
}

QString operationText(int operation) {
    switch (static_cast<kvservice::EOperationType>(operation)) {
    case kvservice::EOperationType::Buy:
        return text("买入");
    case kvservice::EOperationType::Sell:
        return text("卖出");
    case kvservice::EOperationType::BuyByAmount:
        return text("按金额买入");
    default:
        return text("操作 %1").arg(operation);
    }
}

QString unitText(const Instrument *instrument, const QString &market) {
    if (!instrument) {
        return isFuturesMarket(market) ? text("手") : text("股");
    }
    switch (instrument->kind) {
    case InstrumentKind::Future:
        return text("手");
    case InstrumentKind::Fund:
        return text("份");
    case InstrumentKind::ConvertibleBond:
        return text("张");
    case InstrumentKind::Stock:
    case InstrumentKind::Index:
    case InstrumentKind::SectorIndex:
        return text("股");
    }
    return {};
}

} // namespace terminal
