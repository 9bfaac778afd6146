// A picture of every draw style, at one and at two device pixels per pixel.

#include "host/drawing/CDrawStyle.h"
#include "host/toolkit/CUiResource.h"
#include "tests/support/Golden.h"
#include "tests/support/Series.h"

#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <ostream>

namespace {

using Draw = TC::CDrawStyle;
using Series = se::RPCFormulaResultCache;

const QSize kStyleSize(240, 120);
const QRect kRect(1, 3, 238, 115);
constexpr int kLast = 24;
const double kGap = std::numeric_limits<double>::quiet_NaN();

// A day of 25 minutes with a gap, a point alone and an end before the axis ends.
const std::vector<double> kPrices = {10.02, 10.05, 10.11, 10.08, 10.16, 10.13, kGap, kGap,
                                     10.01, kGap,  9.96,  9.91,  9.94,  9.88,  9.83, 9.85,
                                     9.94,  10.04, 10.12, 10.19, 10.15, 10.18, 10.1};
const Draw::Range kPriceRange(10.2, 9.8);

const std::vector<double> kVolumes = {900, 620, 310, 280, 405, 150, kGap, kGap, 90,  kGap, 330, 470,
                                      120, 260, 515, 440, 380, 0,   75,   210,  505, 660,  340};
const Draw::Range kVolumeRange(1000.0, 0.0);

const std::vector<double> kSigned = {3,  5,  6, 4, 1, -1, kGap, kGap, -4, kGap, -6, -5,
                                     -3, -2, 0, 1, 2, 4,  5,    6,    3,  1,    -2};
const Draw::Range kSignedRange(7.0, -7.0);

/// The theme that the pictures were accepted with, while it lives.
class PictureTheme {
public:
    PictureTheme() : mBefore(GZ::CUiResource::instance().theme()) {
        QString error;
        EXPECT_TRUE(GZ::CUiResource::instance().setTheme(
            QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/golden/theme.json"), &error))
            << error.toStdString();
    }
    ~PictureTheme() { GZ::CUiResource::instance().setTheme(mBefore); }

private:
    QString mBefore;
};

Series seriesOf(int style, std::vector<std::vector<double>> lines) {
    Series series;
    const int count = int(lines.front().size());
    series.meta = *tests::makeMeta(int(lines.size()), std::vector<qint32>(lines.size(), style));
    series.result = *tests::makeResult(tests::minuteTimes(tests::kDay, 570, count), std::move(lines));
    series.result.mExtra2.clear();
    for (std::size_t i = 0; i < std::size_t(count); ++i) {
        series.result.mValid[i] = series.result.mValues[0][i] == series.result.mValues[0][i] ? 1 : 0;
    }
    return series;
}

/// The values, each changed by a step that depends on its index.
std::vector<double> shifted(std::vector<double> values, double step) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] += step * double(i % 3 + 1);
    }
    return values;
}

std::vector<std::string> someTexts(std::size_t count) {
    std::vector<std::string> texts(count);
    texts[1] = "买入";
    texts[8] = "T0";
    texts[14] = "低点";
    texts[22] = "Last";
    return texts;
}

void drawLine(QPainter &painter, const Series &series, Qt::PenStyle pen, bool gradient) {
    Draw::drawSimpleLine(&painter, kRect, series, kPriceRange, 0, 0, kLast, kLast, pen, 1, true, false, 1.0f,
                         gradient, true);
}

void drawVolume(QPainter &painter, double width, bool hollow) {
    Draw::drawVolStick(&painter, kRect, seriesOf(10, {kVolumes}), kVolumeRange, 0, 0, kLast, kLast, 1, false,
                       true, width, hollow);
}

void drawUpright(QPainter &painter, Qt::PenStyle pen) {
    Draw::drawVertLine(&painter, kRect, seriesOf(14, {{0, 1, 0, 0, kGap, 0, 1, 0, 0, 0, -2, 1, 1}}),
                       kPriceRange, 0, 0, kLast, kLast, pen, 1);
}

/// The chart as a user sees it: gradient, price in its own colour, average.
void drawPriceChart(QPainter &painter) {
    Series series = seriesOf(0, {kPrices, shifted(kPrices, -0.02)});
    for (int line = 0; line < 2; ++line) {
        Draw::drawSimpleLine(&painter, kRect, series, kPriceRange, line, 0, kLast, kLast, Qt::SolidLine, 1,
                             true, false, 1.0f, line == 0, true);
    }
}

void drawColouredLine(QPainter &painter) {
    Series series = seriesOf(0, {kPrices});
    for (std::size_t i = 10; i < 16; ++i) {
        series.result.mExtra1[0][i] = 0x00a5ff; // orange
    }
    drawLine(painter, series, Qt::SolidLine, false);
}

void drawVolumeByPrice(QPainter &painter) {
    Series series = seriesOf(2, {kVolumes});
    series.result.mExtra2 = {std::vector<double>(kVolumes.size())};
    for (std::size_t i = 1; i < kVolumes.size(); ++i) {
        series.result.mExtra2[0][i] = kPrices[i] - kPrices[i - 1];
    }
    series.result.mExtra1[0][12] = 0xff00ff;
    Draw::drawColorStick(&painter, kRect, series, kVolumeRange, 0, 0, kLast, kLast, Qt::SolidLine, 1, true,
                         true, true);
}

void drawSigned(QPainter &painter) {
    Draw::drawColorStick(&painter, kRect, seriesOf(2, {kSigned}), kSignedRange, 0, 0, kLast, kLast,
                         Qt::SolidLine, 1, true, false, true);
}

void drawCandles(QPainter &painter) {
    const Series series =
        seriesOf(12, {kPrices, shifted(kPrices, -0.015), shifted(kPrices, 0.02), shifted(kPrices, -0.025)});
    Draw::drawKLine(&painter, kRect, series, kPriceRange, 0, 0, kLast, kLast, 1, 60, false, 1.0f, 2);
}

void drawCandlesOfCloses(QPainter &painter) {
    Draw::drawKLine(&painter, kRect, seriesOf(12, {kPrices}), kPriceRange, 0, 0, kLast, kLast, 1, 60, false,
                    1.0f, 2);
}

void drawTexts(QPainter &painter) {
    Series series = seriesOf(13, {kPrices});
    series.result.mTexts[0] = someTexts(kPrices.size());
    drawLine(painter, series, Qt::SolidLine, false);
    Draw::drawText(&painter, kRect, series, kPriceRange, 0, 0, kLast, kLast, 1);
}

void drawFixedTexts(QPainter &painter) {
    Series series =
        seriesOf(31, {{0, 0.25, 0, 0, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 0, 0.75, 0, 0, 0, 0, 0, 0, 0, 1.0}});
    series.result.mTexts[0] = someTexts(23);
    Draw::drawTextEx(&painter, kRect, series, kPriceRange, 0, kLast, 1);
}

void drawNumbers(QPainter &painter) {
    Series series = seriesOf(28, {{9.9,  kGap, kGap, kGap, 10.1, kGap, kGap, kGap, 10.0, kGap, kGap, kGap, 9.85,
                                   kGap, kGap, kGap, kGap, kGap, kGap, kGap, kGap, kGap, kGap, kGap, 10.05}});
    series.result.mExtra2 = {{12.5, 0, 0, 0, -3}};
    series.result.mExtra2[0].resize(9, TC::kUnsetValue);
    Draw::drawNumber(&painter, kRect, series, kPriceRange, 0, 0, kLast, kLast, 1, false);
}

void drawIcons(QPainter &painter) {
    QImage arrow(18, 18, QImage::Format_ARGB32_Premultiplied);
    arrow.fill(Qt::transparent);
    for (int y = 0; y < 18; ++y) {
        for (int x = 9 - y / 2 - 1; x < 9 + y / 2 + 1; ++x) {
            arrow.setPixel(x, y, qRgb(255, 200, 0));
        }
    }
    arrow.setDevicePixelRatio(2.0);
    Series series = seriesOf(26, {kPrices});
    drawLine(painter, series, Qt::SolidLine, false);
    for (std::size_t i = 0; i < kPrices.size(); ++i) {
        series.result.mValues[0][i] = i % 4 == 0 ? kPrices[i] : 0.0;
    }
    Draw::drawIcon(&painter, kRect, series, kPriceRange, 0, 0, kLast, kLast, QPixmap::fromImage(arrow), 1);
}

void drawBars(QPainter &painter) {
    Series series = seriesOf(36, {kPrices});
    series.result.mExtra2 = {shifted(kPrices, -0.03)};
    for (std::size_t i = 12; i < kPrices.size(); ++i) {
        series.result.mExtra2[0][i] = kPrices[i] + 0.05;
    }
    Draw::drawStickKline(&painter, kRect, series, kPriceRange, 0, 0, kLast, kLast, 1, false);
}

void drawStacks(QPainter &painter) {
    const Series series =
        seriesOf(42, {std::vector<double>(20, 200.0), shifted(std::vector<double>(20, 100.0), 60),
                      shifted(std::vector<double>(20, 50.0), 90)});
    for (int line = 0; line < 3; ++line) {
        Draw::drawStackVolstick(&painter, kRect, series, kVolumeRange, line, 0, kLast, kLast, 1, true, true);
    }
}

struct Picture {
    const char *name;
    std::function<void(QPainter &)> draw;
};

std::ostream &operator<<(std::ostream &out, const Picture &picture) {
    return out << picture.name;
}

const Picture kPictures[] = {
    {"line", [](QPainter &p) { drawLine(p, seriesOf(0, {kPrices}), Qt::SolidLine, false); }},
    {"line-coloured", drawColouredLine},
    {"line-gradient", drawPriceChart},
    {"line-dotted", [](QPainter &p) { drawLine(p, seriesOf(4, {kPrices}), Qt::DotLine, false); }},
    {"line-dash-dot", [](QPainter &p) { drawLine(p, seriesOf(5, {kPrices}), Qt::DashDotLine, false); }},
    {"circle-dot",
     [](QPainter &p) {
         Draw::drawCircleDot(&p, kRect, seriesOf(1, {kPrices}), kPriceRange, 0, 0, kLast, kLast, 1, true, true);
     }},
    {"color-stick-volume", drawVolumeByPrice},
    {"color-stick-signed", drawSigned},
    {"vol-stick-thin", [](QPainter &p) { drawVolume(p, 0.0, true); }},
    {"vol-stick-wide", [](QPainter &p) { drawVolume(p, 1.0, false); }},
    {"vol-stick-hollow", [](QPainter &p) { drawVolume(p, 0.8, true); }},
    {"k-line", drawCandles},
    {"k-line-closes", drawCandlesOfCloses},
    {"text", drawTexts},
    {"text-fixed", drawFixedTexts},
    {"vert-line", [](QPainter &p) { drawUpright(p, Qt::SolidLine); }},
    {"vert-line-dotted", [](QPainter &p) { drawUpright(p, Qt::DotLine); }},
    {"vert-line-dash-dot", [](QPainter &p) { drawUpright(p, Qt::DashDotLine); }},
    {"vert-line-dash-dot-dot", [](QPainter &p) { drawUpright(p, Qt::DashDotDotLine); }},
    {"icon", drawIcons},
    {"number", drawNumbers},
    {"stick-kline", drawBars},
    {"bool-line",
     [](QPainter &p) {
         Draw::drawBoolLine(&p, kRect, seriesOf(37, {kSigned}), kSignedRange, 0, 0, kLast, kLast, Qt::SolidLine,
                            1);
     }},
    {"segment-line",
     [](QPainter &p) {
         Draw::drawSegmentLine(&p, kRect, seriesOf(41, {kPrices}), kPriceRange, 0, 0, kLast, kLast, 1, false);
     }},
    {"stack-volstick", drawStacks},
};

class DrawStyleTest : public ::testing::TestWithParam<Picture> {
protected:
    void expectPicture(double ratio) {
        const PictureTheme theme;
        const QImage image = tests::rendered(kStyleSize, ratio, qRgb(14, 18, 24), GetParam().draw);
        const QString name = QStringLiteral("draw-%1").arg(QLatin1String(GetParam().name));
        EXPECT_TRUE(tests::matchesGolden(image, tests::goldenName(name, ratio)));
    }
};

TEST_P(DrawStyleTest, LooksLikeItsPicture) {
    expectPicture(1.0);
}

TEST_P(DrawStyleTest, LooksLikeItsPictureAtRatioTwo) {
    expectPicture(2.0);
}

INSTANTIATE_TEST_SUITE_P(Styles, DrawStyleTest, ::testing::ValuesIn(kPictures), [](const auto &test) {
    QString name = QLatin1String(test.param.name);
    return name.remove(QLatin1Char('-')).toStdString();
});

} // namespace
