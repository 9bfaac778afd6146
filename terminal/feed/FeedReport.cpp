#include "terminal/feed/FeedReport.h"

#include "host/toolkit/Wording.h"
#include "terminal/market/MarketDate.h"

#include <QCoreApplication>
#include <QStringList>

namespace terminal {
namespace {

struct ReportWords {
    Q_DECLARE_TR_FUNCTIONS(FeedReport)
};

QString clockOf(qint64 time) {
    return marketDateTime(time).toString(GZ::kSecondFormat);
}

} // namespace

QString feedText(const FeedReport &report) {
    QStringList texts;
    if (report.line == LineState::Refused) {
        texts.append(
            ReportWords::tr("行情服务器不接受登录凭据（自 %1），行情停在此时").arg(clockOf(report.lineSince)));
    } else if (report.line == LineState::Connecting) {
        texts.append(ReportWords::tr("行情服务器连接不上（自 %1），正在重试，行情停在此时")
                         .arg(clockOf(report.lineSince)));
    } else if (report.silentSince != 0) {
        texts.append(ReportWords::tr("行情源没有消息（自 %1），行情停在此时").arg(clockOf(report.silentSince)));
    }
    if (report.behind > 0) {
        texts.append(ReportWords::tr("%n 个证券的分时数据不全（自 %1），正在补齐", nullptr, report.behind)
                         .arg(clockOf(report.behindSince)));
    }
    if (report.newerSince != 0) {
        texts.append(ReportWords::tr("行情源的数据版本高于本程序（自 %1），这些数据没有显示，请升级本程序")
                         .arg(clockOf(report.newerSince)));
    }
    return GZ::phrasesText(texts);
}

} // namespace terminal
