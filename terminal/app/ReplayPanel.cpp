#include "terminal/app/ReplayPanel.h"

#include "host/toolkit/Wording.h"
#include "terminal/replay/ReplayService.h"
#include "toolkit/windows/WindowLook.h"

#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace terminal {
namespace {

constexpr int kReplayRefresh = 200; ///< milliseconds
constexpr int kSecond = 1000;

QString clock(qint64 seconds) {
    return QDateTime::fromSecsSinceEpoch(seconds).toString(GZ::kShortDateFormat + QLatin1Char(' ') +
                                                           GZ::kMinuteFormat);
}

} // namespace

ReplayPanel::ReplayPanel(ReplayService &replay, QWidget *parent)
    : QDialog(parent), mReplay(replay), mTime(new QLabel(this)), mPause(new QPushButton(this)),
      mPace(new QComboBox(this)) {
    setObjectName(QStringLiteral("replay_panel"));
    setWindowTitle(tr("行情回放"));
    mTime->setTextFormat(Qt::PlainText);
    mPause->setObjectName(QStringLiteral("replay_pause"));
    mPause->setCheckable(true);
    mPause->setAutoDefault(false);
    for (const int minutes : {1, 2, 5, 10, 50}) {
        mPace->addItem(tr("每秒 %n 分钟", nullptr, minutes), kSecond / minutes);
    }
    auto *again = new QPushButton(tr("重新开始"), this);
    again->setObjectName(QStringLiteral("replay_again"));
    again->setAutoDefault(false);
    auto *end = new QPushButton(tr("退出回放"), this);
    end->setObjectName(QStringLiteral("replay_end"));
    end->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    for (QWidget *control : {static_cast<QWidget *>(mPause), static_cast<QWidget *>(mPace),
                             static_cast<QWidget *>(again), static_cast<QWidget *>(end)}) {
        buttons->addWidget(control);
    }
    auto *column = new QVBoxLayout(this);
    column->addWidget(mTime);
    column->addLayout(buttons);

    connect(mPause, &QPushButton::toggled, this, &ReplayPanel::setPaused);
    connect(mPace, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this] { mReplay.setPace(mPace->currentData().toInt()); });
    connect(again, &QPushButton::clicked, this, [this] {
        mReplay.setThousandRange(mStart * 1000, mEnd * 1000);
        begin(mInstrument, mStart, mEnd);
    });
    connect(end, &QPushButton::clicked, this, &ReplayPanel::endAsked);
    connect(&mReplay, &ReplayService::finished, this, [this] { mFinished = true; });
    connect(&mTimer, &QTimer::timeout, this, &ReplayPanel::tellTime);
    mTimer.start(kReplayRefresh);
    setPaused(false);
    onUiResourceChanged();
}

void ReplayPanel::begin(const QString &instrument, qint64 start, qint64 end) {
    mInstrument = instrument;
    mStart = start;
    mEnd = end;
    mFinished = false;
    mReplay.setPace(mPace->currentData().toInt());
    mPause->setChecked(false);
    tellTime();
}

void ReplayPanel::setPaused(bool paused) {
    mReplay.setPaused(paused);
    mPause->setText(paused ? tr("继续") : tr("暂停"));
}

void ReplayPanel::tellTime() {
    const QString range = tr("%1 %2 至 %3").arg(mInstrument, clock(mStart), clock(mEnd));
    const qint64 now = mReplay.replayTime() / 1000;
    const QString state = mFinished ? tr("回放结束") : now > 0 ? tr("回放到 %1").arg(clock(now)) : QString();
    mTime->setText(range + QStringLiteral("    ") + state);
}

void ReplayPanel::onUiResourceChanged() {
    setPalette(GZ::windowPalette());
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
}

} // namespace terminal
