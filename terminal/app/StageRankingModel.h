#pragma once

#include "terminal/market/StageRanking.h"

#include <QAbstractTableModel>
#include <QVector>

namespace terminal {

/// The rows of a ranking as a table: key, name and the eight numbers.
class StageRankingModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum EColumn : int { eKey = 0, eName = 1, eFirstNumber = 2 }; ///< the criteria follow in their order

    explicit StageRankingModel(QObject *parent = nullptr) : QAbstractTableModel(parent) {}

    void setRows(QVector<StageRow> rows);
    const StageRow &row(int number) const { return mRows[number]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// A negative column changes nothing.
    void sort(int column, Qt::SortOrder order) override;

private:
    QVector<StageRow> mRows;
};

} // namespace terminal
