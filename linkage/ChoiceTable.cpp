#include "linkage/ChoiceTable.h"

#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CStandardTable.h"

#include <utility>

namespace TC {

using GZ::CCheckBox;
using GZ::CStandardTable;

ChoiceTable::ChoiceTable(int id, const QList<int> &widths, QString boxName)
    : mTable(new CStandardTable(id, CStandardTable::eWholeMenu)), mBoxName(std::move(boxName)) {
    mTable->setFlag(CStandardTable::eFocus, false);
    mTable->setFlag(CStandardTable::eSort, false);
    mTable->setAutoAdjust(false);
    mTable->setHeaderHeight(0);
    QStringList headers;
    for (int column = 0; column < widths.size(); ++column) {
        headers.append(QString());
    }
    mTable->setHeaders(headers);
    for (int column = 0; column < widths.size(); ++column) {
        mTable->setDefaultWidth(column, widths[column]);
    }
    mTable->setWidgetMaker(0, [this](int row) { return makeBox(row); });
}

QWidget *ChoiceTable::makeBox(int row) {
    if (row >= rows()) {
        return nullptr;
    }
    auto *box = new CCheckBox(QString(), row);
    box->setObjectName(mBoxName);
    box->setChecked(mChecked[row]);
    QObject::connect(box, &CCheckBox::toggled, box, [this, row](bool checked) { mChecked[row] = checked; });
    return box;
}

void ChoiceTable::check(int row, bool checked) {
    mChecked[row] = checked;
    if (auto *box = static_cast<CCheckBox *>(mTable->madeWidgetAt(row, 0))) {
        box->setChecked(checked);
    }
}

bool ChoiceTable::add(const std::vector<Row> &rows) {
    std::vector<const Row *> added;
    for (const Row &row : rows) {
        if (mRowOfKey.emplace(row.key, static_cast<int>(mKeys.size())).second) {
            mKeys.push_back(row.key);
            mChecked.push_back(mStartsChosen);
            added.push_back(&row);
        }
    }
    int row = mTable->addRows(static_cast<int>(added.size()));
    for (const Row *one : added) {
        for (int column = 0; column < one->texts.size(); ++column) {
            mTable->setText(row, column + 1, one->texts[column]);
        }
        if (mStartsChosen) {
            mChosen.insert(one->key);
        }
        ++row;
    }
    mTable->makeWidgets();
    return !added.empty();
}

void ChoiceTable::choose(int row, bool wanted) {
    if (wanted) {
        mChosen.insert(mKeys[row]);
    } else {
        mChosen.erase(mKeys[row]);
    }
}

void ChoiceTable::select(int row, bool wanted) {
    if (row >= 0 && row < rows()) {
        choose(row, wanted);
    }
}

bool ChoiceTable::selectAll() {
    bool changed = false;
    for (int row = 0; row < rows(); ++row) {
        if (!mChecked[row]) {
            check(row, true);
            choose(row, true);
            changed = true;
        }
    }
    return changed;
}

void ChoiceTable::revert() {
    for (int row = 0; row < rows(); ++row) {
        check(row, !mChecked[row]);
        choose(row, mChecked[row]);
    }
}

} // namespace TC
