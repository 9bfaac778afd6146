#include "terminal/app/SmartKeyboard.h"

#include "host/records/CStockInfo.h"
#include "host/records/Enumerations.h"
#include "host/windows/CSmartKeyboardDialog.h"

#include <QWidget>

namespace terminal {

SmartKeyboard::SmartKeyboard(QWidget *window) : QObject(window), mWindow(window) {}

void SmartKeyboard::open(const QString &text) {
    TC::CSmartKeyboardDialog *keyboard = TC::CSmartKeyboardDialog::instance();
    keyboard->setPickCallback(mWindow, [this](const TC::CStockInfo &picked, TC::ESmartKeyType type) {
        switch (type) {
        case TC::ESmartKeyType::Stock:
        case TC::ESmartKeyType::Index:
            Q_EMIT instrumentPicked(picked.key());
            break;
        case TC::ESmartKeyType::Shortcut:
            Q_EMIT instrumentPicked(picked.mCode == QLatin1String("03") ? QStringLiteral("SH000001")
                                                                        : QStringLiteral("SZ399001"));
            break;
        case TC::ESmartKeyType::Formula:
            Q_EMIT formulaPicked(picked.mCode);
            break;
        case TC::ESmartKeyType::Function:
            break;
        }
        Q_EMIT closed();
    });
    keyboard->setTitle(tr("键盘精灵"));
    keyboard->openFor(mWindow, text);
}

} // namespace terminal
