// Orders and deals from files.

#include "host/services/CFileClient.h"
#include "host/services/CHostClock.h"
#include "host/services/CLinkageManager.h"
#include "host/toolkit/CMessageTip.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "linkage/ImportLine.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <boost/bind/bind.hpp>

namespace TC {
namespace {

/// Values of mImportType.
enum EImport : int { eNoImport = -1, eOrders = 542, eDeals = 544 };

constexpr int kLineTaken = 2; ///< answer for every line, good or bad
constexpr int kTipSeconds = 3;
constexpr int kTipWidth = 300;

/// Asks for a file, as QFileDialog::getOpenFileName() does; empty when there is none. The parent may go while it asks,
/// and takes the dialog along.
QString askFile(QWidget *parent, const QString &caption) {
    const QPointer<QFileDialog> dialog = new QFileDialog(
        parent, caption, QStringLiteral("."), QStringLiteral("Excel Files(*.csv);;Excel Files(*.xls)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setPalette(parent->palette());
    const bool chosen = dialog->exec() == QDialog::Accepted && dialog;
    const QString path = chosen ? dialog->selectedFiles().value(0) : QString();
    delete dialog.data();
    return path;
}

using Import = void (CLinkageManager::*)(const std::string &, const std::string &, const std::string &, double,
                                         int, long long, int);

int handleLine(const QString &line, const QString &separator, Import import) {
    if (const std::optional<ImportLine> read = ImportLine::read(line, separator, hostNow())) {
        (CSingletonT<CLinkageManager>::instance().*import)(read->mAccount, read->mInstrument, read->mKey,
                                                           read->mPrice, read->mVolume, read->mTime,
                                                           read->mDirection);
    }
    return kLineTaken;
}

} // namespace

void CRealtimeLinkageSettingDialog::importOrder() {
    startImport(eOrders, tr("导入委托数据"), &CRealtimeLinkageSettingDialog::handleImportOrder);
}

void CRealtimeLinkageSettingDialog::importDeal() {
    startImport(eDeals, tr("导入成交数据"), &CRealtimeLinkageSettingDialog::handleImportDeal);
}

void CRealtimeLinkageSettingDialog::startImport(int type, const QString &caption,
                                                int (*handler)(const QString &, const QString &)) {
    const QPointer<CRealtimeLinkageSettingDialog> alive(this);
    const QString path = askFile(this, caption);
    if (path.isEmpty() || !alive) {
        return;
    }
    setImportEnabled(false);
    mImportType = type;
    const bool isCsv =
        QFileInfo(path).completeSuffix() == QLatin1String("csv"); // and neither "CSV" nor "a.csv"
    const QString separator = isCsv ? QStringLiteral(",") : QStringLiteral("\t");
    CManualSingletonT<CFileClient>::instance().readFileByLine(
        mImportSeq, isCsv ? EFileType::CommaSeparated : EFileType::Spreadsheet, path,
        boost::bind(handler, boost::placeholders::_1, separator));
}

int CRealtimeLinkageSettingDialog::handleImportOrder(const QString &line, const QString &separator) {
    return handleLine(line, separator, &CLinkageManager::importOrder);
}

int CRealtimeLinkageSettingDialog::handleImportDeal(const QString &line, const QString &separator) {
    return handleLine(line, separator, &CLinkageManager::importDeal);
}

void CRealtimeLinkageSettingDialog::slotImportFinished(int seq, bool bSuccess, QString /*qsMsg*/) {
    if (seq != mImportSeq) {
        return; // another reader's
    }
    if (!bSuccess && (mImportType == eOrders || mImportType == eDeals)) {
        const bool orders = mImportType == eOrders;
        GZ::CMessageTip::showTip(orders ? mImportOrderButton : mImportDealButton, Qt::AlignBottom,
                                 orders ? tr("委托导入失败, 请检查导入文件和本机Excel安装情况")
                                        : tr("成交导入失败, 请检查导入文件和本机Excel安装情况"),
                                 kTipSeconds, kTipWidth);
    }
    setImportEnabled(true);
    mImportType = eNoImport;
}

void CRealtimeLinkageSettingDialog::setImportEnabled(bool enabled) {
    mImportOrderButton->setEnabled(enabled);
    mImportDealButton->setEnabled(enabled);
}

void CRealtimeLinkageSettingDialog::clearImportData() {
    service().clearImportData();
}

} // namespace TC
