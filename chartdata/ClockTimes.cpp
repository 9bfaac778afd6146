#include "chartdata/ClockTimes.h"

#include "host/toolkit/Text.h"

namespace TC {
namespace {

constexpr int kQuarter = 900; ///< seconds; zones change at its ends

} // namespace

// Written out since QTime::fromString takes ten microseconds.
QTime recordTime(const std::string &text) {
    const auto number = [&text](std::size_t at) {
        const auto digit = [&text](std::size_t i) {
            return text[i] >= '0' && text[i] <= '9' ? text[i] - '0' : 99;
        };
        return digit(at) * 10 + digit(at + 1);
    };
    if (text.size() == 8 && text[2] == ':' && text[5] == ':') {
        return QTime(number(0), number(3), number(6));
    }
    return text.size() == 6 ? QTime(number(0), number(2), number(4)) : QTime();
}

QTime ClockTimes::operator()(int seconds) {
    const int quarter = seconds / kQuarter - (seconds % kQuarter < 0 ? 1 : 0);
    const auto found = mQuarters.find(quarter);
    const QTime start = found != mQuarters.end()
                            ? found->second
                            : mQuarters[quarter] = GZ::secondToQDateTime(qint64(quarter) * kQuarter).time();
    return start.addSecs(static_cast<int>(seconds - qint64(quarter) * kQuarter));
}

} // namespace TC
