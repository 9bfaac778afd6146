#include "containers/PaneRow.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/toolkit/CDragWidgetList.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>
#include <utility>

namespace TC {

namespace {

constexpr int kClosedPaneHeight = 16; ///< of a pane beside a maximised one: its title
constexpr int kClosedPaneRoom = 17; ///< with its splitter
constexpr int kMaximisedMargin = 22;

/// Whether there is a series for every open request of a day.
bool isAnswered(const CRealtimeData &data) {
    int answered = 0;
    data.readData([&](const QMap<CFormulaKey, se::RPCFormulaResultCache> &series) {
        for (auto entry = series.keyBegin(); entry != series.keyEnd(); ++entry) {
            answered += data.getReqID(*entry).isEmpty() ? 0 : 1;
        }
    });
    return answered >= data.reqIds().size();
}

} // namespace

PaneRow::PaneRow(QWidget *view, boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexViewType viewType)
    : mView(view), mUiParam(std::move(uiParam)), mViewType(viewType),
      mList(new GZ::CDragWidgetList(Qt::Vertical, view)) {
    mList->setMargin(0);
    mMain = make(EIndexDisplayType::Main);
    mList->addStretchWidget(mMain, kMainStretch, GZ::CWidgetList::eAnchorBoth, false);
}

PaneRow::~PaneRow() {
    deleteAll();
    delete mList;
}

void PaneRow::deleteAll() {
    // Each pointer is taken away first: the panes that are left may still hear of the mouse.
    delete std::exchange(mMain, nullptr);
    while (!mSubs.isEmpty()) {
        delete mSubs.takeFirst();
    }
}

CRealtimeWidget *PaneRow::sub(int id) const {
    const auto found = std::find_if(mSubs.begin(), mSubs.end(),
                                    [id](const CRealtimeWidget *pane) { return pane->getId() == id; });
    return found == mSubs.end() ? nullptr : *found;
}

QVector<CRealtimeWidget *> PaneRow::all() const {
    QVector<CRealtimeWidget *> panes;
    panes.reserve(mSubs.size() + 1);
    if (mMain) {
        panes.append(mMain);
    }
    panes.append(mSubs);
    return panes;
}

QVector<QString> PaneRow::subFormulas() const {
    QVector<QString> formulas;
    for (const CRealtimeWidget *pane : mSubs) {
        formulas += pane->getIndexes().toVector();
    }
    return formulas;
}

bool PaneRow::isComplete() const {
    const QVector<CRealtimeWidget *> panes = all();
    return std::all_of(panes.begin(), panes.end(), [](const CRealtimeWidget *pane) {
        const QList<CRealtimeGraphWidget *> graphs = pane->getGraphWidgets();
        return std::all_of(graphs.begin(), graphs.end(),
                           [](const CRealtimeGraphWidget *graph) { return isAnswered(*graph->getData()); });
    });
}

// Panes that come and go

/// What one pane learns of the newest point concerns all of them.
CRealtimeWidget *PaneRow::make(EIndexDisplayType displayType) {
    auto *pane = new CRealtimeWidget(mNextId++, mUiParam, displayType, mViewType, mView);
    connect(pane, &CRealtimeWidget::pointCountChanged, this, &PaneRow::repaintChanged);
    connect(pane, &CRealtimeWidget::crossLineMoved, this, &PaneRow::crossLineMoved);
    connect(pane, &CRealtimeWidget::dataChanged, this, &PaneRow::dataChanged);
    return pane;
}

void PaneRow::repaintChanged() {
    for (CRealtimeWidget *pane : all()) {
        pane->repaintChanged();
    }
}

CRealtimeWidget *PaneRow::add(int stretch) {
    CRealtimeWidget *pane = make(EIndexDisplayType::Sub);
    pane->setCreateNewWorkShow(mCreateNewWorkShow);
    mSubs.append(pane);
    mList->addStretchWidget(pane, stretch, GZ::CWidgetList::eAnchorBoth, true);
    Q_EMIT paneAdded(pane->getId());
    return pane;
}

void PaneRow::remove(CRealtimeWidget *pane) {
    if (mList->containItem(pane)) {
        pane->hide();
        pane->clear();
        mList->popWidgetAt(mList->indexOf(pane));
        pane->deleteLater();
    }
    mSubs.removeOne(pane);
    if (mSubs.isEmpty()) {
        mList->setDragEnable(true); // the maximised one has gone
    }
    Q_EMIT paneRemoved(pane->getId());
}

void PaneRow::setCreateNewWorkShow(bool show) {
    mCreateNewWorkShow = show;
    mMain->setCreateNewWorkShow(show);
}

void PaneRow::setReplay(bool replay) {
    mReplay = replay;
    for (CRealtimeWidget *pane : all()) {
        pane->beReplay(replay);
    }
}

// Heights

int PaneRow::newStretch() const {
    const GZ::CWidgetListItem *first = mList->getItem(0);
    return first ? first->mStretch / 2 : kSubStretch;
}

std::vector<int> PaneRow::stretches() const {
    std::vector<int> factors;
    for (int i = 0; i < mList->count(); ++i) {
        const GZ::CWidgetListItem *item = mList->getItem(i);
        factors.push_back(mList->isDragEnable() ? item->mStretch : item->mOldStretch);
    }
    return factors;
}

void PaneRow::setMainStretch(int stretch) {
    if (mList->containItem(mMain)) {
        mList->changeStretch(mMain, stretch);
        mList->updateWidgetLength();
    } else {
        mList->addStretchWidget(mMain, stretch, GZ::CWidgetList::eAnchorBoth, false);
    }
}

void PaneRow::toggleMaximised(int id) {
    if (mSubs.size() < 2) {
        return;
    }
    if (!mList->isDragEnable()) {
        restore();
    } else if (CRealtimeWidget *pane = sub(id)) {
        maximise(pane);
    }
}

void PaneRow::restore() {
    for (CRealtimeWidget *pane : all()) {
        mList->resetOldStretch(pane);
    }
    mList->updateWidgetLength();
    mList->setDragEnable(true);
}

/// Gives a pane the room of the other formula panes, of which the titles stay; the main pane keeps its height.
void PaneRow::maximise(CRealtimeWidget *pane) {
    const int mainHeight = mMain->height();
    const int room = kClosedPaneRoom - mSubs.size() * kClosedPaneRoom - mainHeight + mView->height();
    mList->changeStretch(mMain, mainHeight);
    for (CRealtimeWidget *one : qAsConst(mSubs)) {
        if (one == pane) {
            mList->changeStretch(one, room - kMaximisedMargin);
        } else {
            one->resize(mView->width(), kClosedPaneHeight);
            mList->changeStretch(one, 0);
        }
    }
    mList->updateWidgetLength();
    pane->update();
    mList->setDragEnable(false);
}

} // namespace TC
