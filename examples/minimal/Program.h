#pragma once

/// \file
/// How an example runs: a minute of the market every second. "--snapshot FILE" goes on by some minutes, writes a picture
/// instead and ends.

#include "Host.h"

#include <timeshare/containers/CRealtimeMainWidget.h>

#include <QApplication>
#include <QLoggingCategory>
#include <QTimer>

#include <functional>

namespace example {

/// `tell` is called after each minute.
inline int run(TC::CRealtimeMainWidget &view, Market &market, const std::function<void()> &tell) {
    const auto minute = [&] {
        if (market.goOn()) {
            tell();
        }
    };
    QLoggingCategory::setFilterRules(
        QStringLiteral("timeshare.data=true")); // a word where data cannot be right
    view.resize(1000, 560);
    view.show();
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--snapshot")) {
        for (int i = 0; i < 30; ++i) {
            minute();
        }
        QApplication::processEvents();
        return view.grab().save(arguments.value(2)) ? 0 : 1;
    }
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, minute);
    timer.start(1000);
    return QApplication::exec();
}

} // namespace example
