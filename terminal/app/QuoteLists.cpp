#include "terminal/app/QuoteLists.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/QuoteListDialog.h"
#include "terminal/app/TerminalServices.h"

namespace terminal {

QuoteLists::QuoteLists(TerminalServices &services, const ChartView &view, QWidget *window)
    : QObject(window), mServices(services), mView(view), mWindow(window) {
    mServices.selfStocks().setChangeListener([this] {
        if (mSelfStocks) {
            refreshSelfStocks();
        }
    });
}

QuoteLists::~QuoteLists() {
    mServices.selfStocks().setChangeListener({});
}

QuoteListDialog *QuoteLists::makeDialog(const char *name, const QString &title) {
    auto *dialog = new QuoteListDialog(mServices, mWindow);
    dialog->setObjectName(QLatin1String(name));
    dialog->setWindowTitle(title);
    connect(dialog, &QuoteListDialog::chosen, this, &QuoteLists::chosen);
    return dialog;
}

void QuoteLists::showSectors(const QString &key) {
    const QVector<QuoteList> sectors = mServices.sectorsOf(key);
    if (sectors.isEmpty()) {
        Q_EMIT refused(tr("%1 %2 不属于任何板块").arg(key, mServices.nameOf(key)));
        return;
    }
    if (!mSectors) {
        mSectors = makeDialog("sector_dialog", tr("所属板块分析"));
    }
    mSectors->setLists(sectors, key);
    mSectors->show();
    mSectors->raise();
}

void QuoteLists::makeSelfStocks() {
    mSelfStocks = makeDialog("self_stocks_dialog", tr("自选股"));
    mSelfStocks->setRemovable(true);
    connect(mSelfStocks, &QuoteListDialog::removeAsked, this, [this](const QString &list, const QString &key) {
        const QString refusal = mServices.selfStocks().removeStocks(list, {key});
        if (!refusal.isEmpty()) {
            Q_EMIT refused(refusal);
        }
    });
}

void QuoteLists::showSelfStocks() {
    if (!mSelfStocks) {
        makeSelfStocks();
    }
    refreshSelfStocks();
    mSelfStocks->show();
    mSelfStocks->raise();
}

void QuoteLists::refreshSelfStocks() {
    QVector<QuoteList> lists;
    for (const QString &group : mServices.selfStocks().groups()) {
        lists.append({group, mServices.selfStocks().stocks(group)});
    }
    mSelfStocks->setLists(lists, mView.instrument());
}

} // namespace terminal
