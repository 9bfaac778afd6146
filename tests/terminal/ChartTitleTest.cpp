#include "terminal/app/ChartTitle.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace terminal;

namespace {

QStringList texts(const ChartTitleData &data) {
    QStringList all;
    for (const TitlePart &part : titleParts(data)) {
        all.append(part.text);
    }
    return all;
}

ChartTitleData share() {
    ChartTitleData data;
    data.name = "浦发银行";
    data.code = "SH600000";
    data.day = QDate(2026, 11, 19);
    data.last = 10.25;
    data.average = 10.1;
    data.lastClose = 10.0;
    return data;
}

} // namespace

TEST(ChartTitle, TellsNameCodeDatePriceChangePercentAndAverage) {
    EXPECT_EQ(texts(share()),
              QStringList({"浦发银行", "SH600000", "2026-11-19", "10.25", "+0.25", "+2.50%", "均价 10.10"}));
}

TEST(ChartTitle, RiseAndFallHaveTheirColours) {
    ChartTitleData data = share();
    EXPECT_EQ(titleParts(data)[3].color, "ic_clr_index_default_rise");
    data.last = 9.5;
    EXPECT_EQ(texts(data)[4], "-0.50");
    EXPECT_EQ(texts(data)[5], "-5.00%");
    EXPECT_EQ(titleParts(data)[3].color, "ic_clr_index_default_fall");
    data.last = 10.0;
    EXPECT_EQ(texts(data)[4], "0.00");
    EXPECT_EQ(titleParts(data)[3].color, "ic_clr_realtime_axis_text");
}

TEST(ChartTitle, WithoutALastCloseThereIsNoChange) {
    ChartTitleData data = share();
    data.lastClose = 0.0;
    EXPECT_EQ(texts(data), QStringList({"浦发银行", "SH600000", "2026-11-19", "10.25", "均价 10.10"}));
}

TEST(ChartTitle, BeforeTheFirstPriceTheNoteStands) {
    ChartTitleData data;
    data.name = "浦发银行";
    data.code = "SH600000";
    data.note = "尚未开盘，等待行情";
    EXPECT_EQ(texts(data), QStringList({"浦发银行", "SH600000", "尚未开盘，等待行情"}));
}

TEST(ChartTitle, DrawsAnyData) {
    ChartTitle title;
    title.resize(300, ChartTitle::kHeight);
    ChartTitleData data = share();
    data.name = QString(3000, QChar(0x6d66));
    title.setData(data);
    EXPECT_FALSE(title.grab().toImage().isNull());
}
