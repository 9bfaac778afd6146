#include "terminal/app/StageRankingDialog.h"

#include "host/toolkit/Wording.h"
#include "terminal/app/StageRankingModel.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/market/MarketDate.h"
#include "terminal/threads/ThreadStart.h"
#include "toolkit/windows/WindowLook.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QHideEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace terminal {
namespace {

QString clockText(qint64 second) {
    return marketDateTime(second * 1000).toString(GZ::kMinuteFormat);
}

} // namespace

StageRankingDialog::StageRankingDialog(TerminalServices &services, QWidget *parent)
    : QDialog(parent), mServices(services), mModel(new StageRankingModel(this)), mTable(new QTableView(this)),
      mMessage(new QLabel(this)), mProgress(new QProgressBar(this)), mStop(new QPushButton(tr("停止"), this)) {
    setObjectName(QStringLiteral("stage_ranking"));
    mMessage->setObjectName(QStringLiteral("message"));
    mMessage->setTextFormat(Qt::PlainText);
    mStop->setAutoDefault(false);
    mTable->setModel(mModel);
    mTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    mTable->setSelectionMode(QAbstractItemView::SingleSelection);
    mTable->setShowGrid(false);
    mTable->setWordWrap(false);
    mTable->setTabKeyNavigation(false);
    mTable->verticalHeader()->setDefaultSectionSize(mTable->fontMetrics().height() + 6);
    mTable->horizontalHeader()->setHighlightSections(false);
    connect(mTable, &QTableView::activated, this, [this](const QModelIndex &index) { choose(index.row()); });
    connect(mStop, &QPushButton::clicked, &mJob, &BackgroundJob::stop);
    connect(&mJob, &BackgroundJob::progressed, this, &StageRankingDialog::showProgress);
    connect(&mJob, &BackgroundJob::finished, this, &StageRankingDialog::showRows);

    auto *foot = new QHBoxLayout;
    foot->addWidget(mMessage, 1);
    foot->addWidget(mProgress);
    foot->addWidget(mStop);
    auto *column = new QVBoxLayout(this);
    column->addWidget(mTable, 1);
    column->addLayout(foot);
    resize(860, 460);
    setRanking(false);
    onUiResourceChanged();
}

StageRankingDialog::~StageRankingDialog() = default;

void StageRankingDialog::rank(const StageQuestion &question) {
    mQuestion = question;
    setWindowTitle(tr("阶段排序 %1 %2 - %3 %4")
                       .arg(dateAt(question.start * 1000).toString(GZ::kDateFormat), clockText(question.start),
                            clockText(question.end), question.words));
    mModel->setRows({});
    if (question.start > question.end) {
        mMessage->setText(tr("起始时间晚于终止时间，请重新选择时段"));
        return;
    }
    mMessage->setText(tr("正在计算"));
    setRanking(true);
    mJob.start([this, question](BackgroundJob &job) {
        mRows = stageRows(mServices.store(), mServices.exchange(), question.start * 1000, question.end * 1000,
                          [&job](int done, int total) {
                              job.tell(done, total);
                              return !job.isStopped();
                          });
        rankStage(mRows, question.criterion);
    });
}

QString StageRankingDialog::message() const {
    return mMessage->text();
}

void StageRankingDialog::showProgress() {
    mProgress->setMaximum(mJob.total());
    mProgress->setValue(mJob.done());
}

void StageRankingDialog::showRows() {
    setRanking(false);
    const int count = mRows.size();
    mModel->setRows(std::exchange(mRows, {}));
    mTable->setSortingEnabled(false);
    mTable->horizontalHeader()->setSortIndicator(StageRankingModel::eFirstNumber + mQuestion.criterion,
                                                 Qt::DescendingOrder);
    mTable->setSortingEnabled(true);
    mTable->resizeColumnsToContents();
    mTable->selectRow(0);
    mTable->setFocus();
    mMessage->setText(mJob.isUndone()    ? noThreadText()
                      : mJob.isStopped() ? tr("已停止，%n 个品种", nullptr, count)
                      : count == 0       ? tr("该时段没有成交的品种")
                                         : tr("%n 个品种，双击或回车显示", nullptr, count));
}

void StageRankingDialog::setRanking(bool ranking) {
    mProgress->setVisible(ranking);
    mProgress->setMaximum(0); // until the number of instruments is known
    mStop->setVisible(ranking);
}

void StageRankingDialog::choose(int row) {
    if (row >= 0 && row < mModel->rowCount()) {
        Q_EMIT chosen(mModel->row(row).key, dateAt(mQuestion.start * 1000));
    }
}

/// What nobody waits for any more is not worked out.
void StageRankingDialog::hideEvent(QHideEvent *event) {
    QDialog::hideEvent(event);
    if (!event->spontaneous()) {
        mJob.stop();
    }
}

void StageRankingDialog::onUiResourceChanged() {
    setPalette(GZ::windowPalette());
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    mTable->viewport()->update();
}

} // namespace terminal
