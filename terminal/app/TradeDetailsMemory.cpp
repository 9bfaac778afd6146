#include "terminal/app/TradeDetailsMemory.h"

#include "containers/CRealtimeMainWidget.h"
#include "host/services/CLinkageManager.h"
#include "terminal/config/ConfigService.h"

#include <QJsonObject>

namespace terminal {
namespace {

const QString kSection = QStringLiteral("tradeDetails"); ///< part of the configuration
const QString kSeeByStrategy = QStringLiteral("seebystrategy");
const QString kBalance = QStringLiteral("balance");

} // namespace

TradeDetailsMemory::TradeDetailsMemory(ConfigService &config, TC::CRealtimeMainWidget &chart)
    : mConfig(config), mChart(chart) {
    const QJsonObject kept = mConfig.section(kSection);
    for (auto entry = kept.begin(); entry != kept.end(); ++entry) {
        if (entry.value().isBool() && entry.key() != kSeeByStrategy) {
            mKept[entry.key()] = entry.value().toBool();
        }
    }
    mChart.presetLinkageDialogSetting(mKept);
    // The view's own document tells it as well, and the dialog reads it the other way round: all are seen at first.
    mChart.presetLinkageDialogSetting({{kSeeByStrategy, true}});
    if (mKept.value(kBalance)) { // the dialog starts it only when it is checked by hand
        TC::CSingletonT<TC::CLinkageManager>::instance().startBalanceCalculator();
    }
}

void TradeDetailsMemory::keep() {
    QMap<QString, bool> now = mChart.getLinkageDialogSetting();
    now.remove(kSeeByStrategy);
    if (now == mKept) {
        return;
    }
    mKept = now;
    QJsonObject fields;
    for (auto entry = now.begin(); entry != now.end(); ++entry) {
        fields[entry.key()] = entry.value();
    }
    mConfig.changeSection(kSection, fields);
}

} // namespace terminal
