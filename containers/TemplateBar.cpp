#include "containers/TemplateBar.h"

#include "containers/CRealtimeWidget.h"
#include "host/windows/CIndexModelWidget.h"

namespace TC {

void TemplateBar::create(QWidget *view) {
    mBar = new CIndexModelWidget(view);
    mBar->setFixedHeight(mBar->getSize().height());
    mBar->hide();
}

void TemplateBar::setVisible(bool visible) {
    if (mBar) {
        mBar->setIndexModelVisible(visible);
    }
}

void TemplateBar::toggle() {
    if (mBar) {
        mBar->showIndexModelWidget();
    }
}

void TemplateBar::enableButtons(bool enabled) {
    if (mBar) {
        mBar->changeBtnStatus(enabled);
    }
}

void TemplateBar::placeButtons() {
    if (mBar) {
        mBar->resizeLayout();
    }
}

void TemplateBar::refresh() {
    if (mBar) {
        mBar->updateIndexTemplate();
    }
}

void TemplateBar::templatesCame() {
    if (mBar) {
        mBar->slotIndexTemplateInited();
    }
}

QVector<QString> TemplateBar::selectedFormulas() const {
    return mBar ? mBar->getSelectIndex() : QVector<QString>();
}

QVector<QString> TemplateBar::selectedTemplates() const {
    return mBar ? mBar->getSelectTempalte() : QVector<QString>();
}

void TemplateBar::selectFormulas(const QVector<QString> &names) {
    if (mBar) {
        mBar->updateSelectIndex(names);
    }
}

void TemplateBar::selectTemplates(const QVector<QString> &names) {
    if (mBar) {
        mBar->updateSelectTemplate(names);
    }
}

QVector<QString> TemplateBar::templateFormulas() const {
    return mBar ? mBar->getTemplateIndex() : QVector<QString>();
}

void TemplateBar::save(const QVector<QString> &formulas) {
    if (mBar) {
        mBar->showSaveModelDialog(formulas);
    }
}

void TemplateBar::givenUp(const QString &formula) {
    if (mBar) {
        mBar->updateIndexTemplate(formula);
    }
}

void TemplateBar::replaced(const CRealtimeWidget *pane, const QString &formula) {
    if (pane && formula != pane->gePretIndex()) {
        givenUp(pane->gePretIndex());
    }
}

void TemplateBar::deleted(const QString &formula) {
    if (mBar) {
        mBar->delIndexTemplate(formula);
    }
}

} // namespace TC
