#pragma once

/// \file
/// Enumerations that the chart view and its host share. Values that a host may add keep their numbers: the
/// chart view compares only those that are named here and carries all others unchanged.

#include <limits>

namespace TC {

/// Kind of view that the host opens; chosen at construction, carried into every pane.
enum class EIndexViewType : int {
    Ordinary = 0,
    Template = 1, ///< may carry the template bar; its graph offers the extra menu entries
    Paired = 2, ///< a paired-instrument view
    Plain = 3, ///< no pane highlight, double click goes to the host
    NoTimeScale = 8, ///< no time scale beneath the panes
};

/// What a pane shows.
enum class EIndexDisplayType : int {
    Main = 0, ///< the price chart with its volume band
    Sub = 1, ///< a formula pane
};

/// Kind of the instrument that a view shows or a request asks for; kept as a plain number in both.
enum EStockKind : int {
    eInstrument = 0, ///< an ordinary instrument of the catalogue
    eUserIndex = 1, ///< an index that the user has defined
    ePortfolio = 2,
};

/// Which analysis a portfolio view shows; any other value is the expected-order analysis.
enum class EPortfolioAnalyzeGraphType : int { VolumePrice = 0, Deviation = 1, ExpectedOrder = 2 };

/// Language of a formula.
enum class EFormulaLanguage : int { Native = 0, Python = 1 };

/// Kind of a drawn graph object of the user's drawing layer.
enum class EVmGraphType : int {
    None = 0,
    Segment = 1, ///< straight segment between two points
    Line = 2, ///< straight line through two points, to both edges
    Ray = 3, ///< from the first point through the second to the edge
    HorizontalLine = 4, ///< one point, full width
    VerticalLine = 5, ///< one point, full height
    Rectangle = 6, ///< two opposite corners
};

/// Kind of client program the library runs in.
enum class EClientType : int { Standard = 0, Research = 1, Web = 2, Trading = 3 };

/// What the user picked in the smart keyboard.
enum class ESmartKeyType : int { Stock = 0, Function = 1, Formula = 2, Shortcut = 3, Index = 4 };

/// How a file of records is read.
enum class EFileType : int {
    CommaSeparated = 0, ///< text, as it stands
    Spreadsheet = 1, ///< cells of a row are joined by tabs
};

/// "Unset" in every field and range of prices and values: the largest finite double.
constexpr double kUnsetValue = std::numeric_limits<double>::max();
/// Tolerance of all comparisons of values, ranges and zero.
constexpr double kValueTolerance = 1e-5;
/// "Not set" in a time field, in seconds, of a trade record.
constexpr int kUnsetTime = 2147483647;

} // namespace TC

namespace corvane {

/// How a request is run. Every value but HandOver is an ordinary run.
enum class ERunMode : int {
    Ordinary = 0,
    HandOver = 1, ///< the formula detail's run data is handed to the request
};

} // namespace corvane

namespace utils {

/// Flags of GZ::formatDoubleNumber.
enum EFormatNumberFlag : int {
    eFormatPlain = 0,
    eFormatPercent = 0x10000, ///< times 100, followed by a percent sign
    eFormatScaled = 0x40000, ///< scaled into the units 万, 亿 and 万亿
};

} // namespace utils
