#include "terminal/app/StretchQuotesDialog.h"

#include "host/records/Enumerations.h"
#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/Wording.h"
#include "terminal/app/MarkedChange.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/TradedSpan.h"
#include "terminal/threads/ThreadStart.h"
#include "toolkit/windows/WindowLook.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace terminal {
namespace {

const QString kUnknown = QStringLiteral("--");
constexpr int kColorKey = Qt::UserRole; ///< of a text in a colour of its own

enum EMinuteColumn : int {
    eMinuteTime,
    eMinuteOpen,
    eMinuteHigh,
    eMinuteLow,
    eMinuteLast,
    eMinuteChange,
    eMinuteVolume,
    eMinuteAmount
};

/// The minutes of a day up to `end` from the last one in front of `start` on.
MinuteBars stretchOf(const MinuteBars &day, qint64 start, qint64 end) {
    MinuteBars found;
    for (const MinuteBar &bar : day) {
        if (bar.time > end) {
            break;
        }
        if (bar.time < start) {
            found.clear();
        }
        found.push_back(bar);
    }
    return found;
}

QString priceText(double price, int decimals) {
    return price > 0.0 ? GZ::formatDoubleNumber(price, decimals, utils::eFormatPlain, false, kUnknown)
                       : kUnknown;
}

QString quantityText(double quantity) {
    return quantity > 0.0
               ? GZ::formatDoubleNumber(quantity, quantity < 1e4 ? 0 : 2, utils::eFormatScaled, false, kUnknown)
               : kUnknown;
}

} // namespace

StretchQuotesDialog::StretchQuotesDialog(TerminalServices &services, QWidget *parent)
    : QDialog(parent), mServices(services), mTable(new QTableWidget(this)), mMessage(new QLabel(this)) {
    setObjectName(QStringLiteral("stretch_quotes"));
    mMessage->setObjectName(QStringLiteral("message"));
    mMessage->setTextFormat(Qt::PlainText);
    const QStringList headings = {tr("时间"), tr("开盘"), tr("最高"),   tr("最低"),
                                  tr("最新"), tr("涨跌"), tr("成交量"), tr("成交额")};
    mTable->setColumnCount(headings.size());
    mTable->setHorizontalHeaderLabels(headings);
    mTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    mTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    mTable->setShowGrid(false);
    mTable->setTabKeyNavigation(false);
    mTable->verticalHeader()->hide();
    mTable->verticalHeader()->setDefaultSectionSize(mTable->fontMetrics().height() + 6);
    mTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connect(&mJob, &BackgroundJob::finished, this, &StretchQuotesDialog::showRows);
    auto *column = new QVBoxLayout(this);
    column->addWidget(mTable, 1);
    column->addWidget(mMessage);
    resize(640, 420);
    onUiResourceChanged();
}

StretchQuotesDialog::~StretchQuotesDialog() = default;

void StretchQuotesDialog::list(const QString &key, qint64 start, qint64 end) {
    mKey = key;
    const TradedSpan span =
        tradedSpan(*mServices.store().catalogue(), key, start * 1000, end * 1000, mServices.clock().now());
    mStart = span.start;
    const auto text = [](qint64 second, const QString &format) {
        return marketDateTime(second * 1000).toString(format);
    };
    setWindowTitle(tr("时段行情 %1 %2 %3 - %4")
                       .arg(key, mServices.nameOf(key),
                            text(start, GZ::kDateFormat + QLatin1Char(' ') + GZ::kMinuteFormat),
                            text(end, GZ::kMinuteFormat)));
    mTable->setRowCount(0);
    mMessage->setText(tr("正在读取"));
    mJob.start([this, key, span](BackgroundJob &) {
        mBars = stretchOf(mServices.feed().dayBars(key, span.day), span.start, span.end);
    });
}

QString StretchQuotesDialog::message() const {
    return mMessage->text();
}

void StretchQuotesDialog::showRows() {
    const TC::CInstrumentDetailPtr detail = mServices.detailOf(mKey);
    const int decimals = detail ? qMax(2, TC::decimals(TC::getDetailPriceTick(detail))) : 2;
    double before = 0.0; // price of the minute before
    for (const MinuteBar &bar : mBars) {
        if (bar.time >= mStart) {
            const int row = mTable->rowCount();
            mTable->insertRow(row);
            setCell(row, eMinuteTime, marketDateTime(bar.time).toString(GZ::kMinuteFormat));
            setCell(row, eMinuteOpen, priceText(bar.open, decimals));
            setCell(row, eMinuteHigh, priceText(bar.high, decimals));
            setCell(row, eMinuteLow, priceText(bar.low, decimals));
            setCell(row, eMinuteLast, priceText(bar.price, decimals));
            const double change = before > 0.0 ? bar.price - before : 0.0;
            setCell(row, eMinuteChange,
                    before > 0.0 ? markedChange(change, QString::number(change, 'f', decimals)) : kUnknown,
                    change > 0.0   ? "ic_clr_index_default_rise"
                    : change < 0.0 ? "ic_clr_index_default_fall"
                                   : nullptr);
            setCell(row, eMinuteVolume, quantityText(bar.volume));
            setCell(row, eMinuteAmount, quantityText(bar.amount));
        }
        before = bar.price;
    }
    mBars.clear();
    mMessage->setText(mJob.isUndone()          ? noThreadText()
                      : mTable->rowCount() > 0 ? tr("%n 分钟", nullptr, mTable->rowCount())
                                               : tr("该时段没有行情"));
}

void StretchQuotesDialog::setCell(int row, int column, const QString &text, const char *colorKey) {
    auto *cell = new QTableWidgetItem(text);
    cell->setTextAlignment(Qt::AlignVCenter | (column == eMinuteTime ? Qt::AlignLeft : Qt::AlignRight));
    if (colorKey) {
        cell->setData(kColorKey, QString::fromLatin1(colorKey));
        cell->setForeground(GZ::themeColor(colorKey));
    }
    mTable->setItem(row, column, cell);
}

void StretchQuotesDialog::onUiResourceChanged() {
    setPalette(GZ::windowPalette());
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    for (int row = 0; row < mTable->rowCount(); ++row) {
        QTableWidgetItem *cell = mTable->item(row, eMinuteChange);
        const QString colorKey = cell->data(kColorKey).toString();
        if (!colorKey.isEmpty()) {
            cell->setForeground(GZ::themeColor(colorKey));
        }
    }
}

} // namespace terminal
