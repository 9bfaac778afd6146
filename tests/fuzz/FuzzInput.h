#pragma once

#include "host/records/Enumerations.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace fuzz {

/// Takes values off the front of the fuzzer's bytes; zeros when they have run out.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t *data, std::size_t size) : mData(data), mSize(size) {}

    bool isEmpty() const { return mSize == 0; }

    std::uint8_t byte() {
        if (mSize == 0) {
            return 0;
        }
        --mSize;
        return *mData++;
    }
    /// 0 to `below` - 1.
    int upTo(int below) { return byte() % below; }

    std::int64_t number() {
        std::int64_t value = 0;
        for (int i = 0; i < 8; ++i) {
            value = value << 8 | byte();
        }
        return value;
    }

    /// Mostly ordinary prices, and now and then what no price should be.
    double price() {
        switch (const int kind = byte(); kind) {
        case 0:
            return std::numeric_limits<double>::quiet_NaN();
        case 1:
            return std::numeric_limits<double>::infinity();
        case 2:
            return -std::numeric_limits<double>::infinity();
        case 3:
            return TC::kUnsetValue;
        case 4:
            return -TC::kUnsetValue;
        case 5:
            return 0.0;
        case 6: {
            const std::int64_t bits = number();
            double value = 0.0;
            std::memcpy(&value, &bits, sizeof value);
            return value;
        }
        default:
            return 9.0 + kind / 100.0;
        }
    }

    std::string rest() {
        std::string text(reinterpret_cast<const char *>(mData), mSize);
        mSize = 0;
        return text;
    }

private:
    const std::uint8_t *mData;
    std::size_t mSize;
};

} // namespace fuzz
