#include "terminal/app/ColumnDialog.h"

#include "terminal/market/ColumnChoice.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace terminal {

ColumnDialog::ColumnDialog(const QString &path, const QString &columns, QWidget *parent)
    : QDialog(parent), mPath(path), mTable(new QTableWidget(this)), mInfo(new QLabel(this)) {
    setObjectName(QStringLiteral("column_dialog"));
    setWindowTitle(tr("%1 的列").arg(QFileInfo(path).fileName()));
    setAttribute(Qt::WA_WindowPropagation); // the colours of the window, whenever they change
    mTable->setObjectName(QStringLiteral("columns"));
    mTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    mTable->verticalHeader()->hide();
    mInfo->setObjectName(QStringLiteral("column_info"));
    mInfo->setTextFormat(Qt::PlainText);
    mInfo->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    mTake = buttons->addButton(tr("确定"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("取消"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->addWidget(mTable, 1);
    column->addWidget(mInfo);
    column->addWidget(buttons);
    fillTable(previewFile(path));
    choose(columns);
    resize(760, 420);
    refresh();
}

void ColumnDialog::fillTable(const ImportPreview &preview) {
    const QStringList &headings = preview.headings.words;
    mTable->setColumnCount(headings.size());
    mTable->setHorizontalHeaderLabels(headings);
    mTable->setRowCount(preview.fields.size() + 1);
    for (int i = 0; i < headings.size(); ++i) {
        auto *roles = new QComboBox(mTable);
        roles->addItem(tr("略去"));
        for (const ColumnRole &role : columnRoles()) {
            roles->addItem(role.title, role.word);
        }
        mTable->setCellWidget(0, i, roles);
        mRoles.append(roles);
        connect(roles, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ColumnDialog::refresh);
        for (int row = 0; row < preview.fields.size(); ++row) {
            mTable->setItem(row + 1, i, new QTableWidgetItem(preview.fields[row].value(i)));
        }
    }
    mTable->resizeColumnsToContents();
}

/// Shows a choice; without one, what the headings themselves tell.
void ColumnDialog::choose(const QString &columns) {
    TableHeadings headings = previewFile(mPath).headings;
    const bool isChosen = !columns.isEmpty() && applyColumns(columns, headings).isEmpty();
    for (int i = 0; i < mRoles.size() && i < headings.words.size(); ++i) {
        const QString word = isChosen ? headings.words[i] : roleOfHeading(headings.words[i]);
        const QSignalBlocker quiet(mRoles[i]);
        mRoles[i]->setCurrentIndex(word.isEmpty() ? 0 : std::max(mRoles[i]->findData(word), 0));
    }
}

QString ColumnDialog::columns() const {
    QStringList parts;
    for (int i = 0; i < mRoles.size(); ++i) {
        const QString word = mRoles[i]->currentData().toString();
        if (!word.isEmpty()) {
            parts.append(QStringLiteral("%1=#%2").arg(word).arg(i + 1));
        }
    }
    return parts.join(QLatin1Char(','));
}

void ColumnDialog::refresh() {
    const ImportPreview preview = previewFile(mPath, columns());
    mTake->setEnabled(preview.error.isEmpty() && !columns().isEmpty());
    if (preview.error.isEmpty() && !preview.rows.isEmpty()) {
        mInfo->setText(
            tr("%1：%2").arg(kindText(preview.kind), preview.rows.first().join(QStringLiteral("  "))));
    } else {
        mInfo->setText(preview.error);
    }
}

} // namespace terminal
