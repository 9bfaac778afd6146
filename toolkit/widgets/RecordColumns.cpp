#include "toolkit/widgets/RecordColumns.h"

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CHpfDataTable.h"
#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"

#include <QCoreApplication>

#include <cmath>

namespace GZ {
namespace {

using kvservice::CDealDetail;
using kvservice::COrderDetail;
using kvservice::IData;

constexpr int kText = Qt::AlignCenter;
constexpr int kNumber = Qt::AlignRight | Qt::AlignVCenter;
constexpr int kAmountDecimals = 2;

struct RecordWords {
    Q_DECLARE_TR_FUNCTIONS(GZ::CHpfDataTable)
};

using Stocks = TC::CStockManager;

TC::CInstrumentDetailPtr instrumentOf(const std::string &key, Stocks &stocks) {
    return stocks.getInstrumentDetail(sToQs(key));
}

RecordCell numberCell(double number, int decimals) {
    const QString text = formatDoubleNumber(number, decimals, utils::eFormatPlain, true, QStringLiteral("--"));
    return {text, std::isfinite(number) ? QVariant(number) : QVariant(), {}};
}

/// "hhmmss" is told as "hh:mm:ss"; any other text stays.
QString clockText(const std::string &time) {
    const QString text = sToQs(time);
    const QTime read = QTime::fromString(text, QStringLiteral("hhmmss"));
    return read.isValid() ? read.toString(QStringLiteral("hh:mm:ss")) : text;
}

/// What a futures order does to a position, by the exchanges' offset flags; empty for shares.
QString offsetText(int offset) {
    switch (offset) {
    case 48:
        return RecordWords::tr("开仓");
    case 49:
        return RecordWords::tr("平仓");
    case 51:
        return RecordWords::tr("平今");
    case 52:
        return RecordWords::tr("平昨");
    default:
        return {};
    }
}

QString statusText(const COrderDetail &order) {
    switch (order.mStatus) {
    case kvservice::eOrderReported:
        return RecordWords::tr("已报");
    case kvservice::eOrderPartlyFilled:
        return RecordWords::tr("部成");
    case kvservice::eOrderFilled:
        return RecordWords::tr("已成");
    case kvservice::eOrderCancelled:
        return order.mTradedVolume > 0 ? RecordWords::tr("部成已撤") : RecordWords::tr("已撤");
    case kvservice::eOrderRejected:
        return RecordWords::tr("废单");
    default:
        return RecordWords::tr("状态 %1").arg(order.mStatus);
    }
}

// Cells that orders and deals have alike.

template <class Record> const Record &as(const IData &record) {
    return static_cast<const Record &>(record);
}

template <class Record> RecordCell timeCell(const IData &record, Stocks &) {
    return {clockText(as<Record>(record).mTime), {}, {}};
}

template <class Record> RecordCell accountCell(const IData &record, Stocks &) {
    return {sToQs(as<Record>(record).mAccount), {}, {}};
}

template <class Record> RecordCell codeCell(const IData &record, Stocks &stocks) {
    const std::string &key = as<Record>(record).mStockKey;
    const TC::CInstrumentDetailPtr instrument = instrumentOf(key, stocks);
    return {instrument ? TC::getDetailQsCode(instrument) : sToQs(key), {}, {}};
}

template <class Record> RecordCell nameCell(const IData &record, Stocks &stocks) {
    return {TC::getDetailQsName(instrumentOf(as<Record>(record).mStockKey, stocks)), {}, {}};
}

template <class Record> RecordCell sideCell(const IData &record, Stocks &) {
    const Record &trade = as<Record>(record);
    const bool buys = kvservice::isBuyByDirection(trade.mDirection, trade.mOffsetFlag);
    return {(buys ? RecordWords::tr("买入") : RecordWords::tr("卖出")) + offsetText(trade.mOffsetFlag),
            {},
            buys ? QStringLiteral("ic_clr_index_default_rise") : QStringLiteral("ic_clr_index_default_fall")};
}

template <class Record> RecordCell priceCell(const IData &record, Stocks &stocks) {
    const TC::CInstrumentDetailPtr instrument = instrumentOf(as<Record>(record).mStockKey, stocks);
    const double tick = instrument ? TC::getDetailPriceTick(instrument) : TC::kUnsetValue;
    return numberCell(as<Record>(record).mPrice, TC::decimals(tick));
}

template <class Record> RecordCell volumeCell(const IData &record, Stocks &) {
    return numberCell(as<Record>(record).mVolume, 0);
}

template <class Record> RecordCell contractCell(const IData &record, Stocks &) {
    return {sToQs(as<Record>(record).mContractNo), {}, {}};
}

template <class Record> RecordCell strategyCell(const IData &record, Stocks &) {
    const Record &trade = as<Record>(record);
    return {trade.mCommand ? sToQs(trade.mCommand->mStrategyName) : QString(), {}, {}};
}

// Cells of one kind.

RecordCell tradedCell(const IData &record, Stocks &) {
    return numberCell(as<COrderDetail>(record).mTradedVolume, 0);
}

RecordCell statusCell(const IData &record, Stocks &) {
    return {statusText(as<COrderDetail>(record)), {}, {}};
}

RecordCell dateCell(const IData &record, Stocks &) {
    const QString text = sToQs(as<COrderDetail>(record).mDate);
    const QDate date = QDate::fromString(text, QStringLiteral("yyyyMMdd"));
    return {date.isValid() ? date.toString(Qt::ISODate) : text, {}, {}};
}

RecordCell amountCell(const IData &record, Stocks &) {
    return numberCell(as<CDealDetail>(record).mAmount, kAmountDecimals);
}

RecordCell keyCell(const IData &record, Stocks &) {
    return {sToQs(record.getKey()), {}, {}};
}

QVector<RecordColumn> orderColumns() {
    return {
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "委托时间"), kText, timeCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "资金账号"), kText, accountCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "证券代码"), kText, codeCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "证券名称"), kText, nameCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "买卖方向"), kText, sideCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "委托价格"), kNumber, priceCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "委托数量"), kNumber, volumeCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "成交数量"), kNumber, tradedCell},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "委托状态"), kText, statusCell},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "交易策略"), kText, strategyCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "合同编号"), kText, contractCell<COrderDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "委托日期"), kText, dateCell},
    };
}

QVector<RecordColumn> dealColumns() {
    return {
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "成交时间"), kText, timeCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "资金账号"), kText, accountCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "证券代码"), kText, codeCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "证券名称"), kText, nameCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "买卖方向"), kText, sideCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "成交价格"), kNumber, priceCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "成交数量"), kNumber, volumeCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "成交金额"), kNumber, amountCell},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "交易策略"), kText, strategyCell<CDealDetail>},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "成交编号"), kText, keyCell},
        {QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "合同编号"), kText, contractCell<CDealDetail>},
    };
}

} // namespace

QVector<RecordColumn> recordColumns(int type) {
    switch (type) {
    case CHpfDataTable::eOrders:
        return orderColumns();
    case CHpfDataTable::eDeals:
        return dealColumns();
    default:
        return {{QT_TRANSLATE_NOOP("GZ::CHpfDataTable", "编号"), kText, keyCell}};
    }
}

QString RecordColumn::heading() const {
    return RecordWords::tr(name);
}

bool isRecordOf(int type, const IData &record) {
    switch (type) {
    case CHpfDataTable::eOrders:
        return dynamic_cast<const COrderDetail *>(&record);
    case CHpfDataTable::eDeals:
        return dynamic_cast<const CDealDetail *>(&record);
    default:
        return true;
    }
}

} // namespace GZ
