#include "terminal/app/ControlFold.h"

#include <QComboBox>
#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include <utility>

namespace terminal {
namespace {

/// A control as the layout sees it.
int widthOf(const QWidget &control) {
    return qMax(control.sizeHint().width(), control.minimumWidth());
}

void addChoices(QMenu &menu, QComboBox *box) {
    for (int index = 0; index < box->count(); ++index) {
        QAction *choice = menu.addAction(box->itemText(index), box, [box, index] {
            box->setCurrentIndex(index);
            Q_EMIT box->activated(index);
        });
        choice->setCheckable(true);
        choice->setChecked(index == box->currentIndex());
    }
}

} // namespace

ControlFold::ControlFold(QWidget *row, QList<QWidget *> controls)
    : QObject(row), mRow(row), mControls(std::move(controls)), mButton(new QToolButton(row)),
      mMenu(new QMenu(mButton)), mShown(mControls.size()) {
    mButton->setObjectName(QStringLiteral("more"));
    mButton->setText(QStringLiteral("»"));
    mButton->setToolTip(tr("更多"));
    mButton->setAccessibleName(tr("更多"));
    mButton->setFocusPolicy(Qt::NoFocus);
    mButton->setPopupMode(QToolButton::InstantPopup);
    mButton->setMenu(mMenu);
    mButton->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
    mButton->hide();
    row->layout()->addWidget(mButton);
    row->installEventFilter(this);
    connect(mMenu, &QMenu::aboutToShow, this, &ControlFold::fillMenu);
}

bool ControlFold::eventFilter(QObject *watched, QEvent *event) {
    if (watched == mRow && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)) {
        fold();
    }
    return QObject::eventFilter(watched, event);
}

/// Width of a row that shows so many of the controls, and the button when those are not all.
int ControlFold::roomFor(int count) const {
    const QMargins margins = mRow->layout()->contentsMargins();
    int room = margins.left() + margins.right();
    for (int i = 0; i < count; ++i) {
        room += widthOf(*mControls[i]) + mRow->layout()->spacing();
    }
    return count < mControls.size() ? room + widthOf(*mButton) : room;
}

void ControlFold::fold() {
    int shown = mControls.size();
    while (shown > 1 && roomFor(shown) > mRow->width()) {
        --shown;
    }
    if (shown == mShown) {
        return;
    }
    mShown = shown;
    for (int i = 0; i < mControls.size(); ++i) {
        mControls[i]->setVisible(i < shown);
    }
    mButton->setVisible(!isOpen());
}

void ControlFold::fillMenu() {
    mMenu->clear();
    qDeleteAll(mMenu->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly)); // which clearing leaves
    mMenu->setPalette(mRow->palette()); // a menu is a window, and takes none of its own accord
    for (QWidget *control : mControls.mid(mShown)) {
        if (auto *box = qobject_cast<QComboBox *>(control)) {
            QMenu *choices = mMenu->addMenu(box->accessibleName());
            choices->setPalette(mRow->palette());
            addChoices(*choices, box);
        } else if (auto *button = qobject_cast<QPushButton *>(control)) {
            QAction *entry = mMenu->addAction(button->text(), button, &QPushButton::click);
            entry->setCheckable(button->isCheckable());
            entry->setChecked(button->isChecked());
        }
    }
}

} // namespace terminal
