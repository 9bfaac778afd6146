#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace tests {

/// A damaged copy of a file: bytes changed anywhere, bits flipped, a cut, sectors swapped, or several of these. The same
/// number gives the same damage.
inline std::string mutated(const std::string &whole, unsigned number) {
    constexpr std::size_t kSector = 512;
    std::mt19937 random(number);
    const auto below = [&random](std::size_t most) { return most > 0 ? random() % most : 0; };
    std::string content = whole;
    for (std::size_t damages = below(4) == 0 ? 3 : 1; damages > 0 && !content.empty(); --damages) {
        switch (below(4)) {
        case 0:
            for (std::size_t changes = 1 + below(20); changes > 0; --changes) {
                content[below(content.size())] = static_cast<char>(below(256));
            }
            break;
        case 1:
            for (std::size_t flips = 1 + below(4); flips > 0; --flips) {
                char &byte = content[below(content.size())];
                byte = static_cast<char>(byte ^ (1 << below(8)));
            }
            break;
        case 2:
            content.resize(below(content.size()));
            break;
        default: {
            const std::size_t one = below(content.size() / kSector) * kSector;
            const std::size_t other = below(content.size() / kSector) * kSector;
            const std::string first = content.substr(one, kSector);
            const std::string second = content.substr(other, kSector);
            content.replace(one, second.size(), second);
            content.replace(other, first.size(), first);
        }
        }
    }
    return content;
}

} // namespace tests
