#include "linkage/CRealtimeDealDialog.h"

#include "linkage/RecordDialog.h"

namespace TC {
namespace {

constexpr int kDealTableId = 544;

} // namespace

CRealtimeDealDialog::CRealtimeDealDialog(QWidget *parent) : CCommonDialog(parent) {
    mTable = setUpRecordDialog(*this, tr("成交明细"), GZ::CHpfDataTable::eDeals, kDealTableId);
}

CRealtimeDealDialog::~CRealtimeDealDialog() {
    saveTableLayout(mTable);
}

void CRealtimeDealDialog::setData(const QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) {
    showRecords(mTable, deals);
}

} // namespace TC
