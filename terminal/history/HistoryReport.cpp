#include "terminal/history/HistoryReport.h"

#include "host/toolkit/Wording.h"
#include "terminal/market/MarketDate.h"

#include <QCoreApplication>
#include <QStringList>

namespace terminal {
namespace {

struct HistoryWords {
    Q_DECLARE_TR_FUNCTIONS(HistoryReport)
};

QString troubleText(HistoryTrouble trouble) {
    switch (trouble) {
    case HistoryTrouble::Gone:
        return HistoryWords::tr("历史服务器连接不上");
    case HistoryTrouble::Slow:
        return HistoryWords::tr("历史服务器没有应答");
    case HistoryTrouble::Refused:
        return HistoryWords::tr("历史服务器不接受登录凭据");
    case HistoryTrouble::Unprepared:
        return HistoryWords::tr("历史服务器上还没有历史行情");
    case HistoryTrouble::Newer:
        return HistoryWords::tr("历史服务器的数据版本高于本程序，请升级本程序");
    case HistoryTrouble::Failed:
        return HistoryWords::tr("历史服务器出错");
    case HistoryTrouble::Cache:
        return HistoryWords::tr("历史行情写不进本机的行情库，请检查磁盘");
    case HistoryTrouble::None:
    case HistoryTrouble::BadDay:
        break;
    }
    return {};
}

} // namespace

QString historyText(const HistoryReport &report) {
    QStringList texts;
    const QString trouble = troubleText(report.failure.trouble);
    if (!trouble.isEmpty()) {
        const QString since = marketDateTime(report.since).toString(GZ::kSecondFormat);
        texts.append(report.waiting > 0 ? HistoryWords::tr("%1（自 %2），%n 个证券的历史分时不全，正在重试",
                                                           nullptr, report.waiting)
                                              .arg(trouble, since)
                                        : HistoryWords::tr("%1（自 %2），正在重试").arg(trouble, since));
    }
    if (report.badDays > 0) {
        texts.append(
            HistoryWords::tr("历史服务器上 %n 个交易日的数据不合理，没有取用", nullptr, report.badDays));
    }
    return GZ::phrasesText(texts);
}

} // namespace terminal
