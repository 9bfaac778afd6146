#pragma once

#include "host/records/Enumerations.h"

#include <boost/shared_ptr.hpp>

class QWidget;

namespace GZ {
class CPushButton;
} // namespace GZ

namespace TC {

class CRealtimeUiParam;
class DayGraphs;
class PaneTitle;

/// Whether the model of a formula pane may run. A pane that was told not to start by itself holds a request back; what is
/// no model then goes on, a model waits for a click on the run button. Of the main pane nothing is ever held.
class ModelRun {
public:
    /// What a pane with a group model does in place of a request of all days.
    enum class EGroup { None, MainGraph, Repaint };

    ModelRun(QWidget *pane, const DayGraphs &days, PaneTitle &title,
             boost::shared_ptr<const CRealtimeUiParam> uiParam, EIndexDisplayType displayType);
    ModelRun(const ModelRun &) = delete;
    ModelRun &operator=(const ModelRun &) = delete;

    /// Whether a model runs without a click. Formula panes only, as the next.
    void setAutomatic(bool automatic);
    /// Holds the next request back.
    void setLoginInit(bool init);

    bool isHeld() const;
    /// Takes a request back that is held; its mode counts when it is released.
    void hold(corvane::ERunMode mode);
    corvane::ERunMode heldMode() const { return mHeldMode; }
    /// Decides about a request that is held: true when it may go on now. Otherwise the run button comes up.
    bool release();
    /// The user has clicked the run button.
    void start() { mAutomatic = true; }
    /// The model runs: neither simple title nor run button.
    void showRunning();
    void placeButton();
    EGroup groupRun() const;

private:
    bool hasModel() const;
    /// Whether the model of the main graph trades by itself, so that it needs no click.
    bool isStrategyRunning() const;
    void showButton();

    const DayGraphs &mDays;
    PaneTitle &mTitle;
    boost::shared_ptr<const CRealtimeUiParam> mUiParam;
    GZ::CPushButton *mButton = nullptr; ///< formula panes only; a child of the pane
    corvane::ERunMode mHeldMode = corvane::ERunMode::Ordinary;
    bool mLoginInit = false;
    bool mAutomatic = true;
    bool mButtonShown = false;
};

} // namespace TC
