#include "terminal/market/BarRowParser.h"
#include "terminal/market/BarColumns.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

const QByteArray kPlain("datetime,open,high,low,close,volume");

BarColumns columnsOf(const QByteArray &header) {
    BarColumns columns;
    EXPECT_EQ(recogniseColumns(readHeadings(header), columns).toStdString(), "");
    return columns;
}

std::string columnTrouble(const QByteArray &header) {
    BarColumns columns;
    return recogniseColumns(readHeadings(header), columns).toStdString();
}

/// What is wrong with a row under a heading.
std::string trouble(const char *line, const QByteArray &header = kPlain) {
    BarRowParser parser(columnsOf(header));
    BarRow row;
    const QString wrong = parser.parse(line, row);
    return (wrong.isEmpty() ? parser.finish(row) : wrong).toStdString();
}

BarRow parsedRow(const char *line, const QByteArray &header = kPlain) {
    BarRowParser parser(columnsOf(header));
    BarRow row;
    EXPECT_EQ(parser.parse(line, row).toStdString(), "");
    EXPECT_EQ(parser.finish(row).toStdString(), "");
    return row;
}

int clockOf(const char *time) {
    return parsedRow(qPrintable(QStringLiteral("20180102,%1,1,1,1,1,1").arg(QLatin1String(time))),
                     "date,time,open,high,low,close,volume")
        .clock;
}

} // namespace

TEST(BarColumns, RecognisesHeadingsInAnyOrderAndCase) {
    const BarColumns columns = columnsOf("Symbol,DT,Open,CLOSE,high,low,vol");
    EXPECT_EQ(columns.symbol, 0);
    EXPECT_EQ(columns.dateTime, 1);
    EXPECT_EQ(columns.open, 2);
    EXPECT_EQ(columns.close, 3);
    EXPECT_EQ(columns.high, 4);
    EXPECT_EQ(columns.low, 5);
    EXPECT_EQ(columns.volume, 6);
    EXPECT_EQ(columns.amount, -1);
    EXPECT_EQ(columns.count, 7);
}

TEST(BarColumns, RecognisesChineseHeadings) {
    const BarColumns columns = columnsOf("\xef\xbb\xbf日期,时间,开盘,最高,最低,收盘,成交量,成交额,均价,代码\r");
    EXPECT_EQ(columns.date, 0);
    EXPECT_EQ(columns.clock, 1);
    EXPECT_EQ(columns.close, 5);
    EXPECT_EQ(columns.volume, 6);
    EXPECT_EQ(columns.amount, 7);
    EXPECT_EQ(columns.average, 8);
    EXPECT_EQ(columns.symbol, 9);
}

TEST(BarColumns, RecognisesChineseHeadingsInTheirOlderEncoding) {
    // The headings 时间,开盘,最高,最低,收盘,成交量,成交额, as iconv -t GB18030 writes them.
    const BarColumns columns = columnsOf("\xca\xb1\xbc\xe4,\xbf\xaa\xc5\xcc,\xd7\xee\xb8\xdf,\xd7\xee\xb5\xcd,"
                                         "\xca\xd5\xc5\xcc,\xb3\xc9\xbd\xbb\xc1\xbf,\xb3\xc9\xbd\xbb\xb6\xee");
    EXPECT_EQ(columns.dateTime, 0);
    EXPECT_EQ(columns.amount, 6);
}

TEST(BarColumns, PassesOverUnnamedAndUnknownColumns) {
    const BarColumns columns = columnsOf(",datetime,open,high,low,close,volume,hold");
    EXPECT_EQ(columns.dateTime, 1);
    EXPECT_EQ(columns.volume, 6);
    EXPECT_EQ(columns.count, 8);
}

TEST(BarColumns, ATimeColumnWithoutADateTellsBoth) {
    const BarColumns columns = columnsOf("time,open,close,high,low,volume,amount,junjia");
    EXPECT_EQ(columns.dateTime, 0);
    EXPECT_EQ(columns.clock, -1);
    EXPECT_EQ(columns.average, 7);
}

TEST(BarColumns, TabsAndSemicolonsSeparateToo) {
    EXPECT_EQ(columnsOf("time\topen\tclose\thigh\tlow\tvolume").volume, 5);
    EXPECT_EQ(columnsOf("time;open;close;high;low;volume").volume, 5);
}

TEST(BarColumns, SaysWhichColumnIsMissing) {
    EXPECT_EQ(columnTrouble("datetime,open,high,low,volume"), "no column \"close\"");
    EXPECT_EQ(columnTrouble("datetime,open,high,low,close"), "no column \"volume\"");
    EXPECT_EQ(columnTrouble("datetime,high,low,close,volume"), "no column \"open\"");
    EXPECT_EQ(columnTrouble("datetime,open,low,close,volume"), "no column \"high\"");
    EXPECT_EQ(columnTrouble("datetime,open,high,close,volume"), "no column \"low\"");
    EXPECT_EQ(columnTrouble("open,high,low,close,volume"), "no column \"datetime\", nor \"date\" and \"time\"");
    EXPECT_EQ(columnTrouble("date,open,high,low,close,volume"),
              "no column \"datetime\", nor \"date\" and \"time\"");
    EXPECT_EQ(columnTrouble(""), "no column \"open\"");
}

TEST(BarColumns, TwoColumnsOfOneMeaningAreAnError) {
    EXPECT_EQ(columnTrouble("datetime,open,high,low,close,volume,vol"), "two columns for \"vol\"");
}

TEST(BarRowParser, ReadsEveryColumn) {
    const BarRow row = parsedRow("2019-06-24 21:01:00,316.35,316.05,316.5,316.0,3752.0,1186024000.0,316.104",
                                 "time,open,close,high,low,volume,amount,junjia");
    EXPECT_EQ(row.date, 20190624);
    EXPECT_EQ(row.clock, 1261);
    EXPECT_EQ(row.open, 316.35);
    EXPECT_EQ(row.close, 316.05);
    EXPECT_EQ(row.high, 316.5);
    EXPECT_EQ(row.low, 316.0);
    EXPECT_EQ(row.volume, 3752.0);
    EXPECT_EQ(row.amount, 1186024000.0);
    EXPECT_EQ(row.average, 316.104);
}

TEST(BarRowParser, ReadsDatesInTheirUsualForms) {
    for (const char *line :
         {"2018-01-02 09:31:00,1,1,1,1,1", "2018/01/02 09:31,1,1,1,1,1", "2018.01.02T09:31:00.000,1,1,1,1,1",
          "20180102 09:31:00,1,1,1,1,1", "2018/1/2 9:31,1,1,1,1,1", " \"2018-01-02 09:31:00\" ,1,1,1,1, 1\r"}) {
        EXPECT_EQ(parsedRow(line).date, 20180102) << line;
        EXPECT_EQ(parsedRow(line).clock, 571) << line;
    }
}

TEST(BarRowParser, ReadsClocksOfMereDigitsWithoutLeadingZeros) {
    EXPECT_EQ(clockOf("93100000"), 571);
    EXPECT_EQ(clockOf("150000000"), 900);
    EXPECT_EQ(clockOf("93100"), 571);
    EXPECT_EQ(clockOf("931"), 571);
    EXPECT_EQ(clockOf("1500"), 900);
}

TEST(BarRowParser, TheLongestClockOfAFileTellsWhatTheShortOnesMean) {
    BarRowParser parser(columnsOf("date,time,open,high,low,close,volume"));
    BarRow midnight;
    BarRow evening;
    ASSERT_TRUE(parser.parse("20190625,100000,1,1,1,1,1", midnight).isEmpty());
    ASSERT_TRUE(parser.parse("20190625,210100000,1,1,1,1,1", evening).isEmpty());
    EXPECT_TRUE(parser.finish(midnight).isEmpty());
    EXPECT_EQ(midnight.clock, 1);
    EXPECT_TRUE(parser.finish(evening).isEmpty());
    EXPECT_EQ(evening.clock, 1261);
}

TEST(BarRowParser, ATextThatIsNoTimeIsShown) {
    EXPECT_EQ(trouble("yesterday,1,1,1,1,1"), "unknown time \"yesterday\"");
    EXPECT_EQ(trouble("2018-02-30 09:31:00,1,1,1,1,1"), "unknown time \"2018-02-30 09:31:00\"");
    EXPECT_EQ(trouble("2018-01-02 25:00:00,1,1,1,1,1"), "unknown time \"25:00:00\"");
    EXPECT_EQ(trouble("2018-01-02 09:61:00,1,1,1,1,1"), "unknown time \"09:61:00\"");
    EXPECT_EQ(trouble("2018-01-02 09:31:07,1,1,1,1,1"), "unknown time \"09:31:07\"");
    EXPECT_EQ(trouble("2018-01-02 09:31:00 PM,1,1,1,1,1"), "unknown time \"09:31:00 PM\"");
    EXPECT_EQ(trouble("2018-01-02,1,1,1,1,1"), "unknown time \"2018-01-02\"");
    EXPECT_EQ(trouble(",1,1,1,1,1"), "unknown time \"\"");
    EXPECT_EQ(trouble("x,931,1,1,1,1,1", "date,time,open,high,low,close,volume"), "unknown date \"x\"");
    EXPECT_EQ(trouble("20180102,abc,1,1,1,1,1", "date,time,open,high,low,close,volume"),
              "unknown time \"abc\"");
    EXPECT_EQ(trouble("20180102,99999999,1,1,1,1,1", "date,time,open,high,low,close,volume"),
              "unknown time \"99999999\"");
}

TEST(BarRowParser, ATextThatIsNoNumberIsShown) {
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,1,abc,1"), "no number in column \"close\": \"abc\"");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,1,,1"), "no number in column \"close\": \"\"");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,1,1,12x"), "no number in column \"volume\": \"12x\"");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,nan,1,1,1"), "no number in column \"high\": \"nan\"");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,inf,1,1,1"), "no number in column \"high\": \"inf\"");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1e999,1,1,1"), "no number in column \"high\": \"1e999\"");
}

TEST(BarRowParser, ValuesThatNoMarketHasAreRefused) {
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,1,1,-5"), "negative number in column \"volume\"");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,1,0,5"), "a price of zero");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,2,1,5"), "the high is below the low");
}

TEST(BarRowParser, AnOpenOfZeroIsUnknownAndNoError) {
    EXPECT_EQ(parsedRow("2018-01-02 09:31,0.0,1,1,1,5").open, 0.0);
}

TEST(BarRowParser, ARowWithOtherFieldsThanTheHeadingIsRefused) {
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,1"), "4 fields where the heading has 6");
    EXPECT_EQ(trouble("2018-01-02 09:31,1,1,1,1,1,1"), "7 fields where the heading has 6");
    EXPECT_EQ(trouble(""), "1 fields where the heading has 6");
}
