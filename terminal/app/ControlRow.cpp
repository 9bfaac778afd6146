#include "terminal/app/ControlRow.h"

#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/Wording.h"
#include "terminal/app/ControlFold.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>

namespace terminal {
namespace {

constexpr int kControlsHeight = 34; ///< pixels
constexpr int kInstrumentWidth = 180;
constexpr int kSmallestWidth = 240; ///< the instrument's button and that of the menu

QString shownDate(const QDate &date) {
    return date.toString(GZ::kDateFormat);
}

} // namespace

ControlRow::ControlRow(QWidget *parent, bool hasPace) : QWidget(parent) {
    setFixedHeight(kControlsHeight);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 2, 8, 2);
    mInstrument = addButton({}, "instrument");
    mInstrument->setMinimumWidth(kInstrumentWidth);
    mDays = addBox("days");
    mDays->setAccessibleName(tr("日期"));
    mDays->setSizeAdjustPolicy(QComboBox::AdjustToContents); // at a first start there are none when it is shown
    mPanes = addBox("panes");
    mPanes->setAccessibleName(tr("副图"));
    for (int panes = 0; panes <= kMostPanes; ++panes) {
        mPanes->addItem(panes == 0 ? tr("无副图") : tr("%n 个副图", nullptr, panes), panes);
    }
    mTrades = addButton(tr("交易"), "trades", true);
    mTradeDetails = addButton(tr("交易详情"), "trade_details");
    mFormulas = addButton(tr("指标"), "formulas", true);
    mSelfStocks = addButton(tr("自选"), "self_stocks");
    mPause = addButton(tr("暂停"), "pause", true);
    mPace = addBox("pace");
    mPace->setAccessibleName(tr("速度"));
    for (const int pace : {1, 10, 60, 300, 600}) {
        mPace->addItem(tr("%1 倍速").arg(pace), double(pace));
    }
    mPause->setEnabled(hasPace);
    mPace->setEnabled(hasPace);
    mTheme = addButton({}, "theme");
    mImport = addButton(tr("导入…"), "import");
    mDownload = addButton(tr("下载数据"), "download");
    mFold = new ControlFold(this, {mInstrument, mDays, mPanes, mTrades, mTradeDetails, mFormulas, mSelfStocks,
                                   mPause, mPace, mTheme, mImport, mDownload});
    layout->addStretch(1);
    connectAll();
}

QSize ControlRow::minimumSizeHint() const {
    return {kSmallestWidth, kControlsHeight};
}

QPushButton *ControlRow::addButton(const QString &text, const char *name, bool checkable) {
    auto *made = new QPushButton(text, this);
    made->setObjectName(QLatin1String(name));
    made->setCheckable(checkable);
    made->setFocusPolicy(Qt::NoFocus); // the keys stay with the chart
    layout()->addWidget(made);
    return made;
}

QComboBox *ControlRow::addBox(const char *name) {
    auto *made = new QComboBox(this);
    made->setObjectName(QLatin1String(name));
    made->setFocusPolicy(Qt::ClickFocus);
    layout()->addWidget(made);
    return made;
}

void ControlRow::connectAll() {
    const auto activated = QOverload<int>::of(&QComboBox::activated);
    connect(mInstrument, &QPushButton::clicked, this, &ControlRow::keyboardAsked);
    connect(mDays, activated, this, [this](int index) { Q_EMIT dayChosen(mDays->itemData(index).toDate()); });
    connect(mPanes, activated, this,
            [this](int index) { Q_EMIT panesChosen(mPanes->itemData(index).toInt()); });
    connect(mTrades, &QPushButton::toggled, this, &ControlRow::tradesToggled);
    connect(mTradeDetails, &QPushButton::clicked, this, &ControlRow::tradeDetailsAsked);
    connect(mFormulas, &QPushButton::toggled, this, &ControlRow::formulasToggled);
    connect(mSelfStocks, &QPushButton::clicked, this, &ControlRow::selfStocksAsked);
    connect(mPause, &QPushButton::toggled, this, &ControlRow::pauseToggled);
    connect(mPace, activated, this,
            [this](int index) { Q_EMIT paceChosen(mPace->itemData(index).toDouble()); });
    connect(mTheme, &QPushButton::clicked, this, &ControlRow::themeToggled);
    connect(mImport, &QPushButton::clicked, this, &ControlRow::importAsked);
    connect(mDownload, &QPushButton::clicked, this, &ControlRow::downloadAsked);
}

void ControlRow::setInstrument(const QString &text) {
    mInstrument->setText(text);
}

void ControlRow::setDays(const QVector<QDate> &dates, const QDate &running, const QDate &shown) {
    const QSignalBlocker quiet(mDays);
    if (dates != mDates || running != mRunning) {
        mDates = dates;
        mRunning = running;
        mDays->clear();
        for (const QDate &date : dates) {
            mDays->addItem(date == running ? tr("%1 当日").arg(shownDate(date)) : shownDate(date), date);
        }
    }
    mDays->setCurrentIndex(mDates.indexOf(shown));
}

QDate ControlRow::dayAfterShown(int days) const {
    const int index = mDays->currentIndex() - days; // the newest stands first
    return index >= 0 && index < mDays->count() ? mDays->itemData(index).toDate() : QDate();
}

void ControlRow::setPanes(int count) {
    for (int missing = mPanes->count(); missing <= count; ++missing) {
        mPanes->addItem(tr("%n 个副图", nullptr, missing), missing);
    }
    mPanes->setCurrentIndex(mPanes->findData(count));
}

int ControlRow::panes() const {
    return mPanes->currentData().toInt();
}

void ControlRow::check(QPushButton *button, bool checked) {
    const QSignalBlocker quiet(button);
    button->setChecked(checked);
    colorButtons();
}

void ControlRow::setTradesShown(bool shown) {
    check(mTrades, shown);
}

void ControlRow::setFormulasShown(bool shown) {
    check(mFormulas, shown);
}

void ControlRow::setPaused(bool paused) {
    mPause->setText(paused ? tr("继续") : tr("暂停"));
    check(mPause, paused);
}

void ControlRow::setPace(double pace) {
    int index = mPace->findData(pace);
    if (index < 0) {
        mPace->addItem(tr("%1 倍速").arg(pace), pace);
        index = mPace->count() - 1;
    }
    mPace->setCurrentIndex(index);
}

void ControlRow::setDownloading(bool underWay) {
    mDownload->setText(underWay ? tr("停止下载") : tr("下载数据"));
}

void ControlRow::applyTheme() {
    colorButtons();
    const bool dark = GZ::CUiResource::instance().theme() == QLatin1String("dark");
    mTheme->setText(dark ? tr("浅色") : tr("深色"));
}

/// The text of a button that is on stands out, on the darker ground that it has then.
void ControlRow::colorButtons() {
    constexpr int kMiddleLightness = 128;
    constexpr int kDarker = 140; // percent
    const QColor sign = GZ::themeColor("ic_clr_realtime_colorstick");
    const bool isLight = palette().color(QPalette::Button).lightness() >= kMiddleLightness;
    const QColor on = isLight ? sign.darker(kDarker) : sign;
    for (QPushButton *button : {mTrades, mFormulas, mPause}) {
        QPalette colors = palette();
        colors.setColor(QPalette::ButtonText,
                        button->isChecked() ? on : GZ::themeColor("ic_clr_realtime_axis_text"));
        button->setPalette(colors);
    }
}

} // namespace terminal
