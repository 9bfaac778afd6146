#include "containers/PaneTitle.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/DayGraphs.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/services/CIndexManager.h"
#include "host/services/CStockManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

constexpr int kTitleRows = 1;
constexpr int kTitleTextWidth = 50; ///< pixels
constexpr int kPeriodOfMinutes = 0; ///< period of the series
constexpr int kNoPoint = -1;

/// A record that stands for a portfolio.
CInstrumentDetailPtr portfolioDetail(const QString &key, CStockManager &stocks) {
    const CInstrumentDetailPtr model = stocks.getDefaultDetail();
    auto detail = model ? std::make_shared<CInstrumentDetail>(*model) : std::make_shared<CInstrumentDetail>();
    detail->mMarket = "TZZH";
    detail->mCode = key.toStdString();
    detail->mName = detail->mCode;
    return detail;
}

} // namespace

PaneTitle::PaneTitle(QWidget *pane, const boost::shared_ptr<CRealtimeData> &mainData,
                     boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                     EIndexViewType viewType)
    : mUiParam(std::move(uiParam)),
      mWidget(new CIndexTitleWidget(mainData, displayType, viewType, kTitleRows, kTitleTextWidth,
                                    kPeriodOfMinutes, boost::shared_ptr<CKLineUiParam>(), pane)) {
    mWidget->setRealtimeUiParam(mUiParam);
}

PaneTitle::~PaneTitle() {
    delete mWidget;
}

int PaneTitle::height() const {
    return mWidget->height();
}

void PaneTitle::setStock(const QString &key, bool flag) {
    CStockManager &stocks = mUiParam->service<CStockManager>();
    if (const CInstrumentDetailPtr detail = stocks.getInstrumentDetail(key)) {
        mWidget->setStock(detail, flag);
    } else if (stocks.isPortfolio(key)) {
        mWidget->setStock(portfolioDetail(key, stocks), flag);
    } else if (const CIndexDetail *index = mUiParam->service<CIndexManager>().getIndex(key)) {
        mWidget->setStock(indexDetail2Detail(*index), flag);
    }
}

void PaneTitle::showOverlays() {
    mWidget->setAddStockList(mUiParam->getAllAddStockList());
}

void PaneTitle::showDay(const DayGraphs &days, int day) {
    if (const CRealtimeGraphWidget *graph = days.at(days.count() - day - 1)) {
        mWidget->setIndexData(graph->getData());
    }
}

void PaneTitle::showIndex(const DayGraphs &days, int index) {
    if (index == kNoPoint) {
        showDay(days, kNewestDay);
    }
    mWidget->updateIndexId(index);
}

bool PaneTitle::refresh(const DayGraphs &days, const void *sender) {
    bool followed = false;
    if (mUiParam->mCrossShown) {
        followed = followNewest();
    } else {
        for (const CRealtimeGraphWidget *graph : days.newestFirst()) {
            if (static_cast<IndexBaseData *>(graph->getData().get()) == sender) {
                mWidget->setIndexData(graph->getData());
            }
        }
    }
    mWidget->updateView();
    return followed;
}

bool PaneTitle::followNewest() {
    const int last = mUiParam->dataCount() - 1;
    if (mUiParam->mCrossIndex + 1 != last) {
        return false;
    }
    mUiParam->mCrossIndex = last;
    mWidget->updateIndexId(last);
    return true;
}

void PaneTitle::leave(const DayGraphs &days, const boost::shared_ptr<CRealtimeData> &data) {
    if (mWidget->getIndexData() == data) {
        showDay(days, kNewestDay);
    }
}

void PaneTitle::showModel(const QString &name) {
    mWidget->setShowSimpleTitle(true);
    mWidget->setSimpleTite(name);
}

void PaneTitle::showValues() {
    mWidget->setShowSimpleTitle(false);
}

} // namespace TC
