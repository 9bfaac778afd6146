#pragma once

#include <QString>
#include <QtGlobal>

#include <vector>

namespace tests {

/// What the program holds at a moment.
struct MemorySample {
    double minute = 0.0; ///< of the run
    qint64 resident = 0; ///< bytes of memory that the system has given
    qint64 inUse = 0; ///< bytes that are allocated and not given back
    int widgets = 0;
    int descriptors = 0; ///< open files, pipes and sockets
    int requests = 0; ///< of formulas that live
};

/// What the program holds now; minute, widgets and requests are the caller's to fill in.
MemorySample memoryNow();

/// The sample as a line beneath memoryHeading().
QString memoryLine(const MemorySample &sample);
QString memoryHeading();

/// Samples of one run, in the order of time. Their growth is that of the median of the last fifth over the median of the
/// first one, from a minute on.
class MemoryCurve {
public:
    using Member = qint64 MemorySample::*;

    void add(const MemorySample &sample) { mSamples.push_back(sample); }
    /// In per cent; 0 with fewer than five samples from that minute on.
    double growth(Member member, double fromMinute) const;

private:
    std::vector<MemorySample> mSamples;
};

} // namespace tests
