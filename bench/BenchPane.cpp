#include "bench/BenchPane.h"

#include "bench/BenchResults.h"
#include "chartdata/CRealtimeData.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace bench {

BenchPane::BenchPane(fakehost::FakeHost &host, const boost::shared_ptr<TC::CRealtimeUiParam> &param,
                     const QString &name, int date, std::vector<qint32> colors, QWidget *parent)
    : GZ::CEventWidgetT<QWidget>(parent), mParam(param), mColors(std::move(colors)),
      mData(new TC::CRealtimeData(param, TC::EIndexDisplayType::Sub, this)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    host.mCatalogue.add(name, 1);
    mData->addFormula(name);
    mGraph = new TC::CRealtimeGraphWidget(0, mData, mParam, TC::EIndexDisplayType::Sub,
                                          TC::EIndexViewType::Ordinary, this, true);
    mLeft = new TC::CGraphAxisWidget(mParam, mData, TC::CGraphAxisWidget::eLeft, this);
    mRight = new TC::CGraphAxisWidget(mParam, mData, TC::CGraphAxisWidget::eRight, this);
    mRight->lower(); // as those of the chart
    mLeft->lower();
    mLeft->setDisplayType(TC::EIndexDisplayType::Sub);
    mRight->setDisplayType(TC::EIndexDisplayType::Sub);
    mData->setAxisWidget(mLeft);
    mData->setTradeDate(date);
    mData->request(corvane::ERunMode::Ordinary);
    mRequest = host.mFormulas.mLive.find(name + QStringLiteral(".lua"), QStringLiteral("600000"));
}

BenchPane::~BenchPane() {
    delete mGraph;
    delete mLeft;
    delete mRight;
}

void BenchPane::clear() {
    mData->clearData();
}

void BenchPane::deliverHistory(const std::vector<const std::vector<double> *> &lines,
                               const std::vector<qint64> &times) {
    std::vector<std::string> names;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        names.push_back("LINE" + std::to_string(line + 1));
    }
    const auto timeOf = [&times](int index) { return times[static_cast<std::size_t>(index)]; };
    const auto valueOf = [&lines](int line, int index) {
        return (*lines[static_cast<std::size_t>(line)])[static_cast<std::size_t>(index)];
    };
    mRequest.onHistory(
        metaOf(names, 0, mColors),
        resultOf(static_cast<int>(times.size()), static_cast<int>(lines.size()), timeOf, valueOf),
        mRequest.id(), 1, QString(), true);
}

void BenchPane::drawHidden() {
    mData->setDrawEnabled(true);
}

void BenchPane::redrawAll() {
    mData->setChartRect(mGraph->rect()); // new pictures
    mGraph->update();
    mLeft->update();
    mRight->update();
}

/// What a pane does with the ranges of its one graph.
bool BenchPane::handleEvent(int event, int, int, QString, void *) {
    if (event == TC::eRangeOutgrown) {
        const TC::IndexBaseData::MaxMinMap ranges = mData->getMaxMinMap();
        mLeft->setMaxMinMap(ranges);
        mRight->setMaxMinMap(ranges);
        mData->adoptMaxMin(ranges, false);
    }
    if (event == TC::eRangeOutgrown || event == TC::eDataChanged) {
        mGraph->updateChanged();
    }
    return true;
}

void BenchPane::resizeEvent(QResizeEvent *) {
    mLeft->setGeometry(0, 0, mParam->mLeftAxisWidth, height());
    mRight->setGeometry(width() - mParam->mRightAxisWidth, 0, mParam->mRightAxisWidth, height());
    mGraph->setGeometry(mParam->mLeftAxisWidth, 0, static_cast<int>(mParam->mDayWidth), height());
}

} // namespace bench
