#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace terminal {

class ChartView;
class FormulaPanel;
class MessagePanel;
class TerminalServices;

/// Puts formulas on the chart, opens their editors and the dialogs of their parameters, and brings what was edited onto
/// the chart. While it lives it is who hears of edits.
class FormulaDesk : public QObject {
    Q_OBJECT
public:
    /// `window` becomes the parent of editors and dialogs.
    FormulaDesk(TerminalServices &services, ChartView &view, FormulaPanel &panel, MessagePanel &messages,
                QWidget *window);
    ~FormulaDesk() override;

    /// Opens the editor of a formula, also of a file that is too faulty to be one, or of a new one for an empty name.
    void edit(const QString &formula, int line = 0);
    void askParameters(const QString &formula);

Q_SIGNALS:
    /// The formulas are others: what is searched has changed.
    void catalogueChanged();

private:
    QWidget *mWindow;
};

} // namespace terminal
