#include "host/windows/CAddSelfStockDialog.h"

#include "host/services/CSelfStockManager.h"
#include "host/services/CStockManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/Wording.h"
#include "toolkit/windows/WindowLook.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>

namespace TC {
namespace {

constexpr int kMostNamed = 5; ///< instruments that the dialog names

CSelfStockManager &listsOf(const QWidget *dialog) {
    return ServiceContext::of(dialog).get<CSelfStockManager>();
}

/// Key and name of an instrument, the key alone of what is none.
QString captionOf(const QString &key, CStockManager &stocks) {
    const QString name = getDetailQsName(stocks.getInstrumentDetail(key));
    return name.isEmpty() ? key : key + QLatin1Char(' ') + name;
}

QString captionOf(const QVector<QString> &keys, CStockManager &stocks) {
    QStringList captions;
    for (const QString &key : keys.mid(0, kMostNamed)) {
        captions.append(captionOf(key, stocks));
    }
    if (keys.size() > kMostNamed) {
        captions.append(CAddSelfStockDialog::tr("等%n个品种", "behind some of their names", keys.size()));
    }
    return GZ::listText(captions);
}

} // namespace

CAddSelfStockDialog::CAddSelfStockDialog(const QVector<QString> &keys, QWidget *parent)
    : QDialog(parent), mKeys(keys), mGroups(new QComboBox(this)), mMessage(new QLabel(this)) {
    setObjectName(QStringLiteral("add_self_stock_dialog"));
    setWindowTitle(tr("加入自选股"));
    auto *instruments = new QLabel(captionOf(keys, ServiceContext::of(this).get<CStockManager>()), this);
    instruments->setTextFormat(Qt::PlainText);
    instruments->setWordWrap(true);
    mGroups->setObjectName(QStringLiteral("groups"));
    mGroups->setEditable(true);
    mGroups->setInsertPolicy(QComboBox::NoInsert);
    mGroups->setToolTip(tr("选择一个列表，或键入新列表的名称"));
    for (const QString &group : listsOf(this).groups()) {
        mGroups->addItem(group);
    }
    mMessage->setObjectName(QStringLiteral("message"));
    mMessage->setTextFormat(Qt::PlainText);
    mMessage->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("取消"));
    connect(buttons, &QDialogButtonBox::accepted, this, &CAddSelfStockDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CAddSelfStockDialog::reject);
    connect(mGroups, &QComboBox::editTextChanged, this, &CAddSelfStockDialog::tellKnown);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(instruments);
    layout->addWidget(mGroups);
    layout->addWidget(mMessage, 1);
    layout->addWidget(buttons);
    resize(320, 150);
    onUiResourceChanged();
    tellKnown();
}

void CAddSelfStockDialog::tellKnown() {
    const QVector<QString> known = listsOf(this).stocks(mGroups->currentText().trimmed());
    QVector<QString> there;
    for (const QString &key : mKeys) {
        if (known.contains(key)) {
            there.append(key);
        }
    }
    mMessage->setText(
        there.isEmpty()
            ? QString()
            : tr("列表中已有 %1").arg(captionOf(there, ServiceContext::of(this).get<CStockManager>())));
}

void CAddSelfStockDialog::accept() {
    const QString group = mGroups->currentText().trimmed();
    const QString refusal = group.isEmpty() ? tr("请键入列表的名称") : listsOf(this).addStocks(group, mKeys);
    if (refusal.isEmpty()) {
        QDialog::accept();
    } else {
        mMessage->setText(refusal);
    }
}

void CAddSelfStockDialog::onUiResourceChanged() {
    setPalette(GZ::windowPalette());
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
}

} // namespace TC
