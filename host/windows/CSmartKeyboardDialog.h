#pragma once

#include "host/Export.h"
#include "host/records/CSmartKeyItem.h"
#include "host/toolkit/CUiResource.h"

#include <QDialog>
#include <QList>
#include <QPointer>
#include <boost/function.hpp>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace TC {

/// The window in which an instrument is picked by typing its code, its pinyin initials or its name. One for the whole
/// program, not modal. Up, Down, Page Up, Page Down, Home and End choose in the list, Enter or a click picks, Escape
/// closes.
class TIMESHARE_EXPORT CSmartKeyboardDialog : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    using PickCallback = boost::function<void(const CStockInfo &, ESmartKeyType)>;

    static CSmartKeyboardDialog *instance();

    /// Who hears of the next pick. The callback is forgotten, and the window closed, when its owner goes.
    void setPickCallback(QObject *owner, PickCallback callback);
    void setTitle(const QString &title);
    /// Shows the window over another one, with nothing typed, or with a first text; what that one's services know is found.
    void openFor(QWidget *above, const QString &text = {});

    void onUiResourceChanged() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    CSmartKeyboardDialog();
    void search(const QString &text);
    bool chooseByKey(int key);
    void pick(const QListWidgetItem *item);

    QLineEdit *mEdit;
    QListWidget *mList;
    QLabel *mHint;
    QList<CSmartKeyItem> mItems;
    QPointer<QObject> mOwner;
    QMetaObject::Connection mOwnerGone;
    PickCallback mCallback;
};

} // namespace TC
