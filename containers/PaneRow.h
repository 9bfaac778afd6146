#pragma once

#include "host/records/Enumerations.h"

#include <QObject>
#include <QString>
#include <QVector>
#include <boost/shared_ptr.hpp>

#include <vector>

class QWidget;

namespace GZ {
class CDragWidgetList;
} // namespace GZ

namespace TC {

class CRealtimeUiParam;
class CRealtimeWidget;

/// The panes of a view from top to bottom: the main pane, always there, and beneath it formula panes in order of
/// creation. Ids count from 0, the main pane's, and are never used again. Height is shared by stretch factors; one formula
/// pane at a time may be maximised, and then no splitter moves.
class PaneRow : public QObject {
    Q_OBJECT
public:
    static constexpr int kMainStretch = 2;
    static constexpr int kSubStretch = 1;

    /// The panes stand in a list of their own, a child of `view`.
    PaneRow(QWidget *view, boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexViewType viewType);
    ~PaneRow() override;

    GZ::CDragWidgetList *list() const { return mList; }
    /// Null while the view goes.
    CRealtimeWidget *main() const { return mMain; }
    const QVector<CRealtimeWidget *> &subs() const { return mSubs; }
    /// The formula pane of an id; null when there is none.
    CRealtimeWidget *sub(int id) const;
    /// Main pane first.
    QVector<CRealtimeWidget *> all() const;
    /// The formulas of all formula panes, pane by pane.
    QVector<QString> subFormulas() const;
    /// Whether there is a series for every open request of every pane.
    bool isComplete() const;

    /// Adds an empty formula pane at the bottom.
    CRealtimeWidget *add(int stretch);
    /// Takes a formula pane away; it goes with the next turn of the event loop.
    void remove(CRealtimeWidget *pane);
    /// Deletes all panes at once, as the view goes.
    void deleteAll();
    /// For panes to come; the main pane takes it too.
    void setCreateNewWorkShow(bool show);
    /// All panes show a market replay, or no longer.
    void setReplay(bool replay);
    bool isReplay() const { return mReplay; }

    /// Half of what the main pane has.
    int newStretch() const;
    /// Stretch factor of each pane; while a pane is maximised those of before.
    std::vector<int> stretches() const;
    void setMainStretch(int stretch);
    /// Maximises the formula pane of an id, or restores them all; nothing with fewer than two of them.
    void toggleMaximised(int id);

Q_SIGNALS:
    /// A pane has taken the cross line to the newest point.
    void crossLineMoved();
    /// The series of a pane have changed.
    void dataChanged();
    /// A formula pane has come, or is about to go.
    void paneAdded(int id);
    void paneRemoved(int id);

private:
    CRealtimeWidget *make(EIndexDisplayType displayType);
    void repaintChanged();
    void maximise(CRealtimeWidget *pane);
    void restore();

    QWidget *mView;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    EIndexViewType mViewType;
    GZ::CDragWidgetList *mList;
    CRealtimeWidget *mMain = nullptr;
    QVector<CRealtimeWidget *> mSubs;
    int mNextId = 0;
    bool mCreateNewWorkShow = true;
    bool mReplay = false;
};

} // namespace TC
