#include "host/drawing/CArrowColorSimpleText.h"

#include "host/toolkit/CUiResource.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

using TC::CArrowColorSimpleText;

namespace {

const QString kFont = QStringLiteral("fnt_index_title_text");

/// Columns of an image that have a pixel of a colour, first and last; -1 and -1 when none has.
std::pair<int, int> columnsOf(const QImage &image, QRgb color) {
    std::pair<int, int> columns(-1, -1);
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixel(x, y) == color) {
                columns = {columns.first < 0 ? x : columns.first, x};
            }
        }
    }
    return columns;
}

class CArrowColorSimpleTextTest : public ::testing::Test {
protected:
    CArrowColorSimpleTextTest() { GZ::CUiResource::instance().setTheme(QStringLiteral("dark")); }
    QImage drawn(int width, bool *all = nullptr) {
        QImage image(width, 16, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        const bool whole = mText.draw(painter, image.rect());
        if (all) {
            *all = whole;
        }
        return image;
    }
    static int widthOf(const char *text) {
        return QFontMetrics(GZ::CUiResource::instance().getFont(kFont))
            .horizontalAdvance(QString::fromUtf8(text));
    }

    CArrowColorSimpleText mText{kFont};
};

TEST_F(CArrowColorSimpleTextTest, KeepsRunsWithTheirColours) {
    EXPECT_TRUE(mText.isEmpty());
    mText.append(QStringLiteral("价格:10.00"), Qt::white);
    mText.append(QString(), Qt::red);
    mText.append(QStringLiteral("均价:9.95"), Qt::yellow, CArrowColorSimpleText::eArrowUp);
    const QList<QPair<QString, QColor>> runs = mText.getTextColor();
    ASSERT_EQ(runs.size(), 2);
    EXPECT_EQ(runs[0].first, QStringLiteral("价格:10.00"));
    EXPECT_EQ(runs[0].second, QColor(Qt::white));
    EXPECT_EQ(runs[1].first, QStringLiteral("均价:9.95"));
    EXPECT_EQ(runs[1].second, QColor(Qt::yellow));
    EXPECT_EQ(mText.text(), QStringLiteral("价格:10.00 均价:9.95"));
    CArrowColorSimpleText other = mText;
    EXPECT_TRUE(other == mText);
    other.append(QStringLiteral("x"), Qt::white);
    EXPECT_TRUE(other != mText);
    mText.clear();
    EXPECT_EQ(mText.text(), QString());
    EXPECT_EQ(mText.width(), 0);
}

TEST_F(CArrowColorSimpleTextTest, WidthIsThatOfTheRunsWithGapsAndArrows) {
    mText.append(QStringLiteral("均价"), Qt::white);
    EXPECT_EQ(mText.width(), widthOf("均价"));
    mText.append(QStringLiteral("10.00"), Qt::white, CArrowColorSimpleText::eArrowDown);
    EXPECT_EQ(mText.width(), widthOf("均价") + 8 + widthOf("10.00") + 8);
}

TEST_F(CArrowColorSimpleTextTest, ArrowsHaveTheColourAndTheDirectionOfTheMove) {
    const QRgb rise = GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_index_default_rise")).rgb();
    const QRgb fall = GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_index_default_fall")).rgb();
    mText.append(QStringLiteral("1"), Qt::white, CArrowColorSimpleText::eArrowUp);
    mText.append(QStringLiteral("2"), Qt::white, CArrowColorSimpleText::eArrowDown);
    const QImage image = drawn(80);
    const int up = widthOf("1") + 1; // left edge of the first arrow, seven pixels wide
    EXPECT_EQ(columnsOf(image, rise), std::make_pair(up, up + 6));
    const int down = widthOf("1") + 8 + 8 + widthOf("2") + 1;
    EXPECT_EQ(columnsOf(image, fall), std::make_pair(down, down + 6));
    // The tip is the middle column: alone on the first row of a rise and on the last row of a fall.
    int top = 0;
    while (image.pixel(up + 3, top) != rise) {
        ++top;
    }
    EXPECT_NE(image.pixel(up + 2, top), rise);
    EXPECT_EQ(image.pixel(up, top + 3), rise);
    EXPECT_EQ(image.pixel(down, top), fall);
    EXPECT_NE(image.pixel(down + 2, top + 3), fall);
    EXPECT_EQ(image.pixel(down + 3, top + 3), fall);
}

TEST_F(CArrowColorSimpleTextTest, RunsThatDoNotFitAreCut) {
    bool all = false;
    mText.append(QStringLiteral("MMMM"), QColor(255, 0, 0));
    mText.append(QStringLiteral("MMMM"), QColor(0, 255, 0));
    mText.append(QStringLiteral("MMMM"), QColor(0, 0, 255));
    drawn(mText.width(), &all);
    EXPECT_TRUE(all);
    drawn(mText.width() - 1, &all);
    EXPECT_FALSE(all);
    const int run = widthOf("MMMM");
    const QImage image = drawn(run + 8 + run / 2, &all);
    EXPECT_FALSE(all);
    const auto isInk = [&](int x, int channel) {
        for (int y = 0; y < image.height(); ++y) {
            if ((image.pixel(x, y) >> channel & 0xff) > 100) {
                return true;
            }
        }
        return false;
    };
    int green = 0;
    for (int x = 0; x < image.width(); ++x) {
        EXPECT_FALSE(isInk(x, 0)) << "the third run is left out";
        green += isInk(x, 8);
    }
    EXPECT_GT(green, 0);
    drawn(1, &all);
    EXPECT_FALSE(all);
}

TEST_F(CArrowColorSimpleTextTest, EllipsisTellsOfRunsThatAreLeftOut) {
    mText.append(QStringLiteral("MM"), QColor(255, 0, 0));
    const int first = mText.width();
    mText.append(QStringLiteral("MMMM"), QColor(0, 255, 0));
    // Room for the first run and a little more, where the second one cannot begin.
    const QImage image = drawn(first + widthOf("…") + 2);
    int red = -1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            red = qRed(image.pixel(x, y)) > 100 ? x : red;
        }
    }
    EXPECT_GE(red, first) << "dots behind the first run";
}

TEST_F(CArrowColorSimpleTextTest, NumberIsNeverCutInTwo) {
    mText.append(QStringLiteral("MM"), QColor(255, 0, 0));
    mText.append(QStringLiteral("价格:1234.56"), QColor(0, 255, 0));
    const int whole = mText.width();
    const int dots = widthOf("MM") + 8 + widthOf("…");
    for (int width = dots; width < whole; ++width) {
        const QImage image = drawn(width);
        for (int x = dots; x < width; ++x) {
            for (int y = 0; y < image.height(); ++y) {
                ASSERT_EQ(image.pixel(x, y), qRgb(0, 0, 0)) << width;
            }
        }
    }
}

TEST_F(CArrowColorSimpleTextTest, RepaintingTheChangeGivesTheWholeLine) {
    const auto line = [](const QStringList &texts, CArrowColorSimpleText::EArrow arrow) {
        CArrowColorSimpleText text(kFont);
        for (const QString &one : texts) {
            text.append(one, one.startsWith('-') ? Qt::green : Qt::white, arrow);
        }
        return text;
    };
    const QString name = QStringLiteral("浦发银行");
    const std::vector<CArrowColorSimpleText> lines = {
        line({name, "10.00", "+1.00%"}, CArrowColorSimpleText::eArrowNone),
        line({name, "10.00", "-1.00%"}, CArrowColorSimpleText::eArrowNone),
        line({name, "9.99", "-1.00%", "V:5"}, CArrowColorSimpleText::eArrowNone),
        line({name, "9.99", "-1.00%", "V:5"}, CArrowColorSimpleText::eArrowUp),
        line({name}, CArrowColorSimpleText::eArrowUp),
        line({}, CArrowColorSimpleText::eArrowNone),
        line({"MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM", "1"}, CArrowColorSimpleText::eArrowNone),
    };
    const QRect rect(6, 0, 260, 16);
    const auto paint = [&rect](QImage &image, const CArrowColorSimpleText &text, const QRect &dirty) {
        QPainter painter(&image);
        painter.setClipRect(dirty);
        painter.fillRect(dirty, Qt::black);
        text.draw(painter, rect, dirty);
    };
    for (const CArrowColorSimpleText &before : lines) {
        for (const CArrowColorSimpleText &now : lines) {
            QImage walked(280, 16, QImage::Format_RGB32);
            walked.fill(Qt::black);
            QImage whole = walked;
            paint(walked, before, walked.rect());
            paint(walked, now, now.changeFrom(before, rect));
            paint(whole, now, whole.rect());
            EXPECT_EQ(walked, whole) << before.text().toStdString() << " -> " << now.text().toStdString();
        }
    }
}

TEST_F(CArrowColorSimpleTextTest, ChangeBeginsAtTheFirstRunThatDiffers) {
    mText.append(QStringLiteral("MM"), Qt::white);
    mText.append(QStringLiteral("10.00"), Qt::white);
    CArrowColorSimpleText other(kFont);
    other.append(QStringLiteral("MM"), Qt::white);
    other.append(QStringLiteral("10.01"), Qt::white);
    const QRect change = other.changeFrom(mText, QRect(0, 0, 400, 16));
    EXPECT_GT(change.left(), widthOf("MM"));
    EXPECT_LE(change.left(), widthOf("MM") + 8);
    EXPECT_LT(change.right(), widthOf("MM10.00") + 20);
    EXPECT_TRUE(mText.changeFrom(mText, QRect(0, 0, 400, 16)).width() <= 8) << "the room behind the line";
}

TEST_F(CArrowColorSimpleTextTest, NothingIsDrawnWhollyOnNoRoom) {
    bool all = false;
    drawn(10, &all);
    EXPECT_TRUE(all) << "an empty line";
    QImage image(20, 16, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    mText.append(QStringLiteral("M"), Qt::white);
    EXPECT_FALSE(mText.draw(painter, QRect(0, 0, 0, 16)));
    EXPECT_FALSE(mText.draw(painter, QRect(0, 0, -5, 16)));
    painter.end();
    EXPECT_EQ(columnsOf(image, qRgb(255, 255, 255)), std::make_pair(-1, -1));
}

} // namespace
