#pragma once

#include <QList>
#include <QString>
#include <boost/shared_ptr.hpp>

namespace TC {

class ServiceContext;

class CRealtimeUiParam;
class PaneRow;

/// The formulas of the main pane: the chart itself, of which there is one, and at most one formula attached to it by the
/// user. Nothing here requests.
class MainChart {
public:
    MainChart(const PaneRow &panes, boost::shared_ptr<CRealtimeUiParam> uiParam);

    bool has(const QString &formula) const;
    /// The services of the view.
    const ServiceContext &services() const;
    void add(const QString &formula);
    void remove(const QString &formula); ///< nothing when it is not there

    /// The formulas that the view parameters name for the kind of instrument.
    void addMainFormulas();
    void removeMainFormulas(const QList<QString> &names);
    /// Shows the indicative net value of a fund that publishes one, and of no other instrument.
    void applyNetValue();

    /// Puts a formula in the place of the chart.
    void replaceBy(const QString &formula);
    /// The ordinary chart comes back when nothing else stands on the pane; answers whether it did.
    bool restoreOrdinary();
    /// Attaches a formula in the place of the one attached before.
    void attach(const QString &formula);
    /// Attaches it, or takes it off again. Answers whether the pane has something new to show.
    bool toggleAttached(const QString &formula);
    /// Attaches it; one that is attached already starts anew.
    void attachAnew(const QString &formula);

private:
    const PaneRow &mPanes;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
};

} // namespace TC
