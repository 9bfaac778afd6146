#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace TC {

class CRealtimeGraphWidget;
class PaneView;

/// A day graph as a table to be read: a row a minute, of which the first column is its time and each other one the value
/// of a line, in the order and in the words of the title. Refers to the widgets and must not outlive them. Every call
/// reads the series anew. User-interface thread only; results may come on another thread meanwhile.
class PaneReading {
public:
    static constexpr int kTimeColumn = 0;

    /// The graph may stand anywhere below a pane; null, and one that stands in none, have no rows.
    explicit PaneReading(const CRealtimeGraphWidget *graph);

    /// Minutes that any of its series has.
    int rows() const;
    /// Heads of the columns, that of the time first.
    QStringList heads() const;
    /// Text of a row's columns; empty beyond the rows.
    QStringList row(int index) const;
    /// A row as a sentence: its time, and each line with its name. Empty beyond the rows.
    QString sentence(int index) const;
    /// The row that the cross line stands at, -1 when none is shown.
    int rowOfCrossLine() const;
    /// "分时图" with the instrument's name or a formula pane with those of its formulas, and the day.
    QString name() const;

private:
    /// A line of a series: what it is called, and its value at an index.
    struct Line {
        QString name;
        QString value;
    };
    QList<Line> lines(int index) const;

    const CRealtimeGraphWidget *mGraph;
    const PaneView *mPane; ///< null: it stands in none
};

} // namespace TC
