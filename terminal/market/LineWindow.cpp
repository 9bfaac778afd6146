#include "terminal/market/LineWindow.h"

#include "toolkit/files/RegularFile.h"

#include <algorithm>

namespace terminal {

bool LineWindow::next(std::string_view &line) {
    size_t looked = 0; // bytes of the line that are known to have no end
    for (;;) {
        const std::string_view rest(mWindow.data() + mStart, mWindow.size() - mStart);
        const size_t end = rest.find('\n', looked);
        if (end != std::string_view::npos) {
            line = rest.substr(0, end);
            mStart += end + 1;
            return true;
        }
        looked = rest.size();
        if (looked > mBytes) {
            mIsTooLong = true;
            return false;
        }
        if (!refill()) {
            line = std::string_view(mWindow.data(), mWindow.size()); // it stands in front now
            mStart = mWindow.size();
            return !line.empty() && mFile.isGood();
        }
    }
}

/// Moves what has not been handed over to the front, and reads behind it; false when there is no more.
bool LineWindow::refill() {
    const size_t left = mWindow.size() - mStart;
    std::copy(mWindow.begin() + static_cast<std::ptrdiff_t>(mStart), mWindow.end(), mWindow.begin());
    mPlace += static_cast<qint64>(mStart);
    mStart = 0;
    mWindow.resize(mBytes + 1); // one more, to tell a line that fits from one that does not
    const qint64 got = mFile.readInto(mWindow.data() + left, mPlace + static_cast<qint64>(left),
                                      static_cast<qint64>(mWindow.size() - left));
    mWindow.resize(left + static_cast<size_t>(got));
    return got > 0;
}

} // namespace terminal
