#pragma once

#include "host/Export.h"
#include "host/records/COrderDetail.h"
#include "host/toolkit/CCommonDialog.h"

#include <QList>

namespace GZ {
class CHpfDataTable;
}

namespace TC {

/// The orders behind a mark, as they stood when they were set. The layout of its table outlives it in the user's
/// configuration.
class TIMESHARE_EXPORT CRealtimeOrderDialog : public GZ::CCommonDialog {
    Q_OBJECT
public:
    explicit CRealtimeOrderDialog(QWidget *parent = nullptr);
    ~CRealtimeOrderDialog() override;

    /// Replaces what is shown, in the order of the list.
    void setData(const QList<boost::shared_ptr<kvservice::COrderDetail>> &orders);

private:
    GZ::CHpfDataTable *mTable = nullptr;
};

} // namespace TC
