// Damaged spreadsheets, each read by a confined process of its own as timeshare-reader does: every one ends in rows, or
// in nothing that can be read. Arguments: the sound file, the number of the first damage, how many.

#include "terminal/files/reader/Confinement.h"
#include "terminal/files/reader/Input.h"
#include "terminal/files/reader/SheetText.h"
#include "tests/support/MutatedSheet.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t kMostText = 256UL * 1000 * 1000; ///< bytes that the terminal takes
constexpr int kPatience = 60000; ///< milliseconds that it waits, and then ends its reader

/// How the reading of one file ended.
enum class Ending { Rows, Refused, Died, NoRows, Endless, NotRun };

/// In the child: reads the input and writes its rows; answers the exit status.
int readConfined(int output) {
    if (!reader::confine()) {
        return 3;
    }
    try {
        std::string text;
        if (!reader::readSheet(text)) {
            return 1;
        }
        for (std::size_t done = 0; done < text.size();) {
            const ssize_t count = ::write(output, text.data() + done, text.size() - done);
            if (count < 0) {
                return 1;
            }
            done += static_cast<std::size_t>(count);
        }
        return 0;
    } catch (const std::exception &) {
        return 1;
    }
}

/// Takes all that a child writes; false when it does not come to an end.
bool take(int input, std::string &text) {
    static char piece[65536];
    pollfd news{input, POLLIN, 0};
    while (::poll(&news, 1, kPatience) > 0 && text.size() <= kMostText) {
        const ssize_t count = ::read(input, piece, sizeof piece);
        if (count <= 0) {
            return count == 0;
        }
        text.append(piece, static_cast<std::size_t>(count));
    }
    return false;
}

/// Whole lines, all with as many cells.
bool areRows(const std::string &text) {
    std::ptrdiff_t tabs = -1;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            return false;
        }
        const std::ptrdiff_t here = std::count(text.begin() + static_cast<std::ptrdiff_t>(start),
                                               text.begin() + static_cast<std::ptrdiff_t>(end), '\t');
        if (tabs >= 0 && here != tabs) {
            return false;
        }
        tabs = here;
        start = end + 1;
    }
    return true;
}

Ending read(const std::string &content) {
    int ends[2];
    if (::pipe(ends) != 0) {
        return Ending::NotRun;
    }
    reader::input() = content;
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        ::_exit(readConfined(ends[1]));
    }
    ::close(ends[1]);
    std::string text;
    const bool ended = child > 0 && take(ends[0], text);
    ::close(ends[0]);
    if (child < 0) {
        return Ending::NotRun;
    }
    if (!ended) {
        ::kill(child, SIGKILL);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!ended) {
        return Ending::Endless;
    }
    if (!WIFEXITED(status)) {
        return Ending::Died;
    }
    switch (WEXITSTATUS(status)) {
    case 0:
        return areRows(text) ? Ending::Rows : Ending::NoRows;
    case 1:
        return Ending::Refused;
    default:
        return Ending::NotRun;
    }
}

std::string contentOf(const char *path) {
    std::string content;
    char piece[4096];
    const int file = ::open(path, O_RDONLY); // fopen() opens the input
    for (ssize_t count = 0; file >= 0 && (count = ::read(file, piece, sizeof piece)) > 0;) {
        content.append(piece, static_cast<std::size_t>(count));
    }
    ::close(file);
    return content;
}

} // namespace

int main(int argc, char **argv) {
    const std::string whole = argc == 4 ? contentOf(argv[1]) : std::string();
    if (whole.empty() || std::atol(argv[3]) <= 0) {
        std::fputs("usage: sheet_mutations FILE FIRST COUNT\n", stderr);
        return 2;
    }
    reader::prepareSheets();
    if (read(whole) != Ending::Rows) {
        std::fputs("the sound file gives no rows\n", stderr);
        return 1;
    }
    long counts[6] = {};
    double slowest = 0.0;
    bool isGood = true;
    const auto first = static_cast<unsigned>(std::atol(argv[2]));
    const auto count = static_cast<unsigned>(std::atol(argv[3]));
    for (unsigned number = first; number - first < count; ++number) {
        const auto before = std::chrono::steady_clock::now();
        const Ending ending = read(tests::mutated(whole, number));
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
        slowest = std::max(slowest, taken.count());
        ++counts[static_cast<int>(ending)];
        if (ending == Ending::NoRows || ending == Ending::NotRun) {
            std::fprintf(stderr, "damage %u ended badly (%d)\n", number, static_cast<int>(ending));
            isGood = false;
        }
    }
    std::printf("%u damaged files: %ld gave rows, %ld were refused, %ld ended their reader, %ld were ended for "
                "their time, %ld bad; slowest %.2f s\n",
                count, counts[0], counts[1], counts[2], counts[4], counts[3] + counts[5], slowest);
    return isGood ? 0 : 1;
}
