#pragma once

#include "terminal/app/TerminalServices.h"
#include "terminal/market/MarketDate.h"

#include <QTemporaryDir>

#include <cstdio>
#include <ctime>
#include <memory>

/// The services of the terminal over a market of their own, at 14:00 of a simulated day, when most of it is there.
/// Null, and a line on standard error, when they cannot be opened.
inline std::unique_ptr<terminal::TerminalServices> openBenchTerminal(const QTemporaryDir &folder, double pace) {
    terminal::TerminalSettings settings;
    settings.store = folder.filePath(QStringLiteral("market.db"));
    settings.start = terminal::timeOf(QDate(2026, 11, 20), 840);
    settings.speed = pace;
    QString error;
    std::unique_ptr<terminal::TerminalServices> services = terminal::TerminalServices::open(settings, error);
    if (!services) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
    }
    return services;
}

/// What a clock tells, in seconds.
inline double secondsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}
