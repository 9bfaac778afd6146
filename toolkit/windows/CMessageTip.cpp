#include "host/toolkit/CMessageTip.h"

#include "host/toolkit/CUiResource.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <algorithm>

namespace GZ {
namespace {

constexpr int kGap = 3; ///< pixels between the widget and the bubble

class Bubble : public QLabel {
public:
    Bubble(QWidget *above, const QString &text, int width)
        : QLabel(text, above->window(), Qt::ToolTip | Qt::FramelessWindowHint) {
        setObjectName(QStringLiteral("message_tip"));
        setAttribute(Qt::WA_DeleteOnClose);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        setMargin(8);
        const CUiResource &theme = CUiResource::instance();
        setFont(theme.getFont(QStringLiteral("fnt_default_normal")));
        QPalette colors = palette();
        colors.setColor(QPalette::Window, theme.getColor(QStringLiteral("clr_menu_bg")));
        colors.setColor(QPalette::WindowText, theme.getColor(QStringLiteral("clr_menu_text")));
        setPalette(colors);
        setFrameStyle(QFrame::Box | QFrame::Plain);
        resize(sizeWithin(width));
    }

protected:
    void mousePressEvent(QMouseEvent *) override { close(); }

private:
    QSize sizeWithin(int width) const {
        const int margins = 2 * (margin() + frameWidth());
        const int wanted = fontMetrics().horizontalAdvance(text()) + margins;
        const int given = std::min(wanted, std::max(width, margins + 1));
        return QSize(given, heightForWidth(given));
    }
};

QPoint placeOf(const QRect &widget, const QSize &bubble, int side) {
    switch (side) {
    case Qt::AlignTop:
        return {widget.left(), widget.top() - kGap - bubble.height()};
    case Qt::AlignLeft:
        return {widget.left() - kGap - bubble.width(), widget.top()};
    case Qt::AlignRight:
        return {widget.right() + 1 + kGap, widget.top()};
    default:
        return {widget.left(), widget.bottom() + 1 + kGap};
    }
}

/// Held to the screen.
QPoint onScreen(const QPoint &place, const QSize &bubble, const QRect &screen) {
    return {std::max(screen.left(), std::min(place.x(), screen.right() + 1 - bubble.width())),
            std::max(screen.top(), std::min(place.y(), screen.bottom() + 1 - bubble.height()))};
}

QPointer<QWidget> shownBubble;

} // namespace

void CMessageTip::showTip(QWidget *widget, int side, const QString &text, int seconds, int width) {
    delete shownBubble.data();
    if (!widget || !widget->isVisible()) {
        return;
    }
    auto *bubble = new Bubble(widget, text, width);
    shownBubble = bubble;
    const QRect place(widget->mapToGlobal(QPoint()), widget->size());
    const QScreen *screen = QGuiApplication::screenAt(place.center());
    screen = screen ? screen : QGuiApplication::primaryScreen();
    bubble->move(onScreen(placeOf(place, bubble->size(), side), bubble->size(), screen->availableGeometry()));
    bubble->show();
    QTimer::singleShot(std::max(seconds, 0) * 1000, bubble, &QWidget::close);
}

} // namespace GZ
