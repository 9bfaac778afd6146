#pragma once

#include "terminal/market/ImportPreview.h"

#include <QDialog>
#include <QVector>

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace terminal {

/// Asks which column of a file is what: the file's own headings and first rows, over each column what it is, and beneath
/// what the file then says.
class ColumnDialog : public QDialog {
    Q_OBJECT
public:
    /// `columns` is what has been chosen before, see ColumnChoice; without it the headings that are known count.
    ColumnDialog(const QString &path, const QString &columns, QWidget *parent);

    /// What is chosen, as ColumnChoice reads it.
    QString columns() const;

private:
    void fillTable(const ImportPreview &preview);
    void choose(const QString &columns);
    void refresh();

    const QString mPath;
    QVector<QComboBox *> mRoles; ///< by column
    QTableWidget *mTable;
    QLabel *mInfo;
    QPushButton *mTake;
};

} // namespace terminal
