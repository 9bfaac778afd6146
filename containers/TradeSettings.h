#pragma once

#include <QMap>
#include <QString>
#include <boost/shared_ptr.hpp>

class QWidget;

namespace TC {

class CRealtimeLinkageSettingDialog;
class CRealtimeUiParam;
class PaneRow;

/// Which of the user's trades are shown on the chart, as the settings dialog has it. The dialog governs from the moment it
/// is opened until it is closed; it is made when it is first opened.
class TradeSettings {
public:
    TradeSettings(QWidget *view, const PaneRow &panes, boost::shared_ptr<CRealtimeUiParam> uiParam);
    ~TradeSettings();
    TradeSettings(const TradeSettings &) = delete;
    TradeSettings &operator=(const TradeSettings &) = delete;

    /// Opens the dialog, or brings it forward; from now on it governs.
    void show();
    /// Takes the choice of the dialog over, as long as it governs.
    void takeChoice();
    /// The dialog governs no longer.
    void close();
    /// Shows the trades anew, unless the view has none.
    void refresh();

    /// What is checked, by name; what the dialog begins with when there is none yet.
    QMap<QString, bool> setting() const;
    /// What the dialog begins with when it is made; a dialog that is there stays as it is.
    void preset(const QString &name, bool checked);
    /// Checks it in the dialog; without one nothing is kept.
    void load(const QMap<QString, bool> &setting);

private:
    void repaintMain();

    QWidget *mView;
    const PaneRow &mPanes;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    CRealtimeLinkageSettingDialog *mDialog = nullptr;
    QMap<QString, bool> mSetting; ///< what the dialog begins with
};

} // namespace TC
