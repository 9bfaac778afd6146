#include "host/windows/CModifyModelParamDialog.h"

#include "host/services/CFormulaOperateManager.h"
#include "host/services/ServiceContext.h"
#include "toolkit/windows/WindowLook.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <cmath>

namespace TC {
namespace {

enum EColumn : int { eName, eValue, eDefault, eRange, eText, eColumns };

CModifyModelParamDialog::ChangedFunction &changedFunction() {
    static CModifyModelParamDialog::ChangedFunction function;
    return function;
}

CFormulaOperateManager &catalogueOf(const QWidget *dialog) {
    return ServiceContext::of(dialog).get<CFormulaOperateManager>();
}

QString plainNumber(double value) {
    return QString::number(value, 'g', 15);
}

bool isLimit(double value) {
    return std::abs(value) < kUnsetValue;
}

/// The range of a parameter in words; empty when all values are allowed.
QString rangeText(const CFormulaParameter &parameter) {
    if (parameter.mIsText || (!isLimit(parameter.mMin) && !isLimit(parameter.mMax))) {
        return {};
    }
    if (!isLimit(parameter.mMax)) {
        return QStringLiteral("≥ %1").arg(plainNumber(parameter.mMin));
    }
    if (!isLimit(parameter.mMin)) {
        return QStringLiteral("≤ %1").arg(plainNumber(parameter.mMax));
    }
    return QStringLiteral("%1 ~ %2").arg(plainNumber(parameter.mMin), plainNumber(parameter.mMax));
}

QTableWidgetItem *fixedItem(const QString &text) {
    auto *item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled);
    return item;
}

} // namespace

CModifyModelParamDialog::CModifyModelParamDialog(const QString &name, QWidget *parent)
    : QDialog(parent), mTable(new QTableWidget(this)), mMessage(new QLabel(this)) {
    setObjectName(QStringLiteral("modify_model_param_dialog"));
    setModal(false);
    mTable->setObjectName(QStringLiteral("parameters"));
    mTable->setColumnCount(eColumns);
    mTable->setHorizontalHeaderLabels({tr("参数"), tr("值"), tr("缺省值"), tr("范围"), tr("说明")});
    mTable->verticalHeader()->hide();
    mTable->horizontalHeader()->setStretchLastSection(true);
    mTable->setSelectionMode(QAbstractItemView::SingleSelection);
    // A click opens a value below. Not by the trigger SelectedClicked, which opens it half a second later,
    // whatever has become of the cell by then.
    mTable->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed);
    mMessage->setObjectName(QStringLiteral("message"));
    mMessage->setTextFormat(Qt::PlainText);
    mMessage->setWordWrap(true);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("取消"));
    mDefaults = buttons->addButton(tr("恢复缺省"), QDialogButtonBox::ResetRole);
    mDefaults->setObjectName(QStringLiteral("defaults"));
    connect(buttons, &QDialogButtonBox::accepted, this, &CModifyModelParamDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CModifyModelParamDialog::reject);
    connect(mDefaults, &QPushButton::clicked, this, &CModifyModelParamDialog::setDefaults);
    connect(mTable, &QTableWidget::itemChanged, this, [this] { say({}); });
    connect(mTable, &QTableWidget::itemClicked, this, [this](QTableWidgetItem *item) {
        if (item->column() == eValue && !mTable->isPersistentEditorOpen(item)) {
            mTable->editItem(item);
        }
    });

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(mTable, 1);
    layout->addWidget(mMessage);
    layout->addWidget(buttons);
    resize(520, 300);
    onUiResourceChanged();
    init(name);
}

void CModifyModelParamDialog::init(const QString &name) {
    mName = name;
    mParameters = catalogueOf(this).parameters(name);
    setWindowTitle(tr("修改指标参数 - %1").arg(name));
    fillTable();
    say(mParameters.isEmpty() ? tr("该指标没有参数") : QString());
    mDefaults->setEnabled(!mParameters.isEmpty());
}

void CModifyModelParamDialog::fillTable() {
    mTable->setRowCount(mParameters.size());
    for (int row = 0; row < mParameters.size(); ++row) {
        const CFormulaParameter &parameter = mParameters[row];
        const bool text = parameter.mIsText;
        mTable->setItem(row, eName, fixedItem(parameter.mName));
        mTable->setItem(row, eValue,
                        new QTableWidgetItem(text ? parameter.mStrValue : plainNumber(parameter.mValue)));
        mTable->setItem(row, eDefault,
                        fixedItem(text ? parameter.mStrDefault : plainNumber(parameter.mDefault)));
        mTable->setItem(row, eRange, fixedItem(rangeText(parameter)));
        mTable->setItem(row, eText, fixedItem(parameter.mText));
    }
    mTable->resizeColumnsToContents();
    if (!mParameters.isEmpty()) {
        mTable->setCurrentCell(0, eValue);
    }
}

void CModifyModelParamDialog::setDefaults() {
    for (int row = 0; row < mParameters.size(); ++row) {
        const CFormulaParameter &parameter = mParameters[row];
        mTable->item(row, eValue)
            ->setText(parameter.mIsText ? parameter.mStrDefault : plainNumber(parameter.mDefault));
    }
}

bool CModifyModelParamDialog::readTable(CFormulaParameters &parameters) {
    for (int row = 0; row < parameters.size(); ++row) {
        CFormulaParameter &parameter = parameters[row];
        const QString text = mTable->item(row, eValue)->text();
        if (parameter.mIsText) {
            parameter.mStrValue = text;
            continue;
        }
        bool isNumber = false;
        parameter.mValue = text.trimmed().toDouble(&isNumber);
        isNumber = isNumber && std::isfinite(parameter.mValue);
        if (!isNumber || parameter.mValue < parameter.mMin || parameter.mValue > parameter.mMax) {
            mTable->setCurrentCell(row, eValue);
            say(isNumber ? tr("参数 %1 的值 %2 超出范围 %3").arg(parameter.mName, text, rangeText(parameter))
                         : tr("参数 %1 的值“%2”不是数字").arg(parameter.mName, text));
            return false;
        }
    }
    return true;
}

void CModifyModelParamDialog::accept() {
    mTable->setCurrentItem(nullptr); // takes the text of a cell over that is being edited
    CFormulaParameters parameters = mParameters;
    if (!readTable(parameters)) {
        return;
    }
    const QString refusal = catalogueOf(this).setParameters(mName, parameters);
    if (!refusal.isEmpty()) {
        say(refusal);
        return;
    }
    QDialog::accept();
    Q_EMIT parametersChanged(mName);
    if (changedFunction()) {
        changedFunction()(mName);
    }
}

void CModifyModelParamDialog::setChangedFunction(ChangedFunction function) {
    changedFunction() = std::move(function);
}

void CModifyModelParamDialog::say(const QString &text) {
    mMessage->setText(text);
}

void CModifyModelParamDialog::onUiResourceChanged() {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    setPalette(GZ::windowPalette());
    setFont(theme.getFont(QStringLiteral("fnt_default_normal")));
    QPalette warning = palette();
    warning.setColor(QPalette::WindowText, theme.getColor(QStringLiteral("clr_global_rise")));
    mMessage->setPalette(warning);
}

} // namespace TC
