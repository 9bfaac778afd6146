#include "terminal/files/reader/Confinement.h"
#include "terminal/files/reader/Input.h"
#include "terminal/files/reader/SheetText.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>

// A program beside the terminal, which parses binary files of other makers in its place: whatever such a file does to its
// parser ends here. It has the file as its standard input, writes text to its standard output, and answers 0 when the text
// is all of it. It can open nothing.

namespace {

constexpr int kDone = 0; ///< exit status
constexpr int kNotReadable = 1;
constexpr int kNotConfined = 3;

void readInput() {
    std::array<char, 65536> piece{};
    while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), stdin)) {
        reader::input().append(piece.data(), got);
    }
}

int run(const char *parser) {
    if (std::strcmp(parser, "sheet") != 0) {
        return kNotReadable;
    }
    reader::prepareSheets();
    if (!reader::confine()) {
        return kNotConfined;
    }
    readInput();
    std::string text;
    if (!reader::readSheet(text)) {
        return kNotReadable;
    }
    const bool written =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    return written ? kDone : kNotReadable;
}

} // namespace

int main(int argc, char **argv) {
    try {
        return run(argc > 1 ? argv[1] : "");
    } catch (const std::exception &) { // memory is limited
        return kNotReadable;
    }
}
