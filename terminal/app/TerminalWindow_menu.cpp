// What the menus of a chart ask of the window: lists of instruments, replay, downloads and files of formulas.

#include "containers/CRealtimeMainWidget.h"
#include "host/services/CFormulaOperateManager.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/QuoteListDialog.h"
#include "terminal/app/ReplayPanel.h"
#include "terminal/app/StretchWindows.h"
#include "terminal/app/TerminalWindow.h"
#include "toolkit/windows/WindowLook.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QSignalBlocker>

#include <utility>

namespace terminal {
namespace {

constexpr int kPanelMargin = 60; ///< pixels between the replay panel and the corner of the window

/// The text of a formula or of a script model; empty when there is none.
QByteArray textOf(const QString &formula) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    const QString text = catalogue.source(formula).mText;
    if (!text.isEmpty()) {
        return text.toUtf8();
    }
    QFile script(catalogue.pythonDir() + QLatin1Char('/') + formula.toUpper() + QStringLiteral(".py"));
    return script.open(QIODevice::ReadOnly) ? script.readAll() : QByteArray();
}

} // namespace

void TerminalWindow::connectMenu() {
    const WindowRequests &requests = mServices.windowRequests();
    connect(&requests, &WindowRequests::contrastAsked, this, &TerminalWindow::showSector);
    connect(&requests, &WindowRequests::exportAsked, this, &TerminalWindow::askExport);
    connect(mView, &ChartView::downloadAsked, this, &TerminalWindow::downloadHistory);
    connect(mView, &ChartView::replayAsked, this, &TerminalWindow::startReplay);
    connect(mView, &ChartView::replayControlAsked, this, &TerminalWindow::showReplayPanel);
    const auto *stretches = new StretchWindows(mServices, *mView, this);
    connect(stretches, &StretchWindows::chosen, this,
            [this](const QString &key, const QDate &day) { showInstrument(key, day); });
    connect(mView, &ChartView::filterChanged, this, [this](bool on) {
        say(on ? tr("已过滤重复股票，在同时显示多个品种的视图中生效") : tr("不再过滤重复股票"));
    });
    mServices.selfStocks().setChangeListener([this] {
        if (mSelfStocks) {
            refreshSelfStocks();
        }
    });
}

// Lists

QuoteListDialog *TerminalWindow::makeList(const char *name, const QString &title) {
    auto *dialog = new QuoteListDialog(mServices, this);
    dialog->setObjectName(QLatin1String(name));
    dialog->setWindowTitle(title);
    connect(dialog, &QuoteListDialog::chosen, this, [this](const QString &key) { showInstrument(key); });
    return dialog;
}

void TerminalWindow::showSector(const QString &key) {
    const QVector<QuoteList> sectors = mServices.sectorsOf(key);
    if (sectors.isEmpty()) {
        say(tr("%1 %2 不属于任何板块").arg(key, mServices.nameOf(key)), true);
        return;
    }
    if (!mSector) {
        mSector = makeList("sector_dialog", tr("所属板块分析"));
    }
    mSector->setLists(sectors, key);
    mSector->show();
    mSector->raise();
}

void TerminalWindow::showSelfStocks() {
    if (!mSelfStocks) {
        mSelfStocks = makeList("self_stocks_dialog", tr("自选股"));
        mSelfStocks->setRemovable(true);
        connect(mSelfStocks, &QuoteListDialog::removeAsked, this,
                [this](const QString &list, const QString &key) {
                    const QString refusal = mServices.selfStocks().removeStocks(list, {key});
                    if (!refusal.isEmpty()) {
                        say(refusal, true);
                    }
                });
    }
    refreshSelfStocks();
    mSelfStocks->show();
    mSelfStocks->raise();
}

void TerminalWindow::refreshSelfStocks() {
    QVector<QuoteList> lists;
    for (const QString &group : mServices.selfStocks().groups()) {
        lists.append({group, mServices.selfStocks().stocks(group)});
    }
    mSelfStocks->setLists(lists, mView->instrument());
}

// Replay

void TerminalWindow::startReplay(qint64 start, qint64 end) {
    if (!mReplayPanel) {
        mReplayPanel = new ReplayPanel(mServices.replay(), this);
        connect(mReplayPanel, &ReplayPanel::endAsked, this, &TerminalWindow::endReplay);
    }
    mReplayPanel->begin(mView->instrument(), start, end);
    if (!mView->isReplay()) {
        mView->setReplay(true);
    }
    showReplayPanel();
    say(tr("行情回放：%1").arg(mView->instrument()));
}

/// Where it covers little of the chart.
void TerminalWindow::showReplayPanel() {
    if (!mReplayPanel) {
        return;
    }
    if (!mReplayPanel->isVisible()) {
        mReplayPanel->adjustSize();
        mReplayPanel->move(mapToGlobal(QPoint(width() - mReplayPanel->width() - kPanelMargin,
                                              height() - mReplayPanel->height() - kPanelMargin)));
    }
    mReplayPanel->show();
    mReplayPanel->raise();
}

void TerminalWindow::endReplay() {
    if (mReplayPanel) {
        mReplayPanel->hide();
    }
    if (mView->isReplay()) {
        mView->setReplay(false);
        mServices.replay().setThousandRange(0, 0);
        say({});
    }
}

// Files of formulas

void TerminalWindow::askExport(const QString &formula) {
    if (formula.isEmpty()) {
        say(tr("主图只有系统公式，没有可导出的公式"), true);
        return;
    }
    const TC::CFormulaDetailPtr detail =
        TC::CSingletonT<TC::CFormulaOperateManager>::instance().getFormula(formula);
    const bool isScript = detail && detail->mLanguage == TC::EFormulaLanguage::Python;
    const QString ending = isScript ? QStringLiteral(".py") : QStringLiteral(".lua");
    QFileDialog dialog(this, tr("导出公式"), QDir::homePath(), tr("公式 (*%1)").arg(ending));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending.mid(1));
    dialog.selectFile((detail ? detail->mName : formula) + ending);
    for (const auto &[part, text] :
         {std::pair(QFileDialog::LookIn, tr("文件夹")), std::pair(QFileDialog::FileName, tr("文件名")),
          std::pair(QFileDialog::FileType, tr("类型")), std::pair(QFileDialog::Accept, tr("保存")),
          std::pair(QFileDialog::Reject, tr("取消"))}) {
        dialog.setLabelText(part, text);
    }
    dialog.setPalette(GZ::windowPalette());
    if (dialog.exec() == QDialog::Accepted) {
        exportFormula(formula, dialog.selectedFiles().value(0));
    }
}

void TerminalWindow::exportFormula(const QString &formula, const QString &path) {
    const QByteArray text = textOf(formula);
    QSaveFile file(path);
    if (text.isEmpty()) {
        say(tr("%1 没有可导出的内容").arg(formula), true);
    } else if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit()) {
        say(tr("%1 已导出到 %2").arg(formula, path));
    } else {
        say(tr("文件 %1 无法写入（%2）").arg(path, file.errorString()), true);
    }
}

/// What the menus of the chart have changed, shown by the controls.
void TerminalWindow::refreshControls() {
    const QSignalBlocker quietTrades(mTrades);
    mTrades->setChecked(mView->areTradesShown());
    colorButtons();
    if (mPanes->currentData().toInt() != mView->formulaPanes()) {
        setPanesShown(mView->formulaPanes());
    }
}

} // namespace terminal
