#include "terminal/market/ImportText.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kLinesBetweenReports = 20000;
constexpr qint64 kLargestImport = 20LL * 1000 * 1000 * 1000; ///< bytes
constexpr int kMostLines = 2000000000;

std::string_view withoutEnd(std::string_view line) {
    const size_t end = line.find_last_not_of(" \t\r");
    return line.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

} // namespace

std::string_view ImportText::headingOf(std::string_view all) {
    constexpr std::string_view kMark(
        "\xef\xbb\xbf"); // of the byte order, which stands in front of the first line only
    const std::string_view line = withoutEnd(all.substr(0, all.find('\n')));
    return line.substr(0, kMark.size()) == kMark ? line.substr(kMark.size()) : line;
}

bool ImportText::isPassedOver(std::string_view row, std::string_view heading) {
    const std::string_view text = withoutEnd(row);
    return text.empty() || text == heading;
}

const QString &ImportText::stopped() {
    static const QString text = QStringLiteral("the import was stopped");
    return text;
}

QString ImportText::located(const QString &path, const BarFault &fault) {
    return fault.line > 0 ? QStringLiteral("%1:%2: %3").arg(path).arg(fault.line).arg(fault.reason)
                          : QStringLiteral("%1: %2").arg(path, fault.reason);
}

BarFault ImportText::open(const QString &path) {
    mFile.emplace(path);
    if (mFile->size() > kLargestImport) {
        return {0, QStringLiteral("larger than %1 MB: split it by days").arg(kLargestImport / 1000000)};
    }
    if (!mFile->isGood()) {
        return {0, QStringLiteral("cannot be read: %1").arg(mFile->reason())};
    }
    if (const int line = lineOfZero()) {
        return {line, QStringLiteral("a binary file, not a text of minute bars")};
    }
    mLines.emplace(*mFile);
    std::string_view first;
    if (!mLines->next(first)) {
        const BarFault fault = faultOfEnd(1);
        return fault.isNone() ? BarFault{1, QStringLiteral("the file is empty")} : fault;
    }
    mFirstLine = QByteArray(first.data(), static_cast<int>(first.size()));
    return {};
}

/// Hands over a file from its beginning, a piece at a time, until it is told not to go on.
template <class Take> void ImportText::eachPiece(const Take &goesOn) {
    std::vector<char> piece(LineWindow::kBytes);
    for (qint64 place = 0;;) {
        const qint64 got = mFile->readInto(piece.data(), place, static_cast<qint64>(piece.size()));
        if (got == 0 || !goesOn(std::string_view(piece.data(), static_cast<size_t>(got)))) {
            return;
        }
        place += got;
    }
}

/// The line of the first zero, which no text has; 0 without one.
int ImportText::lineOfZero() {
    const auto hasNone = [](std::string_view piece) { return piece.find('\0') == std::string_view::npos; };
    bool isText = true;
    eachPiece([&](std::string_view piece) { return isText = hasNone(piece); });
    qint64 line = isText ? 0 : 1;
    if (!isText) {
        eachPiece([&](std::string_view piece) {
            const std::string_view before = piece.substr(0, piece.find('\0'));
            line += std::count(before.begin(), before.end(), '\n');
            return before.size() == piece.size();
        });
    }
    return static_cast<int>(std::min<qint64>(line, kMostLines));
}

/// Why there was no next line; none at the end of the file.
BarFault ImportText::faultOfEnd(int line) const {
    if (mLines->isTooLong()) {
        return {line, QStringLiteral("a line of more than %1 bytes").arg(LineWindow::kBytes)};
    }
    return mFile->isGood() ? BarFault()
                           : BarFault{0, QStringLiteral("cannot be read: %1").arg(mFile->reason())};
}

BarFault ImportText::eachRow(const TakeRow &take, const Report &goesOn, const PassOver &passOver) {
    const std::string_view heading =
        headingOf({mFirstLine.constData(), static_cast<size_t>(mFirstLine.size())});
    const auto all = static_cast<double>(std::max<qint64>(mFile->size(), 1));
    bool any = false;
    int line = 1;
    for (std::string_view row; mLines->next(row);) {
        if (++line > kMostLines) {
            return {0, QStringLiteral("more than %1 lines: split it by days").arg(kMostLines)};
        }
        if (!isPassedOver(row, heading)) {
            any = true;
            BarFault fault = take(line, row);
            if (!fault.isNone()) {
                return fault;
            }
        } else if (withoutEnd(row) == heading) {
            passOver(line);
        }
        if (line % kLinesBetweenReports == 0 &&
            !goesOn(std::min(static_cast<double>(mLines->done()) / all, 1.0))) {
            return {line, stopped()};
        }
    }
    const BarFault fault = faultOfEnd(line + 1);
    return any || !fault.isNone() ? fault : BarFault{line, QStringLiteral("the file has no rows")};
}

} // namespace terminal
