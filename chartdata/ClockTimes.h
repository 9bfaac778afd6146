#pragma once

#include <QTime>

#include <map>
#include <string>

/// \file
/// Clock times of trade records, of which a day has thousands.

namespace TC {

/// Clock time of an order or deal, from "hh:mm:ss" or else "hhmmss". Null when the text is neither.
QTime recordTime(const std::string &text);

/// Local clock times of many moments, seconds since the epoch, near each other: a zone is asked once per quarter
/// of an hour.
class ClockTimes {
public:
    QTime operator()(int seconds);

private:
    std::map<int, QTime> mQuarters; ///< clock time by the quarter's count since the epoch
};

} // namespace TC
