#pragma once

#include "host/Export.h"
#include "host/records/CDealDetail.h"
#include "host/toolkit/CCommonDialog.h"

#include <QList>

namespace GZ {
class CHpfDataTable;
}

namespace TC {

/// The deals behind a mark, as they stood when they were set. The layout of its table outlives it in the user's
/// configuration.
class TIMESHARE_EXPORT CRealtimeDealDialog : public GZ::CCommonDialog {
    Q_OBJECT
public:
    explicit CRealtimeDealDialog(QWidget *parent = nullptr);
    ~CRealtimeDealDialog() override;

    /// Replaces what is shown, in the order of the list.
    void setData(const QList<boost::shared_ptr<kvservice::CDealDetail>> &deals);

private:
    GZ::CHpfDataTable *mTable = nullptr;
};

} // namespace TC
