#include "toolkit/widgets/TableCell.h"

#include <QString>
#include <QVariant>

namespace GZ {

bool sortsBefore(const QTableWidgetItem *a, const QTableWidgetItem *b) {
    if (!a || !b) {
        return !a && b;
    }
    const QVariant left = a->data(eSortValue);
    const QVariant right = b->data(eSortValue);
    if (left.isValid() && right.isValid()) {
        return left.toDouble() < right.toDouble();
    }
    if (left.isValid() != right.isValid()) {
        return left.isValid();
    }
    return QString::localeAwareCompare(a->text(), b->text()) < 0;
}

} // namespace GZ
