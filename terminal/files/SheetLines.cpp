#include "terminal/files/SheetLines.h"

#include <QFile>
#include <QStringList>
#include <freexl.h>

namespace terminal {
namespace {

constexpr int kDigits = 15; ///< that a double holds for sure

/// An opened file of Excel.
class Workbook {
public:
    explicit Workbook(const QString &path) {
        mOpen = freexl_open(QFile::encodeName(path).constData(), &mHandle) == FREEXL_OK;
    }
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
    QString cell(unsigned int row, unsigned short column) const;

private:
    const void *mHandle = nullptr;
    bool mOpen = false;
};

QString Workbook::cell(unsigned int row, unsigned short column) const {
    FreeXL_CellValue value;
    if (freexl_get_cell_value(mHandle, row, column, &value) != FREEXL_OK) {
        return {};
    }
    switch (value.type) {
    case FREEXL_CELL_INT:
        return QString::number(value.value.int_value);
    case FREEXL_CELL_DOUBLE:
        return QString::number(value.value.double_value, 'g', kDigits);
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
    case FREEXL_CELL_DATE:
    case FREEXL_CELL_DATETIME:
    case FREEXL_CELL_TIME:
        return QString::fromUtf8(value.value.text_value);
    default:
        return {};
    }
}

QString inOneLine(QString text) {
    for (const char end : {'\t', '\n', '\r'}) {
        text.replace(QLatin1Char(end), QLatin1Char(' '));
    }
    return text;
}

} // namespace

bool readSheetLines(const QString &path, const TakeLine &take) {
    Workbook book(path);
    unsigned int rows = 0;
    unsigned short columns = 0;
    if (!book.selectFirstSheet(rows, columns)) {
        return false;
    }
    for (unsigned int row = 0; row < rows; ++row) {
        QStringList cells;
        for (unsigned short column = 0; column < columns; ++column) {
            cells.append(inOneLine(book.cell(row, column)));
        }
        if (!take(cells.join(QLatin1Char('\t')))) {
            break;
        }
    }
    return true;
}

} // namespace terminal
