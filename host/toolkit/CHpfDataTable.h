#pragma once

#include "host/Export.h"
#include "host/records/IData.h"
#include "host/toolkit/COddEvenRowTable.h"

namespace GZ {

/// A table of records of the trade service, a row for each. Its type chooses the columns: those of a type that it does
/// not know are the key of the record alone.
class TIMESHARE_EXPORT CHpfDataTable : public COddEvenRowTable {
    Q_OBJECT
public:
    enum EType : int {
        eDeals = 17, ///< of kvservice::CDealDetail
        eOrders = 19, ///< of kvservice::COrderDetail
    };

    /// `fixedOrder` keeps the rows in the order in which they come, whatever heading is clicked.
    CHpfDataTable(int type, int id, QWidget *parent, bool fixedOrder);

    /// Shows a record: in a new row at the end, or, unless `append`, in the row of the record with its key when there is
    /// one. Null, and a record of another kind than the table's, is left out.
    void updateData(const boost::shared_ptr<kvservice::IData> &record, bool append);

private:
    int rowOf(const QString &key) const; ///< -1 when there is none

    int mType;
};

} // namespace GZ
