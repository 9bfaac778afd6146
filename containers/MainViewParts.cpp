#include "containers/MainViewParts.h"

#include "chartview/CRealtimeTimeWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/ConciseStyle.h"
#include "host/toolkit/CDragWidgetList.h"
#include "host/windows/CIndexModelWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QVBoxLayout>

#include <utility>

namespace TC {

namespace {

constexpr int kTimeScaleHeight = 20; ///< pixels

} // namespace

MainViewParts::MainViewParts(CRealtimeMainWidget &view, const boost::shared_ptr<CRealtimeUiParam> &uiParam,
                             EIndexViewType viewType)
    : mPanes(&view, uiParam, viewType), mSelected(&view, mPanes, uiParam, viewType),
      mCrossLines(mPanes, uiParam), mChart(mPanes, uiParam), mPlacement(mPanes, mSelected, mChart, mBar,
                                                                        [this, &view] {
                                                                            view.addIndexWidget();
                                                                            return mPanes.subs().last();
                                                                        }),
      mKeyed(mPanes, mSelected, mChart, mPlacement), mTradeFormula(mPanes, mChart, uiParam),
      mTradeSettings(&view, mPanes, uiParam), mRecords(&view, uiParam), mRegion(mPanes, uiParam),
      mDownload([&view](int done, int total) { view.suppleProgress(done, total, QString(), QString()); }) {
    QObject::connect(&mPanes, &PaneRow::crossLineMoved, &mPanes, [this] { mCrossLines.followNewest(); });
    mChart.addMainFormulas();
    layOut(view, uiParam, viewType);
}

void MainViewParts::layOut(CRealtimeMainWidget &view, const boost::shared_ptr<CRealtimeUiParam> &uiParam,
                           EIndexViewType viewType) {
    auto *layout = new QVBoxLayout(&view);
    layout->setMargin(0);
    layout->setSpacing(0);
    layout->addWidget(mPanes.list(), 1);
    if (viewType != EIndexViewType::NoTimeScale) {
        mTimeScale = new CRealtimeTimeWidget(uiParam, &view);
        mTimeScale->setFixedHeight(kTimeScaleHeight);
        mCrossLines.setTimeScale(mTimeScale);
        layout->addWidget(mTimeScale);
    }
    if (viewType == EIndexViewType::Template && isConcise()) {
        mBar.create(&view);
        layout->addWidget(mBar.widget());
    }
    mPanes.list()->setSplitter(QStringLiteral("ic_clr_realtime_spliter_background"), 0);
    if (isConcise()) {
        mPanes.list()->setSplitter(QStringLiteral("ic_clr_concise_mainwindow_split_background"), 1);
    }
}

void MainViewParts::close() {
    mRecords.deleteAll();
    mPanes.deleteAll();
    delete std::exchange(mTimeScale, nullptr);
}

void MainViewParts::refreshTimeScale() {
    if (mTimeScale) {
        mTimeScale->updateScale();
    }
}

} // namespace TC
