#include "tests/soak/StolenTime.h"

#include <QFile>
#include <QList>

#include <algorithm>
#include <unistd.h>

namespace tests {

std::vector<double> stolenTimes(const QByteArray &stat, double ticksOfSecond) {
    constexpr int kSteal = 8;
    std::vector<double> times;
    for (const QByteArray &line : stat.split('\n')) {
        const bool isOne = line.startsWith("cpu") && !line.startsWith("cpu ");
        if (isOne) {
            times.push_back(line.simplified().split(' ').value(kSteal).toDouble() * 1000.0 / ticksOfSecond);
        }
    }
    return times;
}

std::vector<double> stolenTimes() {
    QFile file(QStringLiteral("/proc/stat"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return stolenTimes(file.readAll(), static_cast<double>(sysconf(_SC_CLK_TCK)));
}

double mostStolen(const std::vector<double> &before, const std::vector<double> &after) {
    double most = 0.0;
    for (size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
        most = std::max(most, after[i] - before[i]);
    }
    return most;
}

} // namespace tests
