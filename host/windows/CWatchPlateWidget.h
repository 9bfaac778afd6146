#pragma once

#include "host/Export.h"
#include "host/records/Quotes.h"
#include "host/toolkit/CBaseWidget.h"

#include <QString>

#include <memory>
#include <vector>

namespace TC {

class TransactionList;

/// Lists transactions of an instrument: time, price, volume and amount. Without any it says so.
class TIMESHARE_EXPORT CWatchPlateWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    using Records = std::vector<std::shared_ptr<quoter::QuoterBase>>;

    explicit CWatchPlateWidget(QWidget *parent = nullptr);

    /// Takes the instrument whose transactions come from now on, by its key: prices are written with its decimals and
    /// coloured against its last close. Those of the former instrument go.
    void setStock(const QString &stock);
    const QString &stock() const { return mStock; }
    /// Replaces what is listed by these, in their order. Null records are left out; of a record that is no
    /// quoter::QuoterTransaction, time and price are known.
    void setRegionTransaction(const Records &records);
    /// Takes out those that lie before `start` or after `end`, in milliseconds since the epoch.
    void keepRegion(qint64 start, qint64 end);

    int rowCount() const;
    /// What a row reads, from left to right; empty beyond the rows.
    QStringList rowTexts(int row) const;

    void onUiResourceChanged() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QString mStock;
    TransactionList *mList;
};

} // namespace TC
