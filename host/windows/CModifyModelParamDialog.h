#pragma once

#include "host/Export.h"
#include "host/records/CFormulaParameter.h"
#include "host/toolkit/CUiResource.h"

#include <QDialog>

#include <functional>

class QLabel;
class QPushButton;
class QTableWidget;

namespace TC {

/// Changes the parameters of a formula. Not modal.
///
/// A value outside its range, or one that is no number, is marked, and the dialog stays open with the reason; what was
/// accepted is kept by the formula catalogue.
class TIMESHARE_EXPORT CModifyModelParamDialog : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    using ChangedFunction = std::function<void(const QString &name)>;

    explicit CModifyModelParamDialog(const QString &name, QWidget *parent = nullptr);

    /// Shows the parameters of another formula, or those of the same one anew.
    void init(const QString &name);
    /// The formula.
    const QString &name() const { return mName; }

    /// Called after parameters were changed, with the formula's name. One function for all dialogs, installed by the
    /// host; user-interface thread.
    static void setChangedFunction(ChangedFunction function);

    void accept() override;
    void onUiResourceChanged() override;

Q_SIGNALS:
    /// Parameters were changed and kept.
    void parametersChanged(const QString &name);

private:
    void fillTable();
    void setDefaults();
    /// The values as entered; false, with the reason shown, when one of them cannot be.
    bool readTable(CFormulaParameters &parameters);
    void say(const QString &text);

    QString mName;
    CFormulaParameters mParameters;
    QTableWidget *mTable;
    QLabel *mMessage;
    QPushButton *mDefaults;
};

} // namespace TC
