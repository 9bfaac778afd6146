#include "terminal/app/FormulaPanel.h"

#include "host/services/CFormulaOperateManager.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSet>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace terminal {
namespace {

constexpr int kWidth = 200; ///< pixels
const QString kOrdinaryChart = QStringLiteral("REALTIME");
constexpr int kFormulaRole = Qt::UserRole; ///< name of the formula; folders have none

TC::CFormulaOperateManager &catalogue() {
    return TC::CSingletonT<TC::CFormulaOperateManager>::instance();
}

QString formulaOf(const QTreeWidgetItem *item) {
    return item ? item->data(0, kFormulaRole).toString() : QString();
}

/// The place where a formula shows.
QString placeOf(int type) {
    switch (type) {
    case 1:
        return FormulaPanel::tr("叠加在主图");
    case 2:
        return FormulaPanel::tr("替换主图");
    default:
        return FormulaPanel::tr("副图");
    }
}

QTreeWidgetItem *makeItem(const TC::CFormulaCatalogDetail &node) {
    if (node.isFolder()) {
        auto *item = new QTreeWidgetItem(QStringList(node.catalogName()));
        for (const TC::CFormulaCatalogDetailPtr &child : node.children()) {
            if (QTreeWidgetItem *inner = makeItem(*child)) {
                item->addChild(inner);
            }
        }
        if (item->childCount() > 0) {
            return item;
        }
        delete item;
        return nullptr;
    }
    const TC::CFormulaDetailPtr detail = catalogue().getFormula(node.catalogName());
    if (!detail || !detail->mVisible) {
        return nullptr;
    }
    auto *item = new QTreeWidgetItem(QStringList(detail->mName));
    item->setData(0, kFormulaRole, detail->mName);
    item->setToolTip(0, detail->mName + TC::formulaParamText(*detail) + QLatin1Char('\n') +
                            placeOf(detail->mType));
    return item;
}

} // namespace

FormulaPanel::FormulaPanel(QWidget *parent)
    : QWidget(parent), mFilter(new QLineEdit(this)), mTree(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("formula_panel"));
    setFixedWidth(kWidth);
    mFilter->setPlaceholderText(tr("查找指标"));
    mFilter->setObjectName(QStringLiteral("formula_filter"));
    mFilter->setClearButtonEnabled(true);
    mFilter->installEventFilter(this);
    mTree->setHeaderHidden(true);
    mTree->setContextMenuPolicy(Qt::CustomContextMenu);
    auto *restore = new QPushButton(tr("恢复主图"), this);
    restore->setObjectName(QStringLiteral("restore"));
    auto *create = new QPushButton(tr("新建指标…"), this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addWidget(mFilter);
    column->addWidget(mTree, 1);
    column->addWidget(restore);
    column->addWidget(create);

    connect(mFilter, &QLineEdit::textChanged, this, [this] {
        narrowAll();
        selectFirst();
    });
    connect(mTree, &QTreeWidget::itemActivated, this, &FormulaPanel::ask);
    connect(mTree, &QWidget::customContextMenuRequested, this, &FormulaPanel::showMenu);
    connect(restore, &QPushButton::clicked, this, [this] { Q_EMIT asked(kOrdinaryChart); });
    connect(create, &QPushButton::clicked, this, [this] { Q_EMIT editAsked({}); });
}

void FormulaPanel::ask(const QTreeWidgetItem *item) {
    if (!formulaOf(item).isEmpty()) {
        Q_EMIT asked(formulaOf(item));
    }
}

/// Selects the first formula that is left, while something is searched.
void FormulaPanel::selectFirst() {
    QTreeWidgetItemIterator item(mTree, QTreeWidgetItemIterator::NotHidden);
    while (*item && formulaOf(*item).isEmpty()) {
        ++item;
    }
    mTree->setCurrentItem(mFilter->text().trimmed().isEmpty() ? nullptr : *item);
}

bool FormulaPanel::eventFilter(QObject *watched, QEvent *event) {
    return (watched == mFilter && event->type() == QEvent::KeyPress &&
            handleFilterKey(static_cast<QKeyEvent *>(event))) ||
           QWidget::eventFilter(watched, event);
}

/// In the field the arrow keys walk through what was found, Enter shows it, and Escape ends the search.
bool FormulaPanel::handleFilterKey(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(mTree, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ask(mTree->currentItem());
        return true;
    case Qt::Key_Escape:
        if (mFilter->text().isEmpty()) {
            window()->setFocus();
        }
        mFilter->clear();
        return true;
    default:
        return false;
    }
}

void FormulaPanel::refresh() {
    QSet<QString> open;
    for (int i = 0; i < mTree->topLevelItemCount(); ++i) {
        if (mTree->topLevelItem(i)->isExpanded()) {
            open.insert(mTree->topLevelItem(i)->text(0));
        }
    }
    mTree->clear();
    for (const TC::CFormulaCatalogDetailPtr &child : catalogue().getRootCatalog()->children()) {
        if (QTreeWidgetItem *item = makeItem(*child)) {
            mTree->addTopLevelItem(item);
            item->setExpanded(open.contains(item->text(0)));
        }
    }
    narrowAll();
}

void FormulaPanel::narrowAll() {
    for (int i = 0; i < mTree->topLevelItemCount(); ++i) {
        narrow(mTree->topLevelItem(i), mFilter->text().trimmed());
    }
}

bool FormulaPanel::narrow(QTreeWidgetItem *item, const QString &text) {
    bool any = !formulaOf(item).isEmpty() && item->text(0).contains(text, Qt::CaseInsensitive);
    for (int i = 0; i < item->childCount(); ++i) {
        any = narrow(item->child(i), text) || any;
    }
    item->setHidden(!any);
    if (any && !text.isEmpty() && item->childCount() > 0) {
        item->setExpanded(true);
    }
    return any;
}

void FormulaPanel::showMenu(const QPoint &at) {
    const QString formula = formulaOf(mTree->itemAt(at));
    if (formula.isEmpty()) {
        return;
    }
    QMenu menu(this);
    menu.setPalette(palette()); // a menu is a window, and takes none of its own accord
    menu.addAction(tr("显示"), this, [this, formula] { Q_EMIT asked(formula); });
    menu.addAction(tr("修改指标参数"), this, [this, formula] { Q_EMIT parametersAsked(formula); });
    menu.addAction(tr("编辑指标"), this, [this, formula] { Q_EMIT editAsked(formula); });
    menu.exec(mTree->viewport()->mapToGlobal(at));
}

} // namespace terminal
