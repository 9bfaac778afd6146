#pragma once

#include "chartdata/LinkageGeometry.h"
#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/records/CTaskDetail.h"

#include <QList>
#include <QPoint>
#include <boost/shared_ptr.hpp>

#include <map>
#include <string>
#include <utility>

namespace TC {

/// Where the records of one kind were drawn, by pixel, so that the mouse finds them again. At one point a key stands for
/// one record: the last one entered.
template <class Record> class MarkMap {
public:
    using Pointer = boost::shared_ptr<Record>;

    void clear() { mColumns.clear(); }
    void enter(const QPoint &at, const Pointer &record) { mColumns[at.x()][at.y()][record->getKey()] = record; }
    /// The same with an entry of a map of records, which moves: copies of thousands would take longer than drawing
    /// them. What it is keyed by does not count.
    template <class Entry> void enterNode(const QPoint &at, Entry entry) {
        entry.key() = entry.mapped()->getKey();
        auto entered = mColumns[at.x()][at.y()].insert(std::move(entry));
        if (!entered.inserted) {
            entered.position->second = std::move(entered.node.mapped());
        }
    }
    /// Whether a record stands in a box.
    bool any(const HitBox &box) const {
        return anyRow(box, [](const Records &records) { return !records.empty(); });
    }
    /// Adds the records in a box, column by column and row by row; true when the list has any then.
    bool list(const HitBox &box, QList<Pointer> &records) const {
        anyRow(box, [&records](const Records &row) {
            for (const auto &record : row) {
                records.append(record.second);
            }
            return false;
        });
        return !records.isEmpty();
    }

private:
    using Records = std::map<std::string, Pointer>;

    /// Calls `visit` with every row in a box until it answers true; true when it did.
    template <class Visit> bool anyRow(const HitBox &box, Visit visit) const {
        for (auto column = mColumns.lower_bound(box.left);
             column != mColumns.end() && column->first <= box.right; ++column) {
            const auto &rows = column->second;
            for (auto row = rows.lower_bound(box.top); row != rows.end() && row->first <= box.bottom; ++row) {
                if (visit(row->second)) {
                    return true;
                }
            }
        }
        return false;
    }

    std::map<int, std::map<int, Records>> mColumns; ///< x, y, key
};

/// The marks of the user's trades on a chart: what is in its picture, and nothing else.
struct MarkBook {
    MarkMap<kvservice::COrderDetail> orders;
    MarkMap<kvservice::CDealDetail> deals;
    MarkMap<kvservice::CTaskDetail> tasks;

    void clear() {
        orders.clear();
        deals.clear();
        tasks.clear();
    }
};

} // namespace TC
