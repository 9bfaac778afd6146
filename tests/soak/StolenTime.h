#pragma once

#include <QByteArray>

#include <vector>

namespace tests {

/// Milliseconds, of each processor since the machine started, in which the host of this virtual machine had no processor for
/// it: the eighth number of the lines cpu0, cpu1, … of /proc/stat, in ticks of which there are so many a second.
std::vector<double> stolenTimes(const QByteArray &stat, double ticksOfSecond);

/// Those of this machine; empty where the system does not tell.
std::vector<double> stolenTimes();

/// The most by which that of one processor has grown.
double mostStolen(const std::vector<double> &before, const std::vector<double> &after);

} // namespace tests
