#include "terminal/app/StatusLine.h"

#include "host/toolkit/CUiResource.h"
#include "host/toolkit/Wording.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>

namespace terminal {
namespace {

constexpr int kStatusHeight = 26; ///< pixels

QPalette errorPalette(QPalette colors) {
    colors.setColor(QPalette::WindowText,
                    GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_index_default_rise")));
    return colors;
}

} // namespace

StatusLine::StatusLine(QWidget *parent)
    : QWidget(parent), mText(new QLabel(this)), mTrouble(new QLabel(this)), mClock(new QLabel(this)) {
    setFixedHeight(kStatusHeight);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 0, 8, 0);
    mText->setObjectName(QStringLiteral("status"));
    mText->setTextFormat(Qt::PlainText);
    mText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(mText, 1);
    mTrouble->setObjectName(QStringLiteral("trouble"));
    mTrouble->setTextFormat(Qt::PlainText);
    mTrouble->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    mTrouble->hide();
    layout->addWidget(mTrouble, 1);
    layout->addWidget(mClock);
}

void StatusLine::say(const QString &text, bool isError) {
    mIsErrorShown = isError;
    mText->setPalette(isError ? errorPalette(palette()) : palette());
    mText->setText(text);
    mText->setToolTip(text);
}

void StatusLine::sayLasting(const QString &error) {
    if (error.isEmpty()) {
        return;
    }
    say(error, true);
    mIsErrorShown = false;
}

void StatusLine::clearError() {
    if (mIsErrorShown) {
        say({});
    }
}

void StatusLine::setMarketTime(const QDateTime &time, bool isTrading) {
    const QString clock = isTrading ? QString(GZ::kSecondFormat) : QString(GZ::kMinuteFormat);
    mClock->setText(tr("市场时间 %1").arg(time.toString(GZ::kDateFormat + QLatin1Char(' ') + clock)));
}

void StatusLine::setTrouble(const QString &text) {
    mTrouble->setVisible(!text.isEmpty());
    mTrouble->setPalette(errorPalette(palette()));
    mTrouble->setText(text);
    mTrouble->setToolTip(text);
}

QString StatusLine::text() const {
    return mText->text();
}

} // namespace terminal
