#include "terminal/market/ImportPreview.h"

#include "terminal/market/BarDays.h"
#include "terminal/market/ColumnChoice.h"
#include "terminal/market/ImportText.h"
#include "terminal/market/RowFields.h"
#include "terminal/market/TickRowParser.h"
#include "toolkit/files/RegularFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>
#include <QTime>

#include <algorithm>

namespace terminal {
namespace {

constexpr qint64 kPiece = 65536; ///< bytes read of either end
constexpr int kRows = 200;
constexpr int kRawRows = 20; ///< shown as they stand

struct PreviewWords {
    Q_DECLARE_TR_FUNCTIONS(ImportPreview)
};

QString shownNumber(double value) {
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

QString shownTime(int date, int milliseconds) {
    const QTime clock = QTime::fromMSecsSinceStartOfDay(milliseconds);
    return calendarDate(date).toString(Qt::ISODate) + clock.toString(milliseconds % 1000 == 0
                                                                         ? QStringLiteral(" HH:mm:ss")
                                                                         : QStringLiteral(" HH:mm:ss.zzz"));
}

int dateOfRow(const BarRow &row) {
    return row.date;
}

int dateOfRow(const TickRow &row) {
    return row.time.date;
}

QStringList shownRow(const BarRow &row) {
    return {shownTime(row.date, row.clock * 60000),
            shownNumber(row.open),
            shownNumber(row.high),
            shownNumber(row.low),
            shownNumber(row.close),
            shownNumber(row.volume),
            shownNumber(row.amount)};
}

QStringList shownRow(const TickRow &row) {
    return {shownTime(row.time.date, row.time.clock), shownNumber(row.price), shownNumber(row.volume),
            shownNumber(row.amount)};
}

/// Reads the two ends of a file into a preview.
class Previewer {
public:
    Previewer(const QString &path, const QString &columns) : mPath(path), mColumns(columns), mFile(path) {}

    ImportPreview preview() {
        BarFault fault = readEnds();
        if (fault.isNone()) {
            TableHeadings headings = readHeadings(mHead.left(std::max(int(mHead.indexOf('\n')), 0)));
            mPreview.headings = headings;
            keepFields();
            const QString trouble = applyColumns(mColumns, headings);
            mPreview.kind = kindOfTable(headings);
            fault = !trouble.isEmpty()                  ? BarFault{1, trouble}
                    : mPreview.kind == ImportKind::Bars ? readBars(headings)
                                                        : readTicks(headings);
        }
        if (!fault.isNone()) {
            mPreview.error = ImportText::located(mPath, fault);
        }
        return mPreview;
    }

private:
    BarFault readEnds() {
        mHead = mFile.head(kPiece);
        mTail = mFile.tail(kPiece);
        if (!mFile.isGood()) {
            return {0, QStringLiteral("cannot be read: %1").arg(mFile.reason())};
        }
        return mHead.isEmpty() ? BarFault{1, QStringLiteral("the file is empty")} : BarFault();
    }

    BarFault readBars(const TableHeadings &headings) {
        BarColumns columns;
        const QString trouble = recogniseColumns(headings, columns);
        return trouble.isEmpty() ? readRows<BarRowParser, BarRow>(BarRowParser(columns)) : BarFault{1, trouble};
    }

    BarFault readTicks(const TableHeadings &headings) {
        TickColumns columns;
        const QString trouble = recogniseTickColumns(headings, columns);
        return trouble.isEmpty() ? readRows<TickRowParser, TickRow>(TickRowParser(columns))
                                 : BarFault{1, trouble};
    }

    /// The line that starts at a place, which goes on to the next one; the last one of the file may be without an
    /// end. False when there is none that is read in whole.
    bool takeLine(int &start, std::string_view &text) const {
        const int end = mHead.indexOf('\n', start);
        const bool isWhole = end >= 0 || (mFile.size() == mHead.size() && start < mHead.size());
        if (start <= 0 || !isWhole) {
            return false;
        }
        const int after = end >= 0 ? end : mHead.size();
        text = std::string_view(mHead.constData() + start, static_cast<size_t>(after - start));
        start = after + 1;
        return true;
    }

    std::string_view headingLine() const {
        return ImportText::headingOf({mHead.constData(), static_cast<size_t>(mHead.size())});
    }

    void keepFields() {
        int start = mHead.indexOf('\n') + 1;
        RowFields fields;
        for (std::string_view text; mPreview.fields.size() < kRawRows && takeLine(start, text);) {
            fields.split(text, mPreview.headings.separator);
            QStringList row;
            for (int i = 0; i < fields.count(); ++i) {
                row.append(shownText(fields.at(i)));
            }
            mPreview.fields.append(row);
        }
    }

    template <class Parser, class Row> BarFault readRows(Parser parser) {
        std::vector<Row> rows;
        int start = mHead.indexOf('\n') + 1;
        const int first = start;
        std::string_view text;
        for (int line = 2; static_cast<int>(rows.size()) < kRows && takeLine(start, text); ++line) {
            if (ImportText::isPassedOver(text, headingLine())) {
                continue;
            }
            Row row;
            row.line = line;
            const QString wrong = parser.parse(text, row);
            if (!wrong.isEmpty()) {
                return {line, wrong};
            }
            takeSymbol(parser.symbol(), parser.exchange(), rows.empty());
            rows.push_back(row);
        }
        if (rows.empty()) {
            return {1, QStringLiteral("the file has no rows")};
        }
        const double length = static_cast<double>(start - first) / static_cast<double>(rows.size());
        mPreview.rowsAbout = static_cast<int>(static_cast<double>(mFile.size() - first) / length + 0.5);
        return showRows(parser, rows);
    }

    template <class Parser, class Row> BarFault showRows(Parser &parser, std::vector<Row> &rows) {
        int firstDate = dateOfRow(rows.front());
        int lastDate = firstDate;
        for (Row &row : rows) {
            const QString wrong = parser.finish(row);
            if (!wrong.isEmpty()) {
                return {row.line, wrong};
            }
            firstDate = std::min(firstDate, dateOfRow(row));
            lastDate = std::max(lastDate, dateOfRow(row));
            mPreview.rows.append(shownRow(row));
        }
        Row last;
        const QByteArray end = mTail.trimmed();
        const QByteArray line = end.mid(end.lastIndexOf('\n') + 1);
        if (parser.parse({line.constData(), static_cast<size_t>(line.size())}, last).isEmpty()) {
            firstDate = std::min(firstDate, dateOfRow(last));
            lastDate = std::max(lastDate, dateOfRow(last));
        }
        mPreview.firstDate = calendarDate(firstDate);
        mPreview.lastDate = calendarDate(lastDate);
        return {};
    }

    void takeSymbol(std::string_view symbol, std::string_view exchange, bool first) {
        const InstrumentName told = readSymbol(fieldText(symbol), fieldText(exchange));
        if (!first) {
            mPreview.severalInstruments = mPreview.severalInstruments || told.code != mPreview.told.code ||
                                          told.market != mPreview.told.market;
            return;
        }
        mPreview.told = told;
        mPreview.guess = completeName(told, QFileInfo(mPath).fileName());
    }

    const QString mPath;
    const QString mColumns;
    GZ::RegularFile mFile;
    QByteArray mHead;
    QByteArray mTail;
    ImportPreview mPreview;
};

} // namespace

ImportPreview previewFile(const QString &path, const QString &columns) {
    return Previewer(path, columns).preview();
}

QStringList previewHeadings(ImportKind kind) {
    switch (kind) {
    case ImportKind::Bars:
        return {PreviewWords::tr("时间"),  PreviewWords::tr("开盘"), PreviewWords::tr("最高"),
                PreviewWords::tr("最低"),  PreviewWords::tr("收盘"), PreviewWords::tr("成交量"),
                PreviewWords::tr("成交额")};
    case ImportKind::Trades:
        return {PreviewWords::tr("时间"), PreviewWords::tr("成交价"), PreviewWords::tr("成交量"),
                PreviewWords::tr("成交额")};
    case ImportKind::Snapshots:
        return {PreviewWords::tr("时间"), PreviewWords::tr("最新价"), PreviewWords::tr("总成交量"),
                PreviewWords::tr("总成交额")};
    }
    return {};
}

QString kindText(ImportKind kind) {
    switch (kind) {
    case ImportKind::Bars:
        return PreviewWords::tr("分钟线");
    case ImportKind::Trades:
        return PreviewWords::tr("逐笔成交");
    case ImportKind::Snapshots:
        return PreviewWords::tr("快照");
    }
    return {};
}

} // namespace terminal
