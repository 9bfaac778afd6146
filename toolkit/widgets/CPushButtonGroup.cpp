#include "host/toolkit/CPushButtonGroup.h"

#include "host/toolkit/CSmallNormalButton.h"
#include "host/toolkit/ThemeColor.h"

#include <QPainter>

#include <numeric>
#include <utility>

namespace GZ {
namespace {

constexpr int kGroupHeight = 24;

/// The lines around and between the buttons, through which the mouse falls.
class GroupFrame : public QWidget {
public:
    GroupFrame(QString colorKey, const QList<int> &widths, QWidget *parent)
        : QWidget(parent), mColorKey(std::move(colorKey)), mWidths(widths) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.setPen(themeColor(mColorKey));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        int x = 0;
        for (const int buttonWidth : mWidths) {
            if (x > 0) {
                painter.drawLine(x, 0, x, height() - 1);
            }
            x += buttonWidth;
        }
    }

private:
    QString mColorKey;
    const QList<int> &mWidths;
};

} // namespace

CPushButtonGroup::CPushButtonGroup(const QString &borderKey, QWidget *parent)
    : CBaseWidget(parent), mFrame(new GroupFrame(borderKey, mWidths, this)) {
    mFrame->setObjectName(QStringLiteral("frame"));
}

void CPushButtonGroup::addButton(int id, const QString &text, int width) {
    auto *button = new CSmallNormalButton(id, 0, 0, this);
    button->setText(text);
    button->setCheckable(true);
    button->setAutoExclusive(true);
    button->setFocusPolicy(Qt::NoFocus);
    dress(button);
    mButtons.append(button);
    mWidths.append(width);
    mFrame->raise();
    placeButtons();
    updateGeometry();
}

void CPushButtonGroup::setCheckedId(int id) {
    for (CSmallNormalButton *button : std::as_const(mButtons)) {
        if (button->id() == id) {
            button->setChecked(true);
        }
    }
}

int CPushButtonGroup::checkedId() const {
    for (const CSmallNormalButton *button : mButtons) {
        if (button->isChecked()) {
            return button->id();
        }
    }
    return -1;
}

void CPushButtonGroup::setTextColorKeys(const QString &normal, const QString &hovered, const QString &pressed,
                                        const QString &disabled) {
    mTextColorKeys = {normal, hovered, pressed, disabled};
    for (CSmallNormalButton *button : std::as_const(mButtons)) {
        dress(button);
    }
}

void CPushButtonGroup::setBackgroundKeys(const QString &prefix) {
    mBackgroundPrefix = prefix;
    for (CSmallNormalButton *button : std::as_const(mButtons)) {
        dress(button);
    }
}

QSize CPushButtonGroup::sizeHint() const {
    return {std::accumulate(mWidths.begin(), mWidths.end(), 0), kGroupHeight};
}

void CPushButtonGroup::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    placeButtons();
}

/// Gives a button the colours that were set; those that were not stay the button's own.
void CPushButtonGroup::dress(CSmallNormalButton *button) const {
    if (!mTextColorKeys[0].isEmpty()) {
        button->setTextColorKeys(mTextColorKeys[0], mTextColorKeys[1], mTextColorKeys[2], mTextColorKeys[3]);
    }
    if (!mBackgroundPrefix.isEmpty()) {
        button->setBackgroundKeys(mBackgroundPrefix);
    }
}

void CPushButtonGroup::placeButtons() {
    mFrame->setGeometry(rect());
    int x = 0;
    for (int i = 0; i < mButtons.size(); ++i) {
        mButtons[i]->setGeometry(x, 0, mWidths[i], height());
        x += mWidths[i];
    }
}

} // namespace GZ
