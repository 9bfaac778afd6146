#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QtGlobal>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace TC {

/// Tells what a picture was drawn from: 64 bits that, for all practical purposes, differ whenever anything that was
/// added differs. Mixes as the finalizer of splitmix64 does (Steele, Lea and Flood, 2014).
class ContentDigest {
public:
    quint64 value() const { return mValue; }

    void add(quint64 word) {
        quint64 mixed = (mValue ^ word) + Q_UINT64_C(0x9e3779b97f4a7c15);
        mixed = (mixed ^ (mixed >> 30)) * Q_UINT64_C(0xbf58476d1ce4e5b9);
        mixed = (mixed ^ (mixed >> 27)) * Q_UINT64_C(0x94d049bb133111eb);
        mValue = mixed ^ (mixed >> 31);
    }
    void add(double number) {
        quint64 word = 0;
        std::memcpy(&word, &number, sizeof word);
        add(word);
    }
    void add(int number) { add(static_cast<quint64>(static_cast<qint64>(number))); }
    /// Bytes and their number.
    void add(const void *bytes, std::size_t size) {
        const char *at = static_cast<const char *>(bytes);
        add(static_cast<quint64>(size));
        for (; size >= sizeof(quint64); size -= sizeof(quint64), at += sizeof(quint64)) {
            quint64 word = 0;
            std::memcpy(&word, at, sizeof word);
            add(word);
        }
        quint64 rest = 0;
        if (size > 0) {
            std::memcpy(&rest, at, size);
        }
        add(rest);
    }
    void add(const std::string &text) { add(text.data(), text.size()); }
    template <class Number> void add(const std::vector<Number> &numbers) {
        add(static_cast<const void *>(numbers.data()), numbers.size() * sizeof(Number));
    }
    void add(const std::vector<std::string> &texts) { addEach(texts); }
    template <class Item> void add(const std::vector<std::vector<Item>> &lists) { addEach(lists); }

    /// Everything that a drawing of a series depends on, which its times are not: points are placed by index.
    void add(const se::RPCFormulaResultCache &series) {
        const auto &[lineCount, names, styles, colors, flags, axis] = series.meta;
        const auto &[times, valid, tags, values, extra1, texts, extra2, shared1, shared2] = series.result;
        static_cast<void>(tags);
        static_cast<void>(shared1);
        static_cast<void>(shared2);
        add(lineCount);
        add(names);
        add(styles);
        add(colors);
        add(flags);
        add(axis);
        add(static_cast<quint64>(times.size()));
        add(valid);
        add(values);
        add(extra1);
        add(extra2);
        add(texts);
    }

private:
    template <class Items> void addEach(const Items &items) {
        add(static_cast<quint64>(items.size()));
        for (const auto &item : items) {
            add(item);
        }
    }

    quint64 mValue = 0;
};

} // namespace TC
