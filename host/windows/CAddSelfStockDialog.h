#pragma once

#include "host/Export.h"
#include "host/toolkit/CUiResource.h"

#include <QDialog>
#include <QString>
#include <QVector>

class QComboBox;
class QLabel;

namespace TC {

/// Adds instruments to one of the user's own lists, or to a new one that is named here. A refusal of the host is shown,
/// and the dialog stays open.
class TIMESHARE_EXPORT CAddSelfStockDialog : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit CAddSelfStockDialog(const QVector<QString> &keys, QWidget *parent = nullptr);

    void accept() override;
    void onUiResourceChanged() override;

private:
    /// Tells which of the instruments the list that is chosen has already.
    void tellKnown();

    const QVector<QString> mKeys;
    QComboBox *mGroups;
    QLabel *mMessage;
};

} // namespace TC
