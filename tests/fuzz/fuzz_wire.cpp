// Records of a feed: any bytes are refused or read, and what is read is written to the same bytes again.

#include "terminal/feed/WireRecord.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void examine(const QByteArray &bytes) {
    const terminal::WireRecord record = terminal::decodeWire(bytes);
    if (const auto *bar = std::get_if<terminal::WireBar>(&record)) {
        check(std::isfinite(bar->bar.price) && bar->bar.price != 0.0 && bar->day > 0 && bar->sequence > 0);
        check(terminal::encodeWire(*bar) == bytes);
    } else if (const auto *clock = std::get_if<terminal::WireClock>(&record)) {
        check(terminal::encodeWire(*clock) == bytes);
    }
}

/// CRC-32 bit by bit: the fuzzer does not find it by itself.
std::uint32_t checksum(const QByteArray &bytes) {
    std::uint32_t sum = 0xFFFFFFFFu;
    for (int i = 0; i < bytes.size(); ++i) {
        sum ^= i >= 4 && i < 8 ? 0u : static_cast<std::uint8_t>(bytes[i]);
        for (int bit = 0; bit < 8; ++bit) {
            sum = sum >> 1 ^ (sum & 1u ? 0xEDB88320u : 0u);
        }
    }
    return ~sum;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    examine(bytes);
    if (bytes.size() >= 8) {
        const std::uint32_t sum = checksum(bytes);
        for (int i = 0; i < 4; ++i) {
            bytes[4 + i] = static_cast<char>(sum >> (8 * i));
        }
        examine(bytes);
    }
    return 0;
}
