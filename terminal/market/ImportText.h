#pragma once

#include "terminal/market/BarFault.h"
#include "terminal/market/LineWindow.h"
#include "terminal/market/TableHeadings.h"
#include "toolkit/files/RegularFile.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <string_view>

namespace terminal {

/// A file of market data: a heading line and rows. It is read through a window, however large it is.
class ImportText {
public:
    /// What a row is given to: its line of the file and its text without the end of the line.
    using TakeRow = std::function<BarFault(int line, std::string_view row)>;
    /// Hears now and then which part of the text is done; answering false stops the reading.
    using Report = std::function<bool(double part)>;
    /// Hears of a line that repeats the headings.
    using PassOver = std::function<void(int line)>;

    /// The fault of a reading that was stopped.
    static const QString &stopped();
    /// One line for a fault of a file; a line of 0 is of no row.
    static QString located(const QString &path, const BarFault &fault);

    /// Reads the file. A fault when it cannot be read, is empty or is no text.
    BarFault open(const QString &path);
    TableHeadings headings() const { return readHeadings(mFirstLine); }
    /// Hands over, once, every row that is neither blank nor the heading line over again, as in files that were put together;
    /// the last one may be without an end. The first fault ends the reading. A fault when there is no row.
    BarFault eachRow(const TakeRow &take, const Report &goesOn, const PassOver &passOver);

    /// The first line of a text, without its end and a mark of the byte order.
    static std::string_view headingOf(std::string_view all);
    /// Whether a line is no row, by the file's first one without its end.
    static bool isPassedOver(std::string_view row, std::string_view heading);

private:
    template <class Take> void eachPiece(const Take &goesOn);
    int lineOfZero();
    BarFault faultOfEnd(int line) const;

    std::optional<GZ::RegularFile> mFile;
    std::optional<LineWindow> mLines; ///< of that file, behind the first
    QByteArray mFirstLine;
};

} // namespace terminal
