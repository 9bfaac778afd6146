#include "tests/soak/MemoryCurve.h"

#include "tests/support/BytesInUse.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <unistd.h>

namespace tests {
namespace {

constexpr double kMegabyte = 1024.0 * 1024.0;
constexpr size_t kParts = 5;

qint64 residentBytes() {
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

double median(std::vector<qint64> values) {
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    const auto upper = static_cast<double>(values[middle]);
    return values.size() % 2 ? upper : (static_cast<double>(values[middle - 1]) + upper) / 2.0;
}

} // namespace

MemorySample memoryNow() {
    MemorySample sample;
    sample.resident = residentBytes();
    sample.inUse = bytesInUse();
    sample.descriptors = static_cast<int>(QDir(QStringLiteral("/proc/self/fd"))
                                              .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                                              .size());
    return sample;
}

QString memoryHeading() {
    return QStringLiteral("minute  resident MB  in use MB  widgets  descriptors  requests");
}

QString memoryLine(const MemorySample &sample) {
    return QString::asprintf(
        "%6.2f  %11.1f  %9.2f  %7d  %11d  %8d", sample.minute, static_cast<double>(sample.resident) / kMegabyte,
        static_cast<double>(sample.inUse) / kMegabyte, sample.widgets, sample.descriptors, sample.requests);
}

double MemoryCurve::growth(Member member, double fromMinute) const {
    std::vector<qint64> values;
    for (const MemorySample &sample : mSamples) {
        if (sample.minute >= fromMinute) {
            values.push_back(sample.*member);
        }
    }
    if (values.size() < kParts) {
        return 0.0;
    }
    const auto part = static_cast<std::ptrdiff_t>(values.size() / kParts);
    const double first = median({values.begin(), values.begin() + part});
    const double last = median({values.end() - part, values.end()});
    return (last / first - 1.0) * 100.0;
}

} // namespace tests
