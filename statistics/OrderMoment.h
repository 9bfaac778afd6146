#pragma once

#include "host/records/COrderDetail.h"

#include <QtGlobal>

#include <optional>

namespace TC {

/// When an order was given, in seconds since the epoch: its date "yyyyMMdd" and its time, which is "hh:mm:ss" or
/// "hhmmss", of local time. Nothing when the two texts are no date and time.
std::optional<qint64> orderMoment(const kvservice::COrderDetail &order);

} // namespace TC
