# TIMESHARE_PUBLIC_HEADERS: what is installed below include/timeshare. All of host/, the classes of the view and of the
# toolkit that hosts may use, and what the headers of these include.
set(TIMESHARE_PUBLIC_HEADERS
  # The view.
  containers/CIndexWidgetInfo.h
  containers/CRealtimeMainWidget.h
  containers/CRealtimeWidget.h
  containers/MainView.h
  containers/PaneView.h
  chartview/CCrossLineWidget.h
  chartview/CGraphAxisWidget.h
  chartview/CRealtimeGraphWidget.h
  chartview/CRealtimeTimeWidget.h
  chartview/IDayRows.h
  chartdata/CRealtimeData.h
  chartdata/LinkageScope.h
  chartdata/RequestLog.h
  viewmodel/AxisScale.h
  viewmodel/CRealTimeCustomIndexAxis.h
  viewmodel/CRealTimeNomalAxis.h
  viewmodel/CRealTimePortfolioAxis.h
  viewmodel/CRealtimeBaseFormulaAxis.h
  viewmodel/CRealtimeUiParam.h
  # Its dialogs.
  linkage/CRealtimeDealDialog.h
  linkage/CRealtimeLinkageSettingDialog.h
  linkage/CRealtimeOrderDialog.h
  linkage/CRealtimeProgressWidget.h
  linkage/CRealtimeTaskTableDialog.h
  linkage/CTaskTableCancelButton.h
  statistics/CRealtimeStageDialog.h
  statistics/CRealtimeStatisticDialog.h
  # Files and colours of windows, as the library has them.
  toolkit/files/DecodedText.h
  toolkit/files/RegularFile.h
  toolkit/windows/WindowLook.h
  # Parts of the above, of which nothing is to be used.
  chartdata/ChangeFlags.h
  chartview/AccountCommands.h
  chartview/AxisLabels.h
  chartview/CrossLinePlan.h
  chartview/DrawingSpace.h
  chartview/FormulaCommands.h
  chartview/GraphContextMenu.h
  chartview/GraphInput.h
  chartview/GraphLayers.h
  chartview/GraphMenu.h
  chartview/GraphPointer.h
  chartview/GraphSubject.h
  chartview/HiddenVariables.h
  chartview/MinuteSpan.h
  chartview/OverlayCommands.h
  chartview/RegionLines.h
  chartview/TradeTip.h
  chartview/ViewCommands.h
  linkage/ChoiceGroup.h
  linkage/ChoiceTable.h
  linkage/KindChoice.h
  linkage/SlotBond.h
  linkage/TradeImport.h
  statistics/TransactionRequests.h
  viewmodel/AxisTicks.h
  viewmodel/SharedCount.h
  viewmodel/TradingSessions.h)
list(TRANSFORM TIMESHARE_PUBLIC_HEADERS PREPEND ${PROJECT_SOURCE_DIR}/)
file(GLOB_RECURSE host_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/host/*.h)
list(APPEND TIMESHARE_PUBLIC_HEADERS ${host_headers})
