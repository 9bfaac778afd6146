#pragma once

#include "linkage/ChoiceTable.h"

#include <QMap>
#include <QString>

namespace GZ {
class CCheckBox;
class CGroupBox;
} // namespace GZ

namespace TC {

/// A group box with a table to choose from, under a bar that chooses all of it, inverts the choice, and lets whatever
/// comes be chosen by itself.
class ChoiceGroup {
public:
    /// Ids of the controls of the bar.
    struct Bar {
        int selectAll; ///< the check box
        int all;
        int revert;
    };

    ChoiceGroup(const QString &title, const Bar &bar, int tableId, const QList<int> &widths,
                const QString &boxName);

    /// The box, without a parent until it is placed; whoever places it owns it.
    GZ::CGroupBox *widget() const { return mGroup; }
    ChoiceTable &table() { return mTable; }
    const ChoiceTable &table() const { return mTable; }

    /// By the user, whose check box shows it already: whether whatever comes is chosen, and then all that is there as
    /// well. Whether the choice has changed.
    bool setSelectAll(bool selectAll);
    /// Puts what the check box shows into a map, and takes it over when the map holds it.
    void store(QMap<QString, bool> &kept, const QString &name) const;
    void load(const QMap<QString, bool> &kept, const QString &name);

private:
    ChoiceTable mTable;
    GZ::CCheckBox *mSelectAll;
    GZ::CGroupBox *mGroup;
};

} // namespace TC
