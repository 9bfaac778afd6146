#pragma once

#include <QtGlobal>

#include <string_view>
#include <vector>

namespace GZ {
class RegularFile;
}

namespace terminal {

/// Reads the lines of a file one after the other through a window on it, so that a file takes no more memory than the window
/// has bytes, however large it is. The file has to stay.
class LineWindow {
public:
    static constexpr size_t kBytes = 1000000;

    /// A line that has more bytes than the window is too long.
    explicit LineWindow(GZ::RegularFile &file, size_t bytes = kBytes) : mFile(file), mBytes(bytes) {}

    /// The next line without its end, there until the next call; what follows the last end is a line when there is any.
    /// False at the end of the file, when it cannot be read, and when the line is too long.
    bool next(std::string_view &line);
    bool isTooLong() const { return mIsTooLong; }
    /// Bytes that have been handed over, line ends included.
    qint64 done() const { return mPlace + static_cast<qint64>(mStart); }

private:
    bool refill();

    GZ::RegularFile &mFile;
    const size_t mBytes;
    std::vector<char> mWindow;
    qint64 mPlace = 0; ///< of the window in the file
    size_t mStart = 0; ///< of the next line in the window
    bool mIsTooLong = false;
};

} // namespace terminal
