#include "terminal/market/ImportText.h"

#include "toolkit/files/RegularFile.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kRowsBetweenReports = 20000;
constexpr qint64 kLargestImport = 1900LL * 1000 * 1000; ///< bytes

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
    GZ::RegularFile file(path);
    mContent = file.whole(kLargestImport);
    if (file.fault() == GZ::RegularFile::eTooLarge) {
        return {0, QStringLiteral("larger than %1 MB: split it by days").arg(kLargestImport / 1000000)};
    }
    if (!file.isGood()) {
        return {0, QStringLiteral("cannot be read: %1").arg(file.reason())};
    }
    if (mContent.isEmpty()) {
        return {1, QStringLiteral("the file is empty")};
    }
    const size_t zero = text().find('\0');
    if (zero != std::string_view::npos) {
        const auto line =
            std::count(mContent.begin(), mContent.begin() + static_cast<std::ptrdiff_t>(zero), '\n') + 1;
        return {static_cast<int>(line), QStringLiteral("a binary file, not a text of minute bars")};
    }
    return {};
}

TableHeadings ImportText::headings() const {
    const int end = mContent.indexOf('\n');
    return readHeadings(end < 0 ? mContent : mContent.left(end));
}

BarFault ImportText::eachRow(const TakeRow &take, const Report &goesOn, const PassOver &passOver) const {
    const std::string_view all = text();
    bool any = false;
    int line = 1;
    size_t end = all.find('\n');
    const std::string_view heading = headingOf(all);
    for (size_t start = end; start != std::string_view::npos && start + 1 < all.size(); start = end) {
        ++line;
        end = all.find('\n', start + 1);
        const std::string_view row =
            all.substr(start + 1, end == std::string_view::npos ? end : end - start - 1);
        if (isPassedOver(row, heading)) {
            if (withoutEnd(row) == heading) {
                passOver(line);
            }
            continue;
        }
        any = true;
        BarFault fault = take(line, row);
        if (!fault.isNone()) {
            return fault;
        }
        if (line % kRowsBetweenReports == 0 &&
            !goesOn(static_cast<double>(start) / static_cast<double>(all.size()))) {
            return {line, stopped()};
        }
    }
    return any ? BarFault() : BarFault{line, QStringLiteral("the file has no rows")};
}

} // namespace terminal
