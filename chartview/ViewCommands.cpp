#include "chartview/ViewCommands.h"

#include "chartview/GraphSubject.h"
#include "chartview/ReplayRange.h"
#include "chartview/UserSettings.h"
#include "host/services/CIndexMainWindowHelper.h"
#include "host/services/CReplayManager.h"
#include "host/services/CSingletonT.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/Events.h"
#include "host/windows/CAddSelfStockDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPointer>

namespace TC {

void ViewCommands::toggleVolume() {
    mSubject.uiParam->mShowVolume = !mSubject.uiParam->mShowVolume;
    if (mSubject.isMain()) {
        mGraph.deliverEvent(eViewChanged, 0, 0, QString(), nullptr);
    }
}

void ViewCommands::toggleGradient() {
    changeSettings(mSubject.uiParam->service<CConfigService>().indexUserConfig(),
                   [](UserConfigRecord &settings) { settings.mShowGradient = settings.mShowGradient ? 0 : 1; });
    mGraph.deliverEvent(eViewChanged, 0, 0, QString(), nullptr);
}

void ViewCommands::toggleFilter() {
    if (!mSubject.uiParam->service<CConfigService>().indexUserConfig().read().mShowVwap) {
        return;
    }
    const int on =
        changeSettings(mSubject.uiParam->service<CConfigService>().indexUserConfig(),
                       [](UserConfigRecord &record) { record.mFilterStock = record.mFilterStock ? 0 : 1; })
            .mFilterStock;
    mGraph.deliverEvent(eFilterChanged, 0, on, QString(), nullptr);
}

bool ViewCommands::addSelfStock() {
    const QString key = mSubject.uiParam->getStock();
    if (mSubject.uiParam->service<CConfigService>().isClientType(EClientType::Trading)) {
        mGraph.deliverEvent(eSelfStockAsked, 0, 0, key, nullptr);
        return true;
    }
    if (key.isEmpty()) {
        return false;
    }
    const QPointer<CAddSelfStockDialog> dialog = new CAddSelfStockDialog({key}, &mGraph);
    dialog->exec();
    if (dialog) { // it goes with the graph
        dialog->deleteLater();
    }
    return true;
}

void ViewCommands::showContrast() {
    mSubject.uiParam->service<CIndexMainWindowHelper>().showContrast(mSubject.uiParam->getStock());
}

void ViewCommands::setReplayRange(const QString &text) {
    const ReplayRange range = ReplayRange::fromText(text);
    mSubject.uiParam->service<CReplayManager>().setThousandRange(toMilliseconds(range.start),
                                                                 toMilliseconds(range.end));
    mGraph.deliverEvent(eReplayRangeAsked, static_cast<int>(range.start), static_cast<int>(range.end),
                        range.key, nullptr);
}

} // namespace TC
