#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <map>
#include <set>
#include <string>
#include <vector>

class QWidget;

namespace GZ {
class CStandardTable;
}

namespace TC {

/// A table of things with a check box each, and the keys of those that are chosen. Rows are only ever added, one for
/// each key, and never move. A box is made when its row comes near to what is seen.
class ChoiceTable {
public:
    /// A row that is to come: the key of the thing, and what is shown of it.
    struct Row {
        std::string key;
        QStringList texts;
    };

    /// `widths` are those of the columns, the first of which is that of the boxes. Their object name tells the table in
    /// their events, and their id the row.
    ChoiceTable(int id, const QList<int> &widths, QString boxName);
    ChoiceTable(const ChoiceTable &) = delete;
    ChoiceTable &operator=(const ChoiceTable &) = delete;

    /// The table, without a parent until it is placed; whoever places it owns it.
    GZ::CStandardTable *widget() const { return mTable; }
    const QString &boxName() const { return mBoxName; }

    bool has(const std::string &key) const { return mRowOfKey.count(key) > 0; }
    const std::set<std::string> &chosen() const { return mChosen; }

    /// Whether rows start chosen; they do not unless told.
    void setStartsChosen(bool chosen) { mStartsChosen = chosen; }
    bool startsChosen() const { return mStartsChosen; }
    /// Adds rows at the end; those of keys that have one are left out. Whether any came.
    bool add(const std::vector<Row> &rows);
    /// Chooses a row or takes the choice back, as its box shows already; a row that is not there changes nothing.
    void select(int row, bool wanted);
    /// Checks and chooses every row whose box is not checked; whether there was any.
    bool selectAll();
    /// Turns every box, and the choice with it.
    void revert();

private:
    QWidget *makeBox(int row);
    void check(int row, bool checked);
    void choose(int row, bool wanted);
    int rows() const { return static_cast<int>(mKeys.size()); }

    GZ::CStandardTable *mTable;
    QString mBoxName;
    bool mStartsChosen = false;
    std::vector<std::string> mKeys; ///< by row
    std::vector<bool> mChecked; ///< what the boxes show, by row
    std::map<std::string, int> mRowOfKey;
    std::set<std::string> mChosen;
};

} // namespace TC
