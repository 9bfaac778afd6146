#pragma once

#include <QString>
#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeUiParam;
class MainChart;
class PaneRow;

/// The formula of the user's own trades on the main pane. Whether it is shown is kept by the host's configuration; its
/// account is that of the view parameters.
class TradeFormula {
public:
    TradeFormula(const PaneRow &panes, MainChart &chart, boost::shared_ptr<const CRealtimeUiParam> uiParam);

    /// Shows or removes it, as the configuration says.
    void apply();
    /// Shows the trades of an account; an empty one takes the formula away, and the configuration keeps it.
    void setAccount(const QString &account);
    /// Shows the trades of the account, and with `withFormula` the formula, whatever the configuration says.
    void show(bool withFormula);
    void remove();

private:
    const PaneRow &mPanes;
    MainChart &mChart;
    boost::shared_ptr<const CRealtimeUiParam> mUiParam;
};

} // namespace TC
