#include "linkage/TradeImport.h"

#include "host/services/CFileClient.h"
#include "host/services/CHostClock.h"
#include "host/services/CLinkageManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CFileQuestion.h"
#include "host/toolkit/CMessageTip.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "linkage/ImportLine.h"
#include "linkage/LinkageControls.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <boost/bind/bind.hpp>

namespace TC {
namespace {

constexpr int kLineTaken = 2;
constexpr int kImportButtonWidth = 90;
constexpr int kTipSeconds = 3;
constexpr int kTipWidth = 300;

/// Empty when there is none.
QString askFile(QWidget *parent, const QString &caption) {
    GZ::CFileQuestion dialog(parent, caption, QStringLiteral("."));
    dialog->setNameFilter(QStringLiteral("Excel Files(*.csv);;Excel Files(*.xls)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setPalette(parent->palette());
    return dialog.ask().value(0);
}

using Import = void (CLinkageManager::*)(const std::string &, const std::string &, const std::string &, double,
                                         int, long long, int);

int takeLine(const QString &line, const QString &separator, Import import, const ServiceContext &services) {
    if (const std::optional<ImportLine> read =
            ImportLine::read(line, separator, services.get<CHostClock>().currentDateTime())) {
        (services.get<CLinkageManager>().*import)(read->mAccount, read->mInstrument, read->mKey, read->mPrice,
                                                  read->mVolume, read->mTime, read->mDirection);
    }
    return kLineTaken;
}

} // namespace

TradeImport::TradeImport()
    : mOrdersButton(makeBarButton(SettingWords::tr("导入委托"), eImportOrders, kImportButtonWidth)),
      mDealsButton(makeBarButton(SettingWords::tr("导入成交"), eImportDeals, kImportButtonWidth)) {}

void TradeImport::start(QWidget *parent, EKind kind, LineHandler handler) {
    const QPointer<QWidget> alive(parent);
    const QString path =
        askFile(parent, kind == eOrders ? SettingWords::tr("导入委托数据") : SettingWords::tr("导入成交数据"));
    if (path.isEmpty() || !alive) {
        return;
    }
    setEnabled(false);
    mKind = kind;
    const bool isCsv =
        QFileInfo(path).completeSuffix() == QLatin1String("csv"); // and neither "CSV" nor "a.csv"
    const QString separator = isCsv ? QStringLiteral(",") : QStringLiteral("\t");
    const ServiceContext &services = ServiceContext::of(parent);
    services.get<CFileClient>().readFileByLine(
        mSeq, isCsv ? EFileType::CommaSeparated : EFileType::Spreadsheet, path,
        [handler, separator, &services](const QString &line) { return handler(line, separator, services); });
}

void TradeImport::finish(int seq, bool success) {
    if (seq != mSeq) {
        return;
    }
    if (!success && mKind != eNothing) {
        const bool orders = mKind == eOrders;
        GZ::CMessageTip::showTip(orders ? mOrdersButton : mDealsButton, Qt::AlignBottom,
                                 orders ? SettingWords::tr("委托导入失败, 请检查导入文件和本机Excel安装情况")
                                        : SettingWords::tr("成交导入失败, 请检查导入文件和本机Excel安装情况"),
                                 kTipSeconds, kTipWidth);
    }
    setEnabled(true);
    mKind = eNothing;
}

void TradeImport::setEnabled(bool enabled) {
    mOrdersButton->setEnabled(enabled);
    mDealsButton->setEnabled(enabled);
}

int TradeImport::takeOrder(const QString &line, const QString &separator, const ServiceContext &services) {
    return takeLine(line, separator, &CLinkageManager::importOrder, services);
}

int TradeImport::takeDeal(const QString &line, const QString &separator, const ServiceContext &services) {
    return takeLine(line, separator, &CLinkageManager::importDeal, services);
}

} // namespace TC
