#include "terminal/app/TerminalWindow.h"

#include "chartview/CRealtimeGraphWidget.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/toolkit/Text.h"
#include "host/windows/CFormulaEditorManager.h"
#include "terminal/app/ChartPane.h"
#include "terminal/app/ImportDialog.h"
#include "terminal/app/InstrumentBox.h"
#include "terminal/app/MessagePanel.h"
#include "terminal/market/MarketDate.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
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

QString shownDate(const QDate &date) {
    return date.toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace

TerminalWindow::TerminalWindow(TerminalServices &services, QWidget *parent)
    : QWidget(parent), mServices(services), mPane(new ChartPane(this)),
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
    column->addWidget(mPane, 1);
    column->addWidget(mMessages);
    column->addWidget(status);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    applyTheme();
    refreshSearch();
    connect(mMessages, &MessagePanel::formulaChosen, this, &TerminalWindow::editFormula);
    connect(&mSecond, &QTimer::timeout, this, &TerminalWindow::onSecond);
    mSecond.start(1000);
    tellMessages();
}

TerminalWindow::~TerminalWindow() = default;

/// Tells what went wrong with the configuration since the last time.
void TerminalWindow::tellMessages() {
    const QStringList messages = mServices.config().messages();
    if (messages.size() > mMessagesTold) {
        mMessagesTold = messages.size();
        say(messages.last(), true);
        mErrorShown = false; // it stays when the next instrument is shown
    }
}

void TerminalWindow::buildControls(QWidget *row) {
    row->setFixedHeight(kControlsHeight);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(8, 2, 8, 2);
    mBox = new InstrumentBox(this);
    mBox->setFixedWidth(220);
    mDays = new QComboBox(row);
    mDays->setObjectName(QStringLiteral("days"));
    mPause = new QPushButton(tr("暂停"), row);
    mPause->setObjectName(QStringLiteral("pause"));
    mPause->setCheckable(true);
    mPace = new QComboBox(row);
    mPace->setObjectName(QStringLiteral("pace"));
    for (const int pace : {1, 10, 60, 300, 600}) {
        mPace->addItem(tr("%1 倍速").arg(pace), double(pace));
    }
    setPace(mServices.clock().pace());
    mTheme = new QPushButton(row);
    mTheme->setObjectName(QStringLiteral("theme"));
    mImport = new QPushButton(tr("导入…"), row);
    mImport->setObjectName(QStringLiteral("import"));
    for (QWidget *widget :
         {static_cast<QWidget *>(mBox), static_cast<QWidget *>(mDays), static_cast<QWidget *>(mPause),
          static_cast<QWidget *>(mPace), static_cast<QWidget *>(mTheme), static_cast<QWidget *>(mImport)}) {
        layout->addWidget(widget);
        if (widget != mBox) {
            widget->setFocusPolicy(Qt::ClickFocus);
        }
    }
    layout->addStretch(1);

    connect(mBox, &InstrumentBox::chosen, this, [this](const QString &key) { showInstrument(key); });
    connect(mBox, &InstrumentBox::unknown, this, [this](const QString &text) {
        say(tr("没有找到“%1”，相近的有：%2").arg(text, mSearch.nearest(text, kNearest).join(tr("，"))), true);
    });
    connect(mDays, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        showInstrument(mPane->instrument(), mDays->itemData(index).toDate());
        setFocus();
    });
    connect(mPause, &QPushButton::toggled, this, &TerminalWindow::setPaused);
    connect(mPace, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { setPace(mPace->itemData(index).toDouble()); });
    connect(mTheme, &QPushButton::clicked, this, [this] {
        const bool dark = GZ::CUiResource::instance().theme() == QLatin1String("dark");
        setThemeName(dark ? QStringLiteral("light") : QStringLiteral("dark"));
    });
    connect(mImport, &QPushButton::clicked, this, [this] { openImport(); });
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
    if (!mServices.store().catalogue()->find(key)) {
        say(tr("没有找到“%1”，相近的有：%2").arg(key, mSearch.nearest(key, kNearest).join(tr("，"))), true);
        return false;
    }
    if (day.isValid() && !known.contains(day)) {
        say(tr("%1 在 %2 没有行情").arg(key, shownDate(day)), true);
        return false;
    }
    // The running day is shown live; where the exchange does not run the instrument, its newest stored one.
    const bool live = known.contains(running) && (!day.isValid() || day == running);
    mServices.historyCache().clear();
    mPane->show(key, live ? QDate() : day.isValid() ? day : known.value(0));
    mRunningDay = running;
    mServices.config().setValue(kInstrumentField, key);
    mBox->setCurrent(key + QLatin1Char(' ') + TC::getDetailQsName(mServices.detailOf(key)));
    refreshDays();
    if (mErrorShown) {
        say({});
    }
    tellMessages();
    setFocus();
    return true;
}

void TerminalWindow::refreshDays() {
    const QSignalBlocker quiet(mDays);
    mDays->clear();
    for (const QDate &date : mServices.daysOf(mPane->instrument())) {
        mDays->addItem(date == mRunningDay ? tr("%1 当日").arg(shownDate(date)) : shownDate(date), date);
    }
    mDays->setCurrentIndex(mDays->findData(mPane->day()));
}

void TerminalWindow::shiftDay(int days) {
    const int index = mDays->currentIndex() - days; // the newest stands first
    if (index >= 0 && index < mDays->count()) {
        showInstrument(mPane->instrument(), mDays->itemData(index).toDate());
    }
}

void TerminalWindow::editFormula(const QString &formula) {
    const TC::CFormulaDetailPtr detail =
        TC::CSingletonT<TC::CFormulaOperateManager>::instance().getFormula(formula);
    if (detail) {
        TC::CFormulaEditorManager::createWindow(detail->mName, detail->mType, this);
    }
}

void TerminalWindow::refreshSearch() {
    mSearch = mServices.search();
    mBox->setSearch(mSearch);
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
    mClock->setText(
        tr("市场时间 %1")
            .arg(mServices.clock().currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))));
    const QString key = mPane->instrument();
    const QDate running = key.isEmpty() ? QDate() : mServices.runningDayOf(key);
    if (running != mRunningDay && !key.isEmpty()) {
        mRunningDay = running;
        if (!mPane->isPastDay()) {
            mServices.historyCache().clear();
            mPane->reload();
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

void TerminalWindow::keyPressEvent(QKeyEvent *event) {
    const bool control = event->modifiers() & Qt::ControlModifier;
    const QString text = event->text();
    if (control && event->key() == Qt::Key_O) {
        openImport();
    } else if (control && event->key() == Qt::Key_T) {
        mTheme->click();
    } else if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
        shiftDay(event->key() == Qt::Key_PageUp ? -1 : 1);
    } else if (event->key() == Qt::Key_Space) {
        setPaused(!mServices.clock().isPaused());
    } else if (!control && !text.isEmpty() && text[0].isLetterOrNumber()) {
        mBox->startTyping(text);
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace terminal
