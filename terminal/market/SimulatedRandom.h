#pragma once

#include <QString>
#include <QtGlobal>

namespace terminal {

/// Random numbers that are the same on every machine (SplitMix64 of Steele, Lea and Flood).
class SimulatedRandom {
public:
    explicit SimulatedRandom(quint64 seed) : mState(seed) {}

    /// A seed made of parts; a different part gives an unrelated one.
    static quint64 mix(quint64 seed, quint64 part) {
        SimulatedRandom random(seed ^ (part * 0x9e3779b97f4a7c15ULL));
        random.next();
        return random.next();
    }
    static quint64 mix(quint64 seed, const QString &part) {
        for (const QChar c : part) {
            seed = mix(seed, c.unicode());
        }
        return seed;
    }

    quint64 next() {
        mState += 0x9e3779b97f4a7c15ULL;
        quint64 z = mState;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }
    /// 0 up to, without, 1.
    double uniform() { return static_cast<double>(next() >> 11) * 0x1.0p-53; }
    /// A whole number from 0 up to, without, `count`.
    int below(int count) { return static_cast<int>(uniform() * count); }
    /// Nearly normal, mean 0 and deviation 1: the sum of twelve uniform numbers, which needs no function of the
    /// mathematical library and so is the same everywhere.
    double normal() {
        double sum = -6.0;
        for (int i = 0; i < 12; ++i) {
            sum += uniform();
        }
        return sum;
    }

private:
    quint64 mState;
};

} // namespace terminal
