#include "chartview/AccountCommands.h"

#include "chartview/FormulaCommands.h"
#include "chartview/GraphSubject.h"
#include "chartview/ShownAccounts.h"
#include "chartview/UserSettings.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QAction>
#include <QPointer>
#include <QStringList>

namespace TC {

void AccountCommands::update(const QString &accounts, bool add) {
    const QStringList parts = accounts.split(QLatin1Char(','));
    const ShownAccounts shown(*mSubject.uiParam);
    if (parts.size() == 1 && add && shown.isListed(accounts)) {
        return;
    }
    QList<QString> &list = shown.list();
    for (const QString &account : parts) {
        if (!add) {
            list.removeOne(account);
        } else if (!list.contains(account)) {
            list.append(account);
        }
    }
    tellChange();
}

void AccountCommands::update(const QList<QString> &accounts, bool add) {
    if (!accounts.isEmpty()) {
        update(QStringList(accounts).join(QLatin1Char(',')), add);
    }
}

void AccountCommands::toggleAll(QAction &entry) {
    const ShownAccounts shown(*mSubject.uiParam);
    QList<QString> &list = shown.list();
    for (const QString &account : shown.offered()) {
        if (mMenu.allShown) {
            list.removeAll(account);
        } else if (!list.contains(account)) {
            list.append(account);
        }
    }
    for (QAction *action : qAsConst(mMenu.actions)) {
        action->setChecked(!mMenu.allShown);
    }
    entry.setChecked(!mMenu.allShown);
    tellChange();
}

void AccountCommands::toggle(const QString &account) {
    QList<QString> &list = ShownAccounts(*mSubject.uiParam).list();
    if (!list.removeOne(account)) {
        list.append(account);
    }
    tellChange();
}

void AccountCommands::tellChange() {
    ShownAccounts(*mSubject.uiParam).switchView();
    mGraph.deliverEvent(eLinkageDatasChanged, 0, 0, QString(), nullptr);
}

void AccountCommands::toggleFormula(const QAction *entry) {
    const bool on = changeSettings(mSubject.uiParam->service<CConfigService>().indexUserConfig(),
                                   [](UserConfigRecord &settings) { settings.mShowVwap = !settings.mShowVwap; })
                        .mShowVwap;
    if (!entry || !mSubject.isMain() || !FormulaCommands::isAttached(entry->text(), *mSubject.uiParam)) {
        return;
    }
    const QPointer<QWidget> alive(&mGraph);
    mGraph.deliverEvent(eFormulaAsked, 0, on ? ePutFormulaOn : eTakeFormulaOff, entry->text(), nullptr);
    if (alive) {
        update(mSubject.uiParam->mFormulaAccount, on);
    }
}

} // namespace TC
