#include "terminal/app/InstrumentBox.h"

#include <QKeyEvent>

#include <algorithm>

namespace terminal {
namespace {

constexpr int kMostMatches = 12;
constexpr int kListWidth = 320; ///< pixels

} // namespace

InstrumentBox::InstrumentBox(QWidget *window) : QLineEdit(window), mMatches(new QListWidget(window)) {
    setObjectName(QStringLiteral("instrument_box"));
    setPlaceholderText(tr("代码/名称/拼音首字母"));
    mMatches->setObjectName(QStringLiteral("instrument_matches"));
    mMatches->setFocusPolicy(Qt::NoFocus);
    mMatches->hide();
    connect(this, &QLineEdit::textEdited, this, &InstrumentBox::showMatches);
    connect(mMatches, &QListWidget::itemClicked, this,
            [this](QListWidgetItem *item) { take(item->data(Qt::UserRole).toString()); });
}

void InstrumentBox::setCurrent(const QString &shown) {
    mCurrent = shown;
    restore();
}

void InstrumentBox::startTyping(const QString &text) {
    setFocus();
    setText(text);
    showMatches(text);
}

void InstrumentBox::showMatches(const QString &text) {
    mMatches->clear();
    for (const SearchEntry &entry : mSearch.find(text, kMostMatches)) {
        auto *item = new QListWidgetItem(shownEntry(entry) + QStringLiteral("  ") + entry.initials, mMatches);
        item->setData(Qt::UserRole, entry.key);
    }
    if (mMatches->count() == 0) {
        mMatches->hide();
        return;
    }
    mMatches->setCurrentRow(0);
    const QPoint below = mapTo(mMatches->parentWidget(), QPoint(0, height()));
    const int rows = mMatches->count() * mMatches->sizeHintForRow(0) + 2 * mMatches->frameWidth();
    mMatches->setGeometry(below.x(), below.y(), std::max(width(), kListWidth), rows);
    mMatches->show();
    mMatches->raise();
}

void InstrumentBox::moveChoice(int rows) {
    const int count = mMatches->count();
    if (count > 0) {
        mMatches->setCurrentRow((mMatches->currentRow() + rows + count) % count);
    }
}

void InstrumentBox::take(const QString &key) {
    mMatches->hide();
    clearFocus();
    emit chosen(key);
}

void InstrumentBox::restore() {
    mMatches->hide();
    setText(mCurrent);
}

void InstrumentBox::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Down:
        moveChoice(1);
        return;
    case Qt::Key_Up:
        moveChoice(-1);
        return;
    case Qt::Key_Escape:
        restore();
        clearFocus();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const QListWidgetItem *item = mMatches->isVisible() ? mMatches->currentItem() : nullptr;
        const QString key = item ? item->data(Qt::UserRole).toString() : mSearch.exact(text());
        if (!key.isEmpty()) {
            take(key);
        } else if (text() != mCurrent) {
            emit unknown(text());
        }
        return;
    }
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void InstrumentBox::focusOutEvent(QFocusEvent *event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        restore();
    }
}

} // namespace terminal
