#include "terminal/app/MessagePanel.h"

#include "host/toolkit/Wording.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace terminal {
namespace {

constexpr int kMessagesHeight = 132; ///< pixels
constexpr int kLineRole = Qt::UserRole;
enum Column : int { eTime, eFormula, eLine, eText, eCount };

QTreeWidgetItem *makeRow(const FormulaMessage &message) {
    auto *row = new QTreeWidgetItem;
    row->setText(eTime, message.time.toString(GZ::kShortDateFormat + QLatin1Char(' ') + GZ::kSecondFormat));
    row->setText(eFormula, message.error.formula);
    row->setText(eLine, message.error.line > 0 ? QString::number(message.error.line) : QString());
    row->setText(eText, message.error.text);
    row->setText(eCount, message.count > 1 ? QStringLiteral("×%1").arg(message.count) : QString());
    row->setToolTip(eText, message.error.text);
    row->setData(eFormula, kLineRole, message.error.line);
    return row;
}

} // namespace

MessagePanel::MessagePanel(FormulaMessages &messages, QWidget *parent) : QWidget(parent), mMessages(messages) {
    setObjectName(QStringLiteral("messages"));
    setFixedHeight(kMessagesHeight);
    mRows = new QTreeWidget(this);
    mRows->setObjectName(QStringLiteral("message_rows"));
    mRows->setColumnCount(eCount + 1);
    mRows->setHeaderLabels({tr("时间"), tr("公式"), tr("行"), tr("内容"), tr("次数")});
    mRows->setRootIsDecorated(false);
    mRows->setUniformRowHeights(true);
    mRows->setEditTriggers(QAbstractItemView::NoEditTriggers);
    mRows->setFocusPolicy(Qt::ClickFocus);
    mRows->header()->setStretchLastSection(false);
    mRows->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    mRows->header()->setSectionResizeMode(eText, QHeaderView::Stretch);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 0, 8, 4);
    column->setSpacing(2);
    column->addWidget(makeHead());
    column->addWidget(mRows, 1);
    connect(mRows, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem *row) {
        Q_EMIT formulaChosen(row->text(eFormula), row->data(eFormula, kLineRole).toInt());
    });
    connect(&mMessages, &FormulaMessages::changed, this, [this](bool isNew) {
        refresh();
        setVisible(!mMessages.messages().isEmpty() && (isNew || !isHidden()));
    });
    hide();
    refresh();
}

QWidget *MessagePanel::makeHead() {
    auto *head = new QWidget(this);
    mTitle = new QLabel(head);
    auto *clear = new QPushButton(tr("清空"), head);
    clear->setObjectName(QStringLiteral("message_clear"));
    auto *close = new QPushButton(tr("关闭"), head);
    close->setObjectName(QStringLiteral("message_close"));
    auto *row = new QHBoxLayout(head);
    row->setContentsMargins(0, 2, 0, 0);
    row->addWidget(mTitle, 1);
    row->addWidget(clear);
    row->addWidget(close);
    for (QPushButton *button : {clear, close}) {
        button->setFocusPolicy(Qt::ClickFocus);
    }
    connect(clear, &QPushButton::clicked, &mMessages, &FormulaMessages::clear);
    connect(close, &QPushButton::clicked, this, &QWidget::hide);
    return head;
}

void MessagePanel::refresh() {
    mRows->clear();
    for (const FormulaMessage &message : mMessages.messages()) {
        mRows->addTopLevelItem(makeRow(message));
    }
    mTitle->setText(tr("消息 %n 条", nullptr, mMessages.messages().size()));
}

} // namespace terminal
