#include "terminal/app/StageRankingModel.h"

#include "host/records/Enumerations.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "terminal/app/MarkedChange.h"

#include <QColor>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

QString numberText(const StageRow &row, int criterion) {
    const double value = row.figures.value(criterion);
    const auto text = [value](int decimals, int flags) {
        return GZ::formatDoubleNumber(value, decimals, flags, false, QStringLiteral("--"));
    };
    switch (criterion) {
    case eStageChange:
        return markedChange(value, text(row.decimals, utils::eFormatPlain));
    case eStageChangeRatio:
        return markedChange(value, text(2, utils::eFormatPercent));
    case eStageVolume:
        return text(value < 1e4 ? 0 : 2, utils::eFormatScaled);
    case eStageAmount:
        return value > 0.0 ? text(2, utils::eFormatScaled) : QStringLiteral("--");
    case eStageAmplitude:
        return text(2, utils::eFormatPercent);
    default:
        return text(row.decimals, utils::eFormatPlain);
    }
}

/// The colour of a number: changes by their sign, others as texts.
QVariant numberColor(const StageRow &row, int criterion) {
    const double value = row.figures.value(criterion);
    if ((criterion != eStageChange && criterion != eStageChangeRatio) || value == 0.0) {
        return {};
    }
    return GZ::themeColor(value > 0.0 ? QStringLiteral("ic_clr_index_default_rise")
                                      : QStringLiteral("ic_clr_index_default_fall"));
}

} // namespace

void StageRankingModel::setRows(QVector<StageRow> rows) {
    beginResetModel();
    mRows = std::move(rows);
    endResetModel();
}

int StageRankingModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : mRows.size();
}

int StageRankingModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : eFirstNumber + kStageCriteria;
}

QVariant StageRankingModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= mRows.size()) {
        return {};
    }
    const StageRow &row = mRows[index.row()];
    const int criterion = index.column() - eFirstNumber;
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == eKey    ? row.key
               : index.column() == eName ? row.name
                                         : numberText(row, criterion);
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignVCenter | (criterion < 0 ? Qt::AlignLeft : Qt::AlignRight));
    case Qt::ForegroundRole:
        return criterion < 0 ? QVariant() : numberColor(row, criterion);
    default:
        return {};
    }
}

QVariant StageRankingModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant(); // the rank
    }
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>(Qt::AlignVCenter | (section < eFirstNumber ? Qt::AlignLeft : Qt::AlignRight));
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case eKey:
        return tr("代码");
    case eName:
        return tr("名称");
    case eFirstNumber + eStageHigh:
        return tr("最高");
    case eFirstNumber + eStageLow:
        return tr("最低");
    case eFirstNumber + eStageVolume:
        return tr("成交量");
    case eFirstNumber + eStageChange:
        return tr("涨跌");
    case eFirstNumber + eStageChangeRatio:
        return tr("涨幅");
    case eFirstNumber + eStageAmount:
        return tr("成交额");
    case eFirstNumber + eStageAmplitude:
        return tr("振幅");
    case eFirstNumber + eStageAverage:
        return tr("平均价");
    default:
        return {};
    }
}

void StageRankingModel::sort(int column, Qt::SortOrder order) {
    if (column < 0) {
        return;
    }
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList(); // as that of the selected row
    QStringList keys;
    for (const QModelIndex &index : before) {
        keys.append(mRows[index.row()].key);
    }
    if (column >= eFirstNumber) {
        rankStage(mRows, column - eFirstNumber);
    } else {
        std::stable_sort(mRows.begin(), mRows.end(), [column](const StageRow &a, const StageRow &b) {
            return column == eKey ? a.key > b.key : a.name > b.name;
        });
    }
    if (order == Qt::AscendingOrder) {
        std::reverse(mRows.begin(), mRows.end());
    }
    QHash<QString, int> places;
    for (int i = 0; i < mRows.size(); ++i) {
        places[mRows[i].key] = i;
    }
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i) {
        after.append(index(places[keys[i]], before[i].column()));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

} // namespace terminal
