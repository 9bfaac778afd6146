#pragma once

#include "host/Export.h"

#include <QCoreApplication>

class QWidget;

namespace TC {

class CViewVariableDialog;
struct GraphSubject;

/// The window with the values of a graph's first formula at the cross line, and what its formula knows there and does not
/// draw.
class TIMESHARE_EXPORT HiddenVariables {
    Q_DECLARE_TR_FUNCTIONS(TC::HiddenVariables)
public:
    HiddenVariables(QWidget &graph, const GraphSubject &subject) : mGraph(graph), mSubject(subject) {}
    ~HiddenVariables();
    HiddenVariables(const HiddenVariables &) = delete;
    HiddenVariables &operator=(const HiddenVariables &) = delete;

    /// Nothing without a series, or without a formula.
    void show();

private:
    QWidget &mGraph;
    const GraphSubject &mSubject;
    CViewVariableDialog *mDialog = nullptr; ///< made on first use
};

} // namespace TC
