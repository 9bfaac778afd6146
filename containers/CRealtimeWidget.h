#pragma once

#include "containers/PaneView.h"
#include "host/Export.h"
#include "host/services/CFormulaManager.h"
#include "host/toolkit/Events.h"

#include <QStringList>

#include <optional>

namespace TC {

class ModelRun;

/// One pane of a view: a title strip, and beneath it a row of one to six day graphs between two axis strips, with
/// a cross line over it all. The oldest day is at the left. It holds no market data: every graph has its own data
/// object, and all graphs of a pane are drawn on one scale per formula. User-interface thread only.
///
/// How it is built, and what of it is seen, is PaneView's; here is what it requests, which instrument and formulas it
/// shows, and what it does with the events of its graphs.
class TIMESHARE_EXPORT CRealtimeWidget : public PaneView {
    Q_OBJECT
public:
    /// `id` is the first argument of the events that this pane delivers.
    CRealtimeWidget(int id, boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                    EIndexViewType viewType, QWidget *parent);
    ~CRealtimeWidget() override;

    int getId() const;

    // Data and requests

    /// Asks for all days. A sub pane that was told not to start by itself holds the request, and a model among its
    /// formulas then waits for the run button.
    void request(corvane::ERunMode mode);
    /// The same in one blocking call per day. Only in a view of a past day.
    void syncRequest(corvane::ERunMode mode);
    void unrequest();
    /// Empties title and data; the graphs stay.
    void clear();
    bool hasData() const;
    bool hasPythonIndex() const;
    bool hasGroupModelIndex() const;
    /// Takes in a model's result that the host pushes without a request.
    void minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                     const QString &stock, const QString &formula, int dataType);
    /// Whether a model runs without a click on the run button. Sub panes only.
    void setAutoIndex(bool automatic);
    /// Holds the next request back until it is clear whether a model may run. Sub panes only.
    void setIsLoginInit(bool init);
    /// Eleven figures of a stretch of axis indices, as text; empty when there is nothing to tell. `end` is held to
    /// the series.
    QStringList statisticRange(int &start, int &end) const;

    // Instrument and overlays

    /// Shows another instrument, portfolio or user-defined index in the title. `flag` fills the gaps of its series
    /// and goes to the title. The caller requests.
    void setStock(const QString &stockKey, bool flag);
    void clearStock();
    /// Changes overlays, or takes them anew: EOverlayChange.
    void updateOverlay(int op, const QString &stockKey);
    void updateLinkageData(const QList<QString> &accounts, bool add);
    void updateLinkageData(const QString &accounts, bool add);

    // Formulas

    void addIndex(const QString &name);
    void delIndex(const QString &name);
    void delAllIndex();
    /// Leaves the main formulas and this one; the caller requests.
    void updateIndex(const QString &name);
    /// Puts a formula on or takes it off, as EFormulaChange says; then requests.
    void updateIndex(int op, const QString &name);
    bool findIndex(const QString &name) const;
    QList<QString> getIndexes() const;
    QString getMainIndex() const;
    /// The formula last added or updated.
    QString gePretIndex() const;
    QString getPreIndex() const { return gePretIndex(); }

    // Commands of the newest day

    void beHistory(bool history);
    void beReplay(bool replay);
    void setCreateNewWorkShow(bool show);
    void setMouseIn(bool in);
    void setPairParamFunc(boost::function<void(QString)> func);
    void showContrastSector();
    void superposedStock();
    void viewVariable();

    /// Asks for this pane to be closed.
    void destorySubWidget();
    void destroySubWidget() { destorySubWidget(); }
    bool handleEvent(int event, int sub, int param, QString text, void *data) override;

public Q_SLOTS:
    /// Decides about a request that was held back: runs it, or shows the run button.
    void slotDisplayTimeOut();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QString firstFormula() const;
    void clearData();
    void handleButton(int button, int param);
    /// The replay stands at another time. It is told while the data draws, under its lock, so the view hears of it later.
    void keepReplayTime(const RegionBoundTime &time);
    void tellReplayTime();

    int mId;
    std::unique_ptr<ModelRun> mModel;
    QString mPreIndex;
    std::optional<RegionBoundTime> mReplayTime; ///< that the view has not heard of yet
};

} // namespace TC
