#include "terminal/files/reader/SheetText.h"

#include <array>
#include <cstdio>
#include <freexl.h>
#include <iconv.h>

namespace reader {
namespace {

constexpr std::size_t kMostText = 200UL * 1000 * 1000; ///< bytes

/// An opened file of Excel.
class Workbook {
public:
    Workbook() { mOpen = freexl_open("input", &mHandle) == FREEXL_OK; }
    ~Workbook() {
        if (mHandle) { // which a file that could not be opened may have as well
            freexl_close(mHandle);
        }
    }
    Workbook(const Workbook &) = delete;
    Workbook &operator=(const Workbook &) = delete;

    bool selectFirstSheet(unsigned int &rows, unsigned short &columns) {
        return mOpen && freexl_select_active_worksheet(mHandle, 0) == FREEXL_OK &&
               freexl_worksheet_dimensions(mHandle, &rows, &columns) == FREEXL_OK;
    }
    std::string cell(unsigned int row, unsigned short column) const;

private:
    const void *mHandle = nullptr;
    bool mOpen = false;
};

std::string Workbook::cell(unsigned int row, unsigned short column) const {
    FreeXL_CellValue value;
    if (freexl_get_cell_value(mHandle, row, column, &value) != FREEXL_OK) {
        return {};
    }
    std::array<char, 40> number{};
    switch (value.type) {
    case FREEXL_CELL_INT:
        return std::to_string(value.value.int_value);
    case FREEXL_CELL_DOUBLE:
        std::snprintf(number.data(), number.size(), "%.15g",
                      value.value.double_value); // what a double holds for sure
        return number.data();
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
    case FREEXL_CELL_DATE:
    case FREEXL_CELL_DATETIME:
    case FREEXL_CELL_TIME:
        return value.value.text_value ? value.value.text_value : std::string();
    default:
        return {};
    }
}

std::string inOneLine(std::string text) {
    for (char &c : text) {
        c = c == '\t' || c == '\n' || c == '\r' ? ' ' : c;
    }
    return text;
}

} // namespace

void prepareSheets() {
    for (const char *coding : {"UTF-16LE", "CP1252", "CP936", "CP950", "CP932", "CP949", "CP1251"}) {
        static_cast<void>(iconv_open("UTF-8", coding)); // stays open, and so stays loaded
    }
}

bool readSheet(std::string &text) {
    Workbook book;
    unsigned int rows = 0;
    unsigned short columns = 0;
    if (!book.selectFirstSheet(rows, columns)) {
        return false;
    }
    for (unsigned int row = 0; row < rows; ++row) {
        for (unsigned short column = 0; column < columns; ++column) {
            text += column > 0 ? "\t" : "";
            text += inOneLine(book.cell(row, column));
        }
        text += '\n';
        if (text.size() > kMostText) {
            return false;
        }
    }
    return true;
}

} // namespace reader
