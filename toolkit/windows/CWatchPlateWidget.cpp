#include "host/windows/CWatchPlateWidget.h"

#include "host/services/CStockManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/PriceDecimals.h"
#include "toolkit/windows/TransactionList.h"

#include <algorithm>
#include <utility>

namespace TC {

CWatchPlateWidget::CWatchPlateWidget(QWidget *parent) : CBaseWidget(parent), mList(new TransactionList(this)) {
    mList->setObjectName(QStringLiteral("transactions"));
}

void CWatchPlateWidget::setStock(const QString &stock) {
    mStock = stock;
    const CInstrumentDetailPtr detail =
        ServiceContext::of(this).get<CStockManager>().getInstrumentDetail(stock);
    mList->setPrices(decimals(getDetailPriceTick(detail)), getDetailLastClose(detail));
    mList->setRows({});
}

void CWatchPlateWidget::setRegionTransaction(const Records &records) {
    Records rows = records;
    rows.erase(std::remove(rows.begin(), rows.end(), nullptr), rows.end());
    mList->setRows(std::move(rows));
}

void CWatchPlateWidget::keepRegion(qint64 start, qint64 end) {
    Records rows = mList->rows();
    const auto isOutside = [=](const auto &record) { return record->mTime < start || record->mTime > end; };
    const auto kept = std::remove_if(rows.begin(), rows.end(), isOutside);
    if (kept != rows.end()) {
        rows.erase(kept, rows.end());
        mList->setRows(std::move(rows));
    }
}

int CWatchPlateWidget::rowCount() const {
    return static_cast<int>(mList->rows().size());
}

QStringList CWatchPlateWidget::rowTexts(int row) const {
    return row >= 0 && row < rowCount() ? mList->textsOf(*mList->rows()[static_cast<size_t>(row)])
                                        : QStringList();
}

void CWatchPlateWidget::onUiResourceChanged() {
    mList->applyTheme();
    CBaseWidget::onUiResourceChanged();
}

void CWatchPlateWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    mList->setGeometry(rect());
}

} // namespace TC
