#include "terminal/trade/TradeTexts.h"

#include "host/records/CTaskDetail.h"
#include "terminal/market/MarketSessions.h"

#include <QCoreApplication>

namespace terminal {
namespace {

struct TradeWords {
    Q_DECLARE_TR_FUNCTIONS(TradeTexts)
};

} // namespace

QString taskStatusText(int status) {
    switch (status) {
    case kvservice::eTaskWaiting:
        return TradeWords::tr("未开始");
    case kvservice::eTaskRunning:
        return TradeWords::tr("执行中");
    case kvservice::eTaskCancelled:
        return TradeWords::tr("已撤销");
    case kvservice::eTaskFinished:
        return TradeWords::tr("已完成");
    case kvservice::eTaskExpired:
        return TradeWords::tr("已到期");
    default:
        return TradeWords::tr("状态 %1").arg(status);
    }
}

QString priceTypeText(int priceType) {
    return priceType == kvservice::eLimitPrice ? TradeWords::tr("限价")
                                               : TradeWords::tr("价格类型 %1").arg(priceType);
}

QString operationText(int operation) {
    switch (static_cast<kvservice::EOperationType>(operation)) {
    case kvservice::EOperationType::Buy:
        return TradeWords::tr("买入");
    case kvservice::EOperationType::Sell:
        return TradeWords::tr("卖出");
    case kvservice::EOperationType::BuyByAmount:
        return TradeWords::tr("按金额买入");
    default:
        return TradeWords::tr("操作 %1").arg(operation);
    }
}

QString unitText(const Instrument *instrument, const QString &market) {
    if (!instrument) {
        return isFuturesMarket(market) ? TradeWords::tr("手") : TradeWords::tr("股");
    }
    switch (instrument->kind) {
    case InstrumentKind::Future:
        return TradeWords::tr("手");
    case InstrumentKind::Fund:
        return TradeWords::tr("份");
    case InstrumentKind::ConvertibleBond:
        return TradeWords::tr("张");
    case InstrumentKind::Stock:
    case InstrumentKind::Index:
    case InstrumentKind::SectorIndex:
        return TradeWords::tr("股");
    }
    return {};
}

} // namespace terminal
