#include "linkage/CRealtimeOrderDialog.h"

#include "linkage/RecordDialog.h"

namespace TC {
namespace {

constexpr int kOrderTableId = 542;

} // namespace

CRealtimeOrderDialog::CRealtimeOrderDialog(QWidget *parent) : CCommonDialog(parent) {
    mTable = setUpRecordDialog(*this, tr("委托明细"), GZ::CHpfDataTable::eOrders, kOrderTableId);
}

CRealtimeOrderDialog::~CRealtimeOrderDialog() {
    saveTableLayout(mTable);
}

void CRealtimeOrderDialog::setData(const QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) {
    showRecords(mTable, orders);
}

} // namespace TC
