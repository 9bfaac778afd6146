#include "host/windows/CIndexModelWidget.h"

#include "host/services/CIndexTemplateManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CMessageBox.h"
#include "host/toolkit/CStyleSheetCenter.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/Wording.h"
#include "toolkit/windows/DialogLook.h"

#include <QInputDialog>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QResizeEvent>
#include <QToolButton>

#include <algorithm>
#include <numeric>

namespace TC {
namespace {

constexpr int kHeight = 24; ///< pixels of the bar
constexpr int kEntryMargin = 4;
constexpr int kPadding = 8; ///< pixels on each side of a button's text
constexpr int kMoreWidth = 24;
CIndexTemplateManager &managerOf(const QWidget *bar) {
    return ServiceContext::of(bar).get<CIndexTemplateManager>();
}

QString cssColor(const char *key) {
    return GZ::themeColor(key).name();
}

} // namespace

CIndexModelWidget::CIndexModelWidget(QWidget *parent) : CBaseWidget(parent), mMore(new QToolButton(this)) {
    setObjectName(QStringLiteral("index_model_widget"));
    mMore->setObjectName(QStringLiteral("index_model_more"));
    mMore->setText(QStringLiteral("…"));
    mMore->setToolTip(tr("更多指标和模板"));
    connect(mMore, &QToolButton::clicked, this, &CIndexModelWidget::showMore);
    onUiResourceChanged();
    updateIndexTemplate();
}

QSize CIndexModelWidget::getSize() const {
    const int wide = std::accumulate(mEntries.begin(), mEntries.end(), 2 * kEntryMargin,
                                     [](int sum, const Entry &entry) { return sum + entry.mButton->width(); });
    return {wide, kHeight};
}

void CIndexModelWidget::updateIndexTemplate() {
    const QVector<QString> formulas = getSelectIndex();
    const QVector<QString> templates = getSelectTempalte();
    rebuild();
    updateSelectIndex(formulas);
    updateSelectTemplate(templates);
}

void CIndexModelWidget::slotIndexTemplateInited() {
    updateIndexTemplate();
}

void CIndexModelWidget::rebuild() {
    for (const Entry &entry : mEntries) {
        entry.mButton->hide();
        entry.mButton->deleteLater(); // it may be the one that is being clicked
    }
    mEntries.clear();
    mTemplates = managerOf(this).templates();
    for (const CIndexTemplate &named : mTemplates) {
        mEntries.append({named.mName, true, false, nullptr});
    }
    for (const QString &formula : managerOf(this).indexes()) {
        mEntries.append({formula, false, false, nullptr});
    }
    for (Entry &entry : mEntries) {
        entry.mButton = new QToolButton(this);
        entry.mButton->setText(entry.mName);
        entry.mButton->setCheckable(true);
        entry.mButton->setFocusPolicy(Qt::NoFocus);
        entry.mButton->setProperty("template", entry.mIsTemplate);
        entry.mButton->setFixedWidth(fontMetrics().horizontalAdvance(entry.mName) + 2 * kPadding);
        connect(entry.mButton, &QToolButton::clicked, this,
                [this, name = entry.mName, isTemplate = entry.mIsTemplate] { choose(name, isTemplate); });
    }
    resizeLayout();
}

void CIndexModelWidget::resizeLayout() {
    const int needed = getSize().width();
    int room = width() - kEntryMargin;
    mMore->setVisible(needed > width());
    if (needed > width()) {
        room -= kMoreWidth;
        mMore->setGeometry(room, 0, kMoreWidth, height());
    }
    int x = kEntryMargin;
    bool fits = true;
    for (const Entry &entry : mEntries) {
        fits = fits && x + entry.mButton->width() <= room;
        entry.mButton->setVisible(fits);
        if (fits) {
            entry.mButton->setGeometry(x, 0, entry.mButton->width(), height());
            x += entry.mButton->width();
        }
    }
}

void CIndexModelWidget::choose(const QString &name, bool isTemplate) {
    for (Entry &entry : mEntries) {
        if (isTemplate) { // a template replaces what is shown
            entry.mInUse = entry.mIsTemplate && entry.mName == name;
        } else if (!entry.mIsTemplate && entry.mName == name) {
            entry.mInUse = true;
        }
        entry.mButton->setChecked(entry.mInUse);
    }
    if (isTemplate) {
        mChosenTemplate = name;
    }
    const QPointer<CIndexModelWidget> alive(this); // the host may close the view
    deliverEvent(eTemplateChosen, 0, isTemplate ? 1 : 0, name, nullptr);
    if (alive && isTemplate) { // the panes that made room have given their formulas up
        updateSelectIndex(getTemplateIndex());
    }
}

void CIndexModelWidget::showMore() {
    const QPointer<QMenu> menu = new QMenu(this); // it goes with the bar while it is open
    menu->setStyleSheet(GZ::CStyleSheetCenter::getStyle(GZ::CStyleSheetCenter::eMenu));
    for (const Entry &entry : mEntries) {
        if (entry.mButton->isHidden()) {
            QAction *action = menu->addAction(entry.mName);
            action->setCheckable(true);
            action->setChecked(entry.mInUse);
            action->setData(entry.mIsTemplate);
        }
    }
    const QAction *chosen = menu->exec(mMore->mapToGlobal(QPoint(0, -menu->sizeHint().height())));
    if (!menu) {
        return;
    }
    menu->deleteLater();
    if (chosen) {
        choose(chosen->text(), chosen->data().toBool());
    }
}

void CIndexModelWidget::updateIndexTemplate(const QString &formula) {
    for (Entry &entry : mEntries) {
        if (!entry.mIsTemplate && entry.mName == formula) {
            entry.mInUse = false;
            entry.mButton->setChecked(false);
        }
    }
}

QVector<QString> CIndexModelWidget::getTemplateIndex() const {
    const auto found = std::find_if(mTemplates.begin(), mTemplates.end(), [&](const CIndexTemplate &named) {
        return named.mName == mChosenTemplate;
    });
    return found == mTemplates.end() ? QVector<QString>() : found->mFormulas;
}

void CIndexModelWidget::showSaveModelDialog(const QVector<QString> &formulas) {
    if (formulas.isEmpty()) {
        return;
    }
    const QPointer<QInputDialog> dialog = new QInputDialog(this); // it goes with the bar while it is open
    GZ::applyDialogLook(*dialog);
    dialog->setWindowTitle(tr("保存模板"));
    dialog->setLabelText(
        tr("模板名称（%1）：").arg(GZ::namesText(QStringList(formulas.begin(), formulas.end()))));
    dialog->setOkButtonText(tr("确定"));
    dialog->setCancelButtonText(tr("取消"));
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return;
    }
    const QString name = dialog->textValue().trimmed();
    dialog->deleteLater();
    if (!accepted) {
        return;
    }
    const bool taken = std::any_of(mTemplates.begin(), mTemplates.end(),
                                   [&](const CIndexTemplate &named) { return named.mName == name; });
    if (name.isEmpty() ||
        (taken && GZ::CMessageBox::question(this, tr("提示"), tr("模板“%1”已存在，是否替换？").arg(name)) !=
                      QMessageBox::Yes)) {
        return;
    }
    managerOf(this).saveTemplate({name, formulas});
    updateIndexTemplate();
}

void CIndexModelWidget::delIndexTemplate(const QString &formula) {
    const auto gone = std::find_if(mEntries.begin(), mEntries.end(), [&](const Entry &entry) {
        return !entry.mIsTemplate && entry.mName == formula;
    });
    if (gone != mEntries.end()) {
        gone->mButton->hide();
        gone->mButton->deleteLater();
        mEntries.erase(gone);
    }
    for (CIndexTemplate &named : mTemplates) {
        named.mFormulas.removeAll(formula);
    }
    resizeLayout();
}

void CIndexModelWidget::setIndexModelVisible(bool visible) {
    setVisible(visible);
}

void CIndexModelWidget::showIndexModelWidget() {
    setVisible(isHidden());
}

void CIndexModelWidget::changeBtnStatus(bool enabled) {
    for (const Entry &entry : mEntries) {
        entry.mButton->setEnabled(enabled);
    }
    mMore->setEnabled(enabled);
}

QVector<QString> CIndexModelWidget::inUse(bool templates) const {
    QVector<QString> names;
    for (const Entry &entry : mEntries) {
        if (entry.mInUse && entry.mIsTemplate == templates) {
            names.append(entry.mName);
        }
    }
    return names;
}

void CIndexModelWidget::setInUse(const QVector<QString> &names, bool templates) {
    for (Entry &entry : mEntries) {
        if (entry.mIsTemplate == templates) {
            entry.mInUse = names.contains(entry.mName);
            entry.mButton->setChecked(entry.mInUse);
        }
    }
}

QVector<QString> CIndexModelWidget::getSelectIndex() const {
    return inUse(false);
}

QVector<QString> CIndexModelWidget::getSelectTempalte() const {
    return inUse(true);
}

void CIndexModelWidget::updateSelectIndex(const QVector<QString> &formulas) {
    setInUse(formulas, false);
}

void CIndexModelWidget::updateSelectTemplate(const QVector<QString> &templates) {
    setInUse(templates, true);
}

void CIndexModelWidget::onUiResourceChanged() {
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    setStyleSheet(QStringLiteral("QToolButton { border: none; background: %1; color: %2; }"
                                 "QToolButton[template=\"true\"] { color: %3; }"
                                 "QToolButton:hover { background: %4; color: %5; }"
                                 "QToolButton:checked { background: %6; color: %9; }"
                                 "QToolButton:disabled { background: %7; color: %8; }")
                      .arg(cssColor("tc_clr_conciseStyle_depth_bottom_group_btn_nomal"),
                           cssColor("tc_clr_depth_bottom_group_btn_txt_nomal"), cssColor("clr_text_default"),
                           cssColor("tc_clr_conciseStyle_depth_bottom_group_btn_hover"),
                           cssColor("tc_clr_depth_bottom_group_btn_txt_hover"),
                           cssColor("tc_clr_conciseStyle_depth_bottom_group_btn_press"),
                           cssColor("tc_clr_conciseStyle_depth_bottom_group_btn_disable"),
                           cssColor("tc_clr_depth_bottom_group_btn_txt_disable"),
                           cssColor("tc_clr_depth_bottom_group_btn_txt_press")));
    CBaseWidget::onUiResourceChanged();
}

void CIndexModelWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    resizeLayout();
}

void CIndexModelWidget::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.fillRect(event->rect(),
                     GZ::themeColor(QStringLiteral("tc_clr_conciseStyle_depth_bottom_group_btn_nomal")));
}

} // namespace TC
