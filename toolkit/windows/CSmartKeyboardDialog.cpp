#include "host/windows/CSmartKeyboardDialog.h"

#include "host/services/CSmartKeyManager.h"
#include "host/services/ServiceContext.h"
#include "toolkit/windows/DialogLook.h"

#include <QCoreApplication>
#include <QHideEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace TC {
namespace {

constexpr int kMostMatches = 50;
constexpr int kPage = 10; ///< rows of Page Up and Page Down

QPointer<CSmartKeyboardDialog> theDialog;

void deleteDialog() {
    delete theDialog.data();
}

QString kindText(ESmartKeyType type) {
    switch (type) {
    case ESmartKeyType::Stock:
        return {};
    case ESmartKeyType::Index:
        return CSmartKeyboardDialog::tr("指数");
    case ESmartKeyType::Shortcut:
        return CSmartKeyboardDialog::tr("快捷键");
    case ESmartKeyType::Formula:
        return CSmartKeyboardDialog::tr("指标");
    case ESmartKeyType::Function:
        return CSmartKeyboardDialog::tr("功能");
    }
    return {};
}

/// Code or key, name, initials and kind in one line.
QString rowText(const CSmartKeyItem &item) {
    QStringList parts{item.mStock.key().isEmpty() ? item.mStock.mCode : item.mStock.key(), item.mName,
                      item.mInitials, kindText(item.mType)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  "));
}

} // namespace

CSmartKeyboardDialog *CSmartKeyboardDialog::instance() {
    if (!theDialog) {
        theDialog = new CSmartKeyboardDialog;
        qAddPostRoutine(deleteDialog); // while there still is an application
    }
    return theDialog;
}

CSmartKeyboardDialog::CSmartKeyboardDialog()
    : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint), mEdit(new QLineEdit(this)),
      mList(new QListWidget(this)), mHint(new QLabel(this)) {
    setObjectName(QStringLiteral("smart_keyboard_dialog"));
    mEdit->setPlaceholderText(tr("代码/名称/拼音首字母"));
    mEdit->installEventFilter(this);
    mList->setFocusPolicy(Qt::NoFocus);
    mHint->setContentsMargins(4, 0, 4, 0);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(4);
    layout->addWidget(mEdit);
    layout->addWidget(mList, 1);
    layout->addWidget(mHint);
    connect(mEdit, &QLineEdit::textChanged, this, &CSmartKeyboardDialog::search);
    connect(mList, &QListWidget::itemClicked, this, &CSmartKeyboardDialog::pick);
    resize(300, 320);
    onUiResourceChanged();
    search({});
}

void CSmartKeyboardDialog::setPickCallback(QObject *owner, PickCallback callback) {
    disconnect(mOwnerGone);
    mOwner = owner;
    mCallback = std::move(callback);
    if (owner) {
        mOwnerGone = connect(owner, &QObject::destroyed, this, [this] {
            mCallback.clear();
            hide();
        });
    }
}

void CSmartKeyboardDialog::setTitle(const QString &title) {
    setWindowTitle(title);
}

void CSmartKeyboardDialog::openFor(QWidget *above, const QString &text) {
    ServiceContext::of(above).giveTo(this);
    if (above) {
        const QRect frame(above->window()->mapToGlobal(QPoint()), above->window()->size());
        move(frame.right() - width() - 20, frame.bottom() - height() - 40);
    }
    show();
    raise();
    activateWindow();
    mEdit->setFocus();
    mEdit->setText(text); // after the focus, which selects all, so that typing goes on behind the text
    search(text); // what was found last time may be out of date
}

void CSmartKeyboardDialog::search(const QString &text) {
    mList->clear();
    mItems.clear();
    if (!text.trimmed().isEmpty()) {
        mItems = ServiceContext::of(this).get<CSmartKeyManager>().search(text.trimmed(), kMostMatches);
    }
    for (const CSmartKeyItem &item : mItems) {
        mList->addItem(rowText(item));
    }
    mList->setCurrentRow(mItems.isEmpty() ? -1 : 0);
    mHint->setText(text.trimmed().isEmpty() ? tr("键入后用↑↓选择，回车确定")
                   : mItems.isEmpty()       ? tr("没有匹配的品种")
                                      : tr("共%n项，↑↓选择，回车确定", nullptr, mItems.size()));
}

bool CSmartKeyboardDialog::chooseByKey(int key) {
    const int last = mList->count() - 1;
    const int row = mList->currentRow();
    int wanted = row;
    switch (key) {
    case Qt::Key_Down:
        wanted = row >= last ? 0 : row + 1;
        break;
    case Qt::Key_Up:
        wanted = row <= 0 ? last : row - 1;
        break;
    case Qt::Key_PageDown:
        wanted = std::min(row + kPage, last);
        break;
    case Qt::Key_PageUp:
        wanted = std::max(row - kPage, 0);
        break;
    default:
        return false;
    }
    if (last >= 0) {
        mList->setCurrentRow(wanted);
    }
    return true;
}

bool CSmartKeyboardDialog::eventFilter(QObject *watched, QEvent *event) {
    if (watched == mEdit && event->type() == QEvent::KeyPress) {
        const auto *press = static_cast<QKeyEvent *>(event);
        if (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter) {
            pick(mList->currentItem());
            return true;
        }
        if (chooseByKey(press->key())) {
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void CSmartKeyboardDialog::pick(const QListWidgetItem *item) {
    const int row = item ? mList->row(item) : -1;
    if (row < 0 || row >= mItems.size()) {
        return; // nothing matches: the window stays for another text
    }
    const CSmartKeyItem picked = mItems[row];
    const PickCallback callback = mCallback; // which may install another one
    hide();
    if (callback) {
        callback(picked.mStock, picked.mType);
    }
}

void CSmartKeyboardDialog::hideEvent(QHideEvent *event) {
    QDialog::hideEvent(event);
    mEdit->clear();
}

void CSmartKeyboardDialog::onUiResourceChanged() {
    GZ::applyDialogLook(*this);
}

} // namespace TC
