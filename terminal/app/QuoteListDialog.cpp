#include "terminal/app/QuoteListDialog.h"

#include "terminal/app/MarkedChange.h"
#include "terminal/app/TerminalServices.h"
#include "toolkit/windows/WindowLook.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace terminal {
namespace {

constexpr int kQuoteRefresh = 1000; ///< milliseconds
enum EQuoteColumn : int { eQuoteKey, eQuoteName, eQuotePrice, eQuoteChange, eQuoteColumns };
constexpr int kSortRole = Qt::UserRole; ///< number that a row is sorted by

/// A row that is sorted by its numbers, where it has any.
class Row : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem &other) const override {
        const int column = treeWidget()->sortColumn();
        const QVariant mine = data(column, kSortRole);
        const QVariant others = other.data(column, kSortRole);
        return mine.isValid() || others.isValid() ? mine.toDouble() < others.toDouble()
                                                  : QTreeWidgetItem::operator<(other);
    }
};

QString changeTextOf(const InstrumentQuote &quote) {
    return markedChange(quote.change(), QStringLiteral("%1%").arg(quote.change() * 100.0, 0, 'f', 2));
}

void showQuote(QTreeWidgetItem &row, const InstrumentQuote &quote) {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    const bool known = quote.isKnown();
    row.setText(eQuotePrice, known ? QString::number(quote.price, 'f', quote.decimals) : QStringLiteral("—"));
    row.setText(eQuoteChange, known ? changeTextOf(quote) : QString());
    row.setData(eQuotePrice, kSortRole, known ? quote.price : 0.0);
    row.setData(eQuoteChange, kSortRole, known ? quote.change() : -1.0);
    const char *color = !known || quote.change() == 0.0 ? "clr_text_default"
                        : quote.change() > 0.0          ? "ic_clr_index_default_rise"
                                                        : "ic_clr_index_default_fall";
    for (const int column : {eQuotePrice, eQuoteChange}) {
        row.setForeground(column, theme.getColor(QLatin1String(color)));
        row.setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
}

} // namespace

QuoteListDialog::QuoteListDialog(TerminalServices &services, QWidget *parent)
    : QDialog(parent), mServices(services), mNames(new QComboBox(this)), mRows(new QTreeWidget(this)),
      mHint(new QLabel(this)), mRemove(new QPushButton(tr("移出列表"), this)) {
    mNames->setObjectName(QStringLiteral("lists"));
    mRows->setObjectName(QStringLiteral("rows"));
    mRows->setRootIsDecorated(false);
    mRows->setColumnCount(eQuoteColumns);
    mRows->setHeaderLabels({tr("代码"), tr("名称"), tr("最新"), tr("涨跌幅")});
    for (const int column : {eQuotePrice, eQuoteChange}) {
        mRows->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    mRows->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    mRows->header()->setStretchLastSection(true);
    mRows->setSortingEnabled(true);
    mRows->sortByColumn(eQuoteChange, Qt::DescendingOrder);
    mHint->setText(tr("双击或回车显示品种"));
    mRemove->setObjectName(QStringLiteral("remove"));
    mRemove->setAutoDefault(false);
    mRemove->hide();
    connect(mNames, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &QuoteListDialog::fill);
    connect(mRows, &QTreeWidget::itemActivated, this,
            [this](const QTreeWidgetItem *row) { Q_EMIT chosen(row->text(eQuoteKey)); });
    connect(mRemove, &QPushButton::clicked, this, [this] {
        if (const QTreeWidgetItem *row = mRows->currentItem()) {
            Q_EMIT removeAsked(mNames->currentText(), row->text(eQuoteKey));
        }
    });
    connect(&mTimer, &QTimer::timeout, this, &QuoteListDialog::refresh);

    auto *foot = new QHBoxLayout;
    foot->addWidget(mHint, 1);
    foot->addWidget(mRemove);
    auto *column = new QVBoxLayout(this);
    column->addWidget(mNames);
    column->addWidget(mRows, 1);
    column->addLayout(foot);
    resize(400, 320);
    onUiResourceChanged();
}

void QuoteListDialog::setLists(const QVector<QuoteList> &lists, const QString &outstanding) {
    const QString before = mNames->currentText();
    mLists = lists;
    mOutstanding = outstanding;
    const QSignalBlocker quiet(mNames);
    mNames->clear();
    for (const QuoteList &list : lists) {
        mNames->addItem(list.name);
    }
    mNames->setCurrentIndex(qMax(0, mNames->findText(before)));
    fill();
}

void QuoteListDialog::setRemovable(bool removable) {
    mRemove->setVisible(removable);
}

void QuoteListDialog::fill() {
    mRows->clear();
    for (const QString &key : mLists.value(mNames->currentIndex()).keys) {
        auto *row = new Row(mRows);
        row->setText(eQuoteKey, key);
        row->setText(eQuoteName, mServices.nameOf(key));
        if (key == mOutstanding) {
            QFont bold = font();
            bold.setBold(true);
            row->setFont(eQuoteKey, bold);
            row->setFont(eQuoteName, bold);
            mRows->setCurrentItem(row);
        }
    }
    mRemove->setEnabled(mRows->topLevelItemCount() > 0);
    refresh();
}

void QuoteListDialog::refresh() {
    mRows->setSortingEnabled(false); // rows move once, after all have their numbers
    for (int i = 0; i < mRows->topLevelItemCount(); ++i) {
        QTreeWidgetItem &row = *mRows->topLevelItem(i);
        showQuote(row, mServices.quoteOf(row.text(eQuoteKey)));
    }
    mRows->setSortingEnabled(true);
}

void QuoteListDialog::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    refresh();
    mTimer.start(kQuoteRefresh);
}

void QuoteListDialog::hideEvent(QHideEvent *event) {
    QDialog::hideEvent(event);
    mTimer.stop();
}

void QuoteListDialog::onUiResourceChanged() {
    setPalette(GZ::windowPalette());
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    refresh();
}

} // namespace terminal
