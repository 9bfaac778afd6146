#include "containers/CRealtimeMainWidget.h"
#include "host/services/CFormulaManager.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/windows/CFormulaEditorManager.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/FormulaPanel.h"
#include "terminal/app/MessagePanel.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/market/MarketDate.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QCloseEvent>
#include <QJsonObject>
#include <QKeyEvent>
#include <QPushButton>
#include <QSignalBlocker>

namespace terminal {
namespace {

constexpr int kDaysOfDownload = 20;
constexpr qint64 kMinutePeriod = 60000; ///< milliseconds
constexpr int kMinuteHistory = 3001; ///< kind of data
const QString kTradeDetails = QStringLiteral("tradeDetails"); ///< part of the configuration
const QString kSeeByStrategy = QStringLiteral("seebystrategy");

/// The trading days in front of one.
TC::CHistoryDataParam daysBefore(const TC::CInstrumentDetailPtr &detail, int day) {
    TC::CStockManager &stocks = TC::CSingletonT<TC::CStockManager>::instance();
    const QString market = TC::getDetailQsMarket(detail);
    int first = stocks.getShiftTradeDate(market, day, -kDaysOfDownload);
    int last = stocks.getShiftTradeDate(market, day, -1);
    TC::CHistoryDataParam param;
    param.mMarkets.append(market);
    param.mCodes.append(TC::getDetailQsCode(detail));
    param.mPeriod = kMinutePeriod;
    param.mKind = kMinuteHistory;
    param.mStart = stocks.getStartEndTime(detail, first).first;
    param.mEnd = stocks.getStartEndTime(detail, last).second;
    return param;
}

} // namespace

void TerminalWindow::openSmartKeyboard(const QString &text) {
    TC::CSmartKeyboardDialog *keyboard = TC::CSmartKeyboardDialog::instance();
    keyboard->setPickCallback(
        this, [this](const TC::CStockInfo &picked, TC::ESmartKeyType type) { takePick(picked, type); });
    keyboard->setTitle(tr("键盘精灵"));
    keyboard->openFor(this, text);
}

void TerminalWindow::takePick(const TC::CStockInfo &picked, TC::ESmartKeyType type) {
    switch (type) {
    case TC::ESmartKeyType::Stock:
    case TC::ESmartKeyType::Index:
        showInstrument(picked.key());
        break;
    case TC::ESmartKeyType::Shortcut:
        showInstrument(picked.mCode == QLatin1String("03") ? QStringLiteral("SH000001")
                                                           : QStringLiteral("SZ399001"));
        break;
    case TC::ESmartKeyType::Formula:
        mView->main()->handleDoubleClickedFormula(picked.mCode);
        break;
    case TC::ESmartKeyType::Function:
        break;
    }
    activateWindow();
    mView->setFocus();
}

// Trades

void TerminalWindow::openTradeDetails() {
    mView->main()->showLinkageSetting();
}

/// Gives the dialog what was remembered of it.
void TerminalWindow::restoreTradeDetails() {
    const QJsonObject kept = mServices.config().section(kTradeDetails);
    for (auto entry = kept.begin(); entry != kept.end(); ++entry) {
        if (entry.value().isBool() && entry.key() != kSeeByStrategy) {
            mTradeDetailsKept[entry.key()] = entry.value().toBool();
        }
    }
    mView->main()->presetLinkageDialogSetting(mTradeDetailsKept);
    if (mTradeDetailsKept.value(
            QStringLiteral("balance"))) { // the dialog starts it only when it is checked by hand
        TC::CSingletonT<TC::CLinkageManager>::instance().startBalanceCalculator();
    }
}

/// Remembers what is checked in the dialog. The view by strategies always begins off: a dialog reads it the other way
/// round than it tells it.
void TerminalWindow::keepTradeDetails() {
    QMap<QString, bool> now = mView->main()->getLinkageDialogSetting();
    now.remove(kSeeByStrategy);
    if (now == mTradeDetailsKept) {
        return;
    }
    mTradeDetailsKept = now;
    QJsonObject fields;
    for (auto entry = now.begin(); entry != now.end(); ++entry) {
        fields[entry.key()] = entry.value();
    }
    mServices.config().changeSection(kTradeDetails, fields);
}

void TerminalWindow::setFormulasShown(bool shown) {
    if (shown) {
        mFormulas->refresh();
    }
    mFormulas->setVisible(shown);
    const QSignalBlocker quiet(mFormulasShown);
    mFormulasShown->setChecked(shown);
    colorButtons();
}

void TerminalWindow::connectFormulas() {
    connect(mFormulas, &FormulaPanel::asked, this,
            [this](const QString &formula) { mView->main()->handleDoubleClickedFormula(formula); });
    connect(mFormulas, &FormulaPanel::parametersAsked, this, &TerminalWindow::askParameters);
    connect(mFormulas, &FormulaPanel::editAsked, this,
            [this](const QString &formula) { editFormula(formula); });
    connect(mMessages, &MessagePanel::formulaChosen, this, &TerminalWindow::editFormula);
    TC::CModifyModelParamDialog::setChangedFunction([this](const QString &formula) {
        mServices.historyCache().clear();
        mView->main()->handleConfirmFormula(formula);
        mFormulas->refresh();
    });
    TC::CFormulaEditorManager::setApplyFunction(
        [this](const QString &formula, TC::EFormulaLanguage language, corvane::ERunMode mode) {
            mServices.historyCache().clear();
            refreshSearch();
            mFormulas->refresh();
            mView->main()->handleApplyFormula(formula, language, mode);
        });
}

/// Opens the editor of a formula, also of a file that is too faulty to be one, or of a new one.
void TerminalWindow::editFormula(const QString &formula, int line) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    const TC::CFormulaDetailPtr detail = catalogue.getFormula(formula);
    if (formula.isEmpty() || detail || !catalogue.source(formula).mText.isEmpty()) {
        TC::CFormulaEditorManager::createWindow(formula, detail ? detail->mType : 0, this, line);
    }
}

void TerminalWindow::downloadHistory() {
    if (mServices.formulas().downloadsUnderWay() > 0) {
        mServices.formulas().stopDownloads();
        return;
    }
    const TC::CInstrumentDetailPtr detail = mServices.detailOf(mView->instrument());
    if (!detail) {
        say(tr("%1 由成分计算，请下载其成分的数据").arg(mServices.nameOf(mView->instrument())), true);
        return;
    }
    mDaysDownloaded = 0;
    mView->main()->downloadData();
    const QVector<QDate> known = mServices.daysOf(mView->instrument());
    if (!known.isEmpty()) {
        TC::CHistoryDataParam earlier = daysBefore(detail, dayOf(known.last()));
        mServices.formulas().suppleDataFromServer(QStringLiteral("earlier"), earlier, {});
    }
    mDownload->setText(tr("停止下载"));
    say(tr("开始下载 %1").arg(mView->instrument()));
}

void TerminalWindow::onDownloaded(const QString &key, int done, int total) {
    const bool failed = done == -1;
    mDaysDownloaded += !failed && done < total ? 1 : 0;
    if (mServices.formulas().downloadsUnderWay() > 0) {
        if (total > 1) {
            say(tr("下载 %1：%2/%3").arg(key).arg(done).arg(total));
        }
        return;
    }
    mDownload->setText(tr("下载数据"));
    refreshDays();
    if (failed) {
        say(tr("%1 的下载没有完成，已下载 %2 个交易日").arg(key).arg(mDaysDownloaded), true);
    } else if (mDaysDownloaded > 0) {
        say(tr("%1 下载完成，新增 %2 个交易日").arg(key).arg(mDaysDownloaded));
    } else {
        say(tr("%1 没有可下载的数据").arg(key));
    }
}

void TerminalWindow::showVariables() {
    if (mView->uiParam()->mCrossIndex < 0) {
        mView->moveToEnd();
    }
    mView->main()->viewVariable();
}

void TerminalWindow::askParameters(const QString &formula) {
    auto *dialog = new TC::CModifyModelParamDialog(formula, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

bool TerminalWindow::handleCommandKey(int key) {
    switch (key) {
    case Qt::Key_O:
        openImport();
        return true;
    case Qt::Key_D:
        downloadHistory();
        return true;
    case Qt::Key_E:
        openTradeDetails();
        return true;
    case Qt::Key_H:
        showVariables();
        return true;
    case Qt::Key_T:
        mTheme->click();
        return true;
    case Qt::Key_L:
        showSelfStocks();
        return true;
    case Qt::Key_I:
        setFormulasShown(!mFormulas->isVisible());
        return true;
    default:
        return false;
    }
}

bool TerminalWindow::handleCursorKey(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        mView->moveCursor(key == Qt::Key_Left);
        return true;
    case Qt::Key_Home:
        mView->moveToHome();
        return true;
    case Qt::Key_End:
        mView->moveToEnd();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        mView->main()->scaleView(key == Qt::Key_Up);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        shiftDay(key == Qt::Key_PageUp ? -1 : 1);
        return true;
    case Qt::Key_Space:
        setPaused(!mServices.clock().isPaused());
        return true;
    case Qt::Key_Escape:
        return mView->hideCrossLine();
    default:
        return false;
    }
}

void TerminalWindow::keyPressEvent(QKeyEvent *event) {
    const bool control = event->modifiers() & Qt::ControlModifier;
    const QString text = event->text();
    if (control ? handleCommandKey(event->key()) : handleCursorKey(event->key())) {
        return;
    }
    if (!control && !text.isEmpty() && text[0].isLetterOrNumber()) {
        openSmartKeyboard(text);
        return;
    }
    QWidget::keyPressEvent(event);
}

void TerminalWindow::closeEvent(QCloseEvent *event) {
    QWidget::closeEvent(event);
    QTimer::singleShot(0, qApp, &QApplication::closeAllWindows);
}

} // namespace terminal
