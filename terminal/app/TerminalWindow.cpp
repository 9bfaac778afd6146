#include "terminal/app/TerminalWindow.h"

#include "host/windows/CFormulaEditorManager.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/FormulaPanel.h"
#include "terminal/app/ImportDialog.h"
#include "terminal/app/MessagePanel.h"
#include "terminal/market/MarketDate.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace terminal {
namespace {

constexpr int kControlsHeight = 34; ///< pixels
constexpr int kStatusHeight = 26;
constexpr int kNearest = 3; ///< instruments named for an unknown one
const QString kInstrumentField = QStringLiteral("instrument");
const QString kThemeField = QStringLiteral("theme");
const QString kTradesField = QStringLiteral("trades");
const QString kPanesField = QStringLiteral("panes");
const QString kYes = QStringLiteral("yes");
const QString kNo = QStringLiteral("no");
const QString kDefaultPanes = QStringLiteral("1");
constexpr int kMostPanes = 5;

QString shownDate(const QDate &date) {
    return date.toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace

TerminalWindow::TerminalWindow(TerminalServices &services, QWidget *parent)
    : QWidget(parent), mServices(services), mView(new ChartView(this)), mFormulas(new FormulaPanel(this)),
      mMessages(new MessagePanel(services.messages(), this)) {
    setObjectName(QStringLiteral("terminal_window"));
    setWindowTitle(tr("分时行情"));
    auto *controls = new QWidget(this);
    auto *status = new QWidget(this);
    buildControls(controls);
    buildStatus(status);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(controls);
    auto *middle = new QHBoxLayout;
    middle->setSpacing(0);
    middle->addWidget(mView, 1);
    middle->addWidget(mFormulas);
    column->addLayout(middle, 1);
    column->addWidget(mMessages);
    column->addWidget(status);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    connectControls();
    connectFormulas();
    connectMenu();
    applyTheme();
    refreshSearch();
    restoreTradeDetails();
    setFormulasShown(false);
    setTradesShown(mServices.config().value(kTradesField, kYes) == kYes);
    setFormulaPanes(mServices.config().value(kPanesField, kDefaultPanes).toInt());
    connect(&mSecond, &QTimer::timeout, this, &TerminalWindow::onSecond);
    mSecond.start(1000);
    tellMessages();
}

TerminalWindow::~TerminalWindow() {
    keepTradeDetails();
    mServices.formulas().setDownloadListener({});
    mServices.selfStocks().setChangeListener({});
    TC::CModifyModelParamDialog::setChangedFunction({});
    TC::CFormulaEditorManager::setApplyFunction({});
}

/// Tells what went wrong with the configuration since the last time.
void TerminalWindow::tellMessages() {
    const QStringList messages = mServices.config().messages();
    if (messages.size() > mMessagesTold) {
        const FormulaErrorSink list = mServices.messages().sink();
        for (const QString &message : messages.mid(mMessagesTold)) {
            list({tr("配置"), 0, message});
        }
        mMessagesTold = messages.size();
        say(messages.last(), true);
        mErrorShown = false; // it stays when the next instrument is shown
    }
}

void TerminalWindow::buildControls(QWidget *row) {
    row->setFixedHeight(kControlsHeight);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(8, 2, 8, 2);
    const auto button = [&](const QString &text, const char *name, bool checkable = false) {
        auto *made = new QPushButton(text, row);
        made->setObjectName(QLatin1String(name));
        made->setCheckable(checkable);
        made->setFocusPolicy(Qt::NoFocus); // the keys stay with the chart
        layout->addWidget(made);
        return made;
    };
    const auto box = [&](const char *name) {
        auto *made = new QComboBox(row);
        made->setObjectName(QLatin1String(name));
        made->setFocusPolicy(Qt::ClickFocus);
        layout->addWidget(made);
        return made;
    };
    mInstrument = button({}, "instrument");
    mInstrument->setMinimumWidth(180);
    mDays = box("days");
    mPanes = box("panes");
    for (int panes = 0; panes <= kMostPanes; ++panes) {
        mPanes->addItem(panes == 0 ? tr("无副图") : tr("%1 个副图").arg(panes), panes);
    }
    mTrades = button(tr("交易"), "trades", true);
    mTradeDetails = button(tr("交易详情"), "trade_details");
    mFormulasShown = button(tr("指标"), "formulas", true);
    connect(button(tr("自选"), "self_stocks"), &QPushButton::clicked, this, &TerminalWindow::showSelfStocks);
    mPause = button(tr("暂停"), "pause", true);
    mPace = box("pace");
    for (const int pace : {1, 10, 60, 300, 600}) {
        mPace->addItem(tr("%1 倍速").arg(pace), double(pace));
    }
    setPace(mServices.clock().pace());
    mTheme = button({}, "theme");
    mImport = button(tr("导入…"), "import");
    mDownload = button(tr("下载数据"), "download");
    layout->addStretch(1);
}

void TerminalWindow::connectControls() {
    connect(mInstrument, &QPushButton::clicked, this, [this] { openSmartKeyboard(); });
    connect(mDays, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { showInstrument(mView->instrument(), mDays->itemData(index).toDate()); });
    connect(mPanes, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        setFormulaPanes(mPanes->itemData(index).toInt());
        mView->setFocus();
    });
    connect(mTrades, &QPushButton::toggled, this, &TerminalWindow::setTradesShown);
    connect(mTradeDetails, &QPushButton::clicked, this, &TerminalWindow::openTradeDetails);
    connect(mFormulasShown, &QPushButton::toggled, this, &TerminalWindow::setFormulasShown);
    connect(mPause, &QPushButton::toggled, this, &TerminalWindow::setPaused);
    connect(mPace, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        setPace(mPace->itemData(index).toDouble());
        mView->setFocus();
    });
    connect(mTheme, &QPushButton::clicked, this, [this] {
        const bool dark = GZ::CUiResource::instance().theme() == QLatin1String("dark");
        setThemeName(dark ? QStringLiteral("light") : QStringLiteral("dark"));
    });
    connect(mImport, &QPushButton::clicked, this, [this] { openImport(); });
    connect(mDownload, &QPushButton::clicked, this, &TerminalWindow::downloadHistory);
    connect(&mServices.files(), &TC::CFileClient::sigReadFinished, this,
            [this](int /*seq*/, bool success, const QString &message) {
                say(success ? tr("文件已读完") : message, !success);
            });
    mServices.formulas().setDownloadListener(
        [this](const QString &key, int done, int total) { onDownloaded(key, done, total); });
}

void TerminalWindow::buildStatus(QWidget *row) {
    row->setFixedHeight(kStatusHeight);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(8, 0, 8, 0);
    mStatus = new QLabel(row);
    mStatus->setObjectName(QStringLiteral("status"));
    mStatus->setTextFormat(Qt::PlainText);
    mStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    mClock = new QLabel(row);
    layout->addWidget(mStatus, 1);
    layout->addWidget(mClock);
}

bool TerminalWindow::showInstrument(const QString &key, const QDate &day) {
    const QVector<QDate> known = mServices.daysOf(key);
    const QDate running = mServices.runningDayOf(key);
    if (mServices.nameOf(key).isEmpty()) {
        say(tr("没有找到“%1”，相近的有：%2").arg(key, mSearch.nearest(key, kNearest).join(tr("，"))), true);
        return false;
    }
    if (day.isValid() && !known.contains(day)) {
        say(tr("%1 在 %2 没有行情").arg(key, shownDate(day)), true);
        return false;
    }
    // The running day is shown live; where the exchange does not run the instrument, its newest stored one.
    const bool live = known.contains(running) && (!day.isValid() || day == running);
    endReplay();
    mServices.historyCache().clear();
    mView->show(key, live ? QDate() : day.isValid() ? day : known.value(0));
    mRunningDay = running;
    mServices.config().setValue(kInstrumentField, key);
    refreshTitle();
    refreshDays();
    if (mErrorShown) {
        say({});
    }
    tellMessages();
    mView->setFocus();
    return true;
}

void TerminalWindow::refreshTitle() {
    const QString key = mView->instrument();
    mInstrument->setText(key + QLatin1Char(' ') + mServices.nameOf(key));
}

void TerminalWindow::refreshDays() {
    const QSignalBlocker quiet(mDays);
    mDays->clear();
    for (const QDate &date : mServices.daysOf(mView->instrument())) {
        mDays->addItem(date == mRunningDay ? tr("%1 当日").arg(shownDate(date)) : shownDate(date), date);
    }
    mDays->setCurrentIndex(mDays->findData(mView->day()));
}

void TerminalWindow::shiftDay(int days) {
    const int index = mDays->currentIndex() - days; // the newest stands first
    if (index >= 0 && index < mDays->count()) {
        showInstrument(mView->instrument(), mDays->itemData(index).toDate());
    }
}

void TerminalWindow::refreshSearch() {
    mSearch = mServices.search();
    mServices.refreshSmartKeys();
}

void TerminalWindow::setPaused(bool paused) {
    if (paused) {
        mServices.clock().pause();
    } else {
        mServices.clock().resume();
    }
    const QSignalBlocker quiet(mPause);
    mPause->setChecked(paused);
    mPause->setText(paused ? tr("继续") : tr("暂停"));
    colorButtons();
}

void TerminalWindow::setPace(double pace) {
    mServices.clock().setPace(pace);
    int index = mPace->findData(pace);
    if (index < 0) {
        mPace->addItem(tr("%1 倍速").arg(pace), pace);
        index = mPace->count() - 1;
    }
    mPace->setCurrentIndex(index);
}

void TerminalWindow::setTradesShown(bool shown) {
    mView->showTrades(shown);
    const QSignalBlocker quiet(mTrades);
    mTrades->setChecked(shown);
    colorButtons();
    mServices.config().setValue(kTradesField, shown ? kYes : kNo);
}

void TerminalWindow::setFormulaPanes(int count) {
    count = qBound(0, count, kMostPanes);
    mView->setFormulaPanes(count);
    setPanesShown(count);
}

/// Shows and keeps a number of formula panes that the chart has already; the menus may make more than the box offers.
void TerminalWindow::setPanesShown(int count) {
    for (int missing = mPanes->count(); missing <= count; ++missing) {
        mPanes->addItem(tr("%1 个副图").arg(missing), missing);
    }
    mPanes->setCurrentIndex(mPanes->findData(count));
    mServices.config().setValue(kPanesField, QString::number(count));
}

void TerminalWindow::setThemeName(const QString &name) {
    QString error;
    if (!GZ::CUiResource::instance().setTheme(name, &error)) {
        say(error, true);
        return;
    }
    mServices.config().setValue(kThemeField, name);
}

void TerminalWindow::onUiResourceChanged() {
    applyTheme();
}

/// The text of a button that is on stands out.
void TerminalWindow::colorButtons() {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    for (QPushButton *button : {mTrades, mFormulasShown, mPause}) {
        QPalette colors = palette();
        colors.setColor(QPalette::ButtonText,
                        theme.getColor(button->isChecked() ? QStringLiteral("ic_clr_realtime_colorstick")
                                                           : QStringLiteral("ic_clr_realtime_axis_text")));
        button->setPalette(colors);
    }
}

void TerminalWindow::applyTheme() {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    const QColor background = theme.getColor(QStringLiteral("ic_clr_realtime_axis_bg"));
    const QColor text = theme.getColor(QStringLiteral("ic_clr_realtime_axis_text"));
    const bool dark = background.lightness() < 128;
    QPalette colors;
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base}) {
        colors.setColor(role, background);
    }
    colors.setColor(QPalette::Button, dark ? background.lighter(180) : background.darker(108));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(role, text);
    }
    setPalette(colors);
    colorButtons();
    mTheme->setText(theme.theme() == QLatin1String("dark") ? tr("浅色") : tr("深色"));
}

ImportDialog *TerminalWindow::openImport(const QStringList &files) {
    if (!mImportDialog) {
        mImportDialog = new ImportDialog(mServices.store(), this);
        connect(mImportDialog, &ImportDialog::imported, this, &TerminalWindow::onImported);
    }
    for (const QString &file : files) {
        mImportDialog->addFile(file);
    }
    mImportDialog->show();
    mImportDialog->activateWindow();
    return mImportDialog;
}

void TerminalWindow::onImported(const QString &key, const QDate &day, const QString &text) {
    refreshSearch();
    if (showInstrument(key, day)) {
        say(text);
    }
}

void TerminalWindow::onSecond() {
    tellMessages();
    refreshControls();
    keepTradeDetails();
    mClock->setText(
        tr("市场时间 %1")
            .arg(mServices.clock().currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))));
    const QString key = mView->instrument();
    const QDate running = key.isEmpty() ? QDate() : mServices.runningDayOf(key);
    if (running != mRunningDay && !key.isEmpty()) {
        mRunningDay = running;
        if (!mView->isPastDay()) {
            mServices.historyCache().clear();
            mView->reload();
        }
        refreshDays();
    }
}

QString TerminalWindow::status() const {
    return mStatus->text();
}

void TerminalWindow::say(const QString &text, bool isError) {
    mErrorShown = isError;
    QPalette colors = palette();
    if (isError) {
        colors.setColor(QPalette::WindowText,
                        GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_index_default_rise")));
    }
    mStatus->setPalette(colors);
    mStatus->setText(text);
    mStatus->setToolTip(text);
}

} // namespace terminal
