#pragma once

#include <QTime>

/// \file
/// Every event of the bus: one name a number, and nothing else in the tree names one.
///
/// Each entry tells, line by line: what happened, who sends it, what the two integers, the text and the pointer carry
/// (what is not told is 0, empty or null), who takes it, and whether it travels on from there. An event that is not
/// consumed is answered with false and travels on by that alone; an event that nobody takes ends at the host.
/// docs/events.md is made from this file.

class QWidget;

namespace TC {

/// Numbers of the events.
enum EEvent : int {
    /// A step of a download, brought to the user-interface thread. It never leaves the view.
    /// from: callback of the formula service
    /// first: records done; second: records in all
    /// taken: main view
    eDownloadStep = 0,
    /// A button was clicked.
    /// from: buttons of the toolkit
    /// first: id of the button; second: 1 checked, 0 not
    /// taken: pane (EPaneButton, CIndexTitleWidget::EButton), dialogs
    eButtonClicked = 5,
    /// The mouse has entered a widget of a list.
    /// from: lists of the toolkit
    /// data: ActivatedWidget
    /// taken: main view, for graphs; travels on
    eWidgetActivated = 13,
    /// A check box was switched by the user.
    /// from: check boxes of the toolkit
    /// first: id of the box; second: 1 checked, 0 not; text: object name of the box
    /// taken: dialogs
    eCheckBoxToggled = 67,
    /// Another entry of a combo box was chosen.
    /// from: combo boxes of the toolkit
    /// first: id of the box; second: index of the entry; text: the entry
    /// taken: statistics dialog
    eComboBoxChanged = 71,
    /// A radio button was picked by the user.
    /// from: radio buttons of the toolkit
    /// first: id of the button; second: 1; text: object name of the button
    /// taken: dialogs
    eRadioButtonPicked = 93,
    /// The formulas of a pane were replaced by one.
    /// from: graph
    /// taken: host
    eFormulaReplaced = 180,
    /// A graph of a view without highlight was double-clicked.
    /// from: graph
    /// taken: host
    ePlainDoubleClicked = 189,
    /// A stretch was selected with the left button.
    /// from: graph
    /// first: axis index of its start; second: axis index of its end
    /// taken: host
    eLeftSelected = 190,
    /// Statistics of a stretch are asked for.
    /// from: graph
    /// first: axis index of its start; second: id of the graph; text: end index, start and end in seconds
    /// taken: pane, which selects the graph; travels on; main view, which opens the statistics
    eStatisticAsked = 191,
    /// A formula pane was double-clicked: it is maximised, or all are restored.
    /// from: graph; pane
    /// first: id of the pane, from the pane on
    /// taken: pane, which sends it anew; main view
    eSubPaneDoubleClicked = 206,
    /// What a view draws was switched: its axis and pictures are made anew.
    /// from: graph
    /// taken: pane
    eViewChanged = 207,
    /// A formula is put on a pane or taken off.
    /// from: graph
    /// second: EFormulaChange; text: name of the formula
    /// taken: pane
    eFormulaAsked = 208,
    /// Overlays are put on or taken off.
    /// from: graph
    /// second: EOverlayChange; text: instrument key
    /// taken: pane
    eOverlayAsked = 209,
    /// Quotes of a stretch are asked for.
    /// from: statistics dialog
    /// first: start, seconds since the epoch; second: end
    /// taken: host
    eRegionQuotesAsked = 219,
    /// The holographic button of an axis strip was pressed.
    /// from: axis strip
    /// taken: host
    eHolographicPressed = 263,
    /// A pane is closed.
    /// from: graph; pane; main view, for the host
    /// first: id of the pane, or of the graph that asks; second: EPaneCloser; text: first formula of the pane
    /// taken: main view, which sends it on
    ePaneCloseAsked = 3020,
    /// The ordinary chart is asked for in place of a formula that replaced it.
    /// from: graph
    /// taken: main view
    eOrdinaryChartAsked = 3021,
    /// A formula pane is asked for; from the main view: one was added.
    /// from: graph; main view, for the host
    /// taken: main view
    ePaneAsked = 3023,
    /// A notice of the host that a graph takes in silence.
    /// from: host
    /// taken: graph
    eQuietNotice = 3024,
    /// The series have changed: the title is told anew and the pane repainted.
    /// from: data; graph
    /// data: the sender, an IndexBaseData
    /// taken: pane
    eDataChanged = 3029,
    /// The mouse has moved the cross line.
    /// from: graph; time scale, with -1 and -1
    /// first: x of the index in the graph, pixels; second: axis index, -1 for none
    /// taken: main view
    eCrossLineMoved = 3031,
    /// A graph was pressed: its pane is highlighted.
    /// from: graph; pane
    /// first: id of the pane, from the pane on
    /// taken: pane, which sends it anew; main view
    ePanePressed = 3032,
    /// A graph has another size.
    /// from: graph
    /// taken: pane, which places the cross line; travels on; main view
    eGraphResized = 3033,
    /// A template or a formula of the template bar was chosen.
    /// from: template bar
    /// second: 1 a template, 0 a formula; text: its name
    /// taken: main view
    eTemplateChosen = 3039,
    /// The newest average price.
    /// from: data
    /// text: the value; data: the sender, an IndexBaseData
    /// taken: host
    eLastValueChanged = 3072,
    /// A graph withdraws its requests, forgets its series and requests anew.
    /// from: host
    /// taken: graph
    eRequestAnew = 3101,
    /// A wanted value range has left the drawn one.
    /// from: data
    /// taken: pane, which makes its axis anew; travels on; main view, whose open statistics follow
    eRangeOutgrown = 3151,
    /// A new work space is asked for.
    /// from: graph
    /// taken: host
    eNewWorkAsked = 3159,
    /// The settings of the user's trades are asked for.
    /// from: graph
    /// taken: main view
    eLinkageAsked = 3160,
    /// Which of the user's trades are shown was chosen.
    /// from: settings dialog of the trades
    /// taken: main view
    eLinkageChosen = 3161,
    /// The settings of the user's trades were closed.
    /// from: settings dialog of the trades
    /// taken: main view
    eLinkageClosed = 3162,
    /// Shown accounts or the trades themselves have changed.
    /// from: graph; settings dialog of the trades
    /// taken: main view
    eLinkageDatasChanged = 3163,
    /// A mark of the user's trades was double-clicked.
    /// from: graph
    /// first: x of the mouse in the graph; second: y; text: "linkage_orders", "linkage_deals" or "linkage_tasks"
    /// data: the graph, a CRealtimeGraphWidget
    /// taken: main view
    eMarkDoubleClicked = 3164,
    /// A ranking of instruments over a stretch is asked for.
    /// from: ranking dialog
    /// taken: host
    eStageRankingAsked = 3180,
    /// The user has finished a drawing.
    /// from: graph
    /// data: the notification of the drawing layer
    /// taken: host
    eDrawingFinished = 3183,
    /// Another notice of the host that a graph takes in silence.
    /// from: host
    /// taken: graph
    eOtherQuietNotice = 3196,
    /// The price chart was double-clicked.
    /// from: graph
    /// text: instrument key
    /// taken: host
    eMainDoubleClicked = 3199,
    /// All panes are shown anew.
    /// from: host
    /// taken: main view
    eViewUpdateAsked = 3225,
    /// The after-hours fixed-price deals are asked for.
    /// from: graph
    /// taken: host
    eFixedPriceAsked = 3226,
    /// More or fewer days side by side.
    /// from: pane
    /// first: id of the pane; second: EDayChange
    /// taken: pane, which sends it anew; main view
    eDaysAsked = 3228,
    /// The settings button of a pane was clicked.
    /// from: pane; main view, for the host
    /// first: id of the pane
    /// taken: main view, which sends it on
    ePaneSettingsAsked = 3230,
    /// The formulas of all panes are saved as a template.
    /// from: host
    /// taken: main view
    eTemplateSaveAsked = 3233,
    /// A bound of the stretch under statistics has moved, or the replay has.
    /// from: statistics dialog; data, in a replay
    /// first: ERegionBound; data: RegionBoundTime
    /// taken: main view
    eRegionBoundMoved = 3239,
    /// The statistics were hidden: the lines of their stretch go.
    /// from: statistics dialog
    /// taken: main view
    eRegionEnded = 3240,
    /// The host is asked to choose the period by itself.
    /// from: graph
    /// first: id of the graph; second: -1
    /// taken: host
    eAutoPeriodAsked = 3254,
    /// The filter of suspended instruments was switched.
    /// from: graph
    /// second: new value of the setting
    /// taken: host
    eFilterChanged = 3262,
    /// The chart of an instrument is asked for.
    /// from: data
    /// first: 1; second: 60; text: code, a point and the market
    /// taken: host
    eInstrumentChartAsked = 3265,
    /// The control panel of the replay is asked for.
    /// from: graph
    /// taken: host
    eReplayControlAsked = 3267,
    /// A stretch is to be replayed.
    /// from: graph
    /// first: start, seconds since the epoch; second: end; text: instrument key
    /// taken: host
    eReplayRangeAsked = 3268,
    /// An instrument is to be added to the user's own.
    /// from: graph
    /// text: instrument key
    /// taken: host
    eSelfStockAsked = 4001,
};

/// What eWidgetActivated points to: the pointer of the widget, which may be null. It is looked up only, since the list
/// may hold widgets of any kind.
using ActivatedWidget = QWidget *;

/// What eRegionBoundMoved points to: time of day of the bound, or newest time of the replay.
using RegionBoundTime = QTime;

/// Buttons of a pane beside those of its title.
enum EPaneButton : int {
    eRunButton = 1024, ///< runs a model that waits for the user
};

/// What eFormulaAsked asks for.
enum EFormulaChange : int { eTakeFormulaOff = 0, ePutFormulaOn = 1 };

/// What eOverlayAsked asks for.
enum EOverlayChange : int {
    eTakeAllOverlays = 0,
    eOverlayWithAxis = 1,
    eRenewOverlays = 2, ///< those of the view parameters
    eOverlayWithoutAxis = 11,
};

/// Who closes a pane, in ePaneCloseAsked.
enum EPaneCloser : int { eClosedByUser = 0, eClosedByHost = 1 };

/// What eDaysAsked asks for.
enum EDayChange : int { eOneDayMore = 0, eOneDayFewer = 1, eBackToOneDay = 2 };

/// Which bound eRegionBoundMoved tells.
enum ERegionBound : int { eRegionStart = 0, eRegionEnd = 1, eReplayTime = 2 };

} // namespace TC
