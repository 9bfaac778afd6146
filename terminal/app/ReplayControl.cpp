#include "terminal/app/ReplayControl.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/ReplayPanel.h"
#include "terminal/replay/ReplayService.h"

namespace terminal {
namespace {

constexpr int kPanelMargin = 60; ///< pixels between the panel and the corner of the window

} // namespace

ReplayControl::ReplayControl(ReplayService &service, ChartView &view, QWidget *window)
    : QObject(window), mService(service), mView(view), mWindow(window) {}

void ReplayControl::start(qint64 start, qint64 end) {
    if (!mPanel) {
        mPanel = new ReplayPanel(mService, mWindow);
        connect(mPanel, &ReplayPanel::endAsked, this, &ReplayControl::end);
    }
    mPanel->begin(mView.instrument(), start, end);
    if (!mView.isReplay()) {
        mView.setReplay(true);
    }
    showPanel();
    Q_EMIT told(tr("行情回放：%1").arg(mView.instrument()));
}

void ReplayControl::showPanel() {
    if (!mPanel) {
        return;
    }
    if (!mPanel->isVisible()) {
        mPanel->adjustSize();
        mPanel->move(mWindow->mapToGlobal(QPoint(mWindow->width() - mPanel->width() - kPanelMargin,
                                                 mWindow->height() - mPanel->height() - kPanelMargin)));
    }
    mPanel->show();
    mPanel->raise();
}

void ReplayControl::end() {
    if (mPanel) {
        mPanel->hide();
    }
    if (mView.isReplay()) {
        mView.setReplay(false);
        mService.withdrawAll();
        mService.setThousandRange(0, 0);
        Q_EMIT told({});
    }
}

} // namespace terminal
