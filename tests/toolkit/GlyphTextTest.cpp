// Texts of glyphs that were looked up once, against QPainter::drawText() and QFontMetrics.
#include "host/toolkit/GlyphText.h"
#include "host/toolkit/CUiResource.h"
#include "tests/support/MessageGuard.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <random>

namespace {

const QColor kGround(20, 30, 40);
const QColor kPen(255, 80, 60);

QStringList titleTexts() {
    QStringList texts{QStringLiteral("L0:10.67"),
                      QStringLiteral("MACD(12,26,9)"),
                      QStringLiteral("均价:10.23"),
                      QStringLiteral("涨幅:+2.35%"),
                      QStringLiteral("1.23万"),
                      QStringLiteral("非法值"),
                      QStringLiteral("09:30"),
                      QStringLiteral("2026-11-21"),
                      QStringLiteral("AVATAR To. 1111"),
                      QStringLiteral("fi fl ffi"),
                      QStringLiteral("中A1中2b3"),
                      QStringLiteral("--"),
                      QStringLiteral("12元A3"),
                      QStringLiteral("…"),
                      QStringLiteral("买入: 100　价格: 9.98"),
                      QStringLiteral("  两端  "),
                      QStringLiteral("\"，。！（）—“”"),
                      QStringLiteral("jgy{}|@#")};
    std::mt19937 random(11);
    const QString letters = QStringLiteral("0123456789.:+-%万亿 ABCxyzfjT价均量（）");
    for (int i = 0; i < 400; ++i) {
        QString text;
        for (int length = 1 + int(random() % 14); length > 0; --length) {
            text += letters[int(random() % uint(letters.size()))];
        }
        texts.append(text);
    }
    return texts;
}

/// What Qt 6 says of a script that no font of the tests has.
const char *const kNoFont = "OpenType support missing for";

/// Texts that only shaping draws right.
QStringList shapedTexts() {
    return {QStringLiteral("e\u0301te\u0301"),
            QStringLiteral("سلام 12"),
            QStringLiteral("עברית"),
            QStringLiteral("กำ"),
            QString::fromUtf8("😀 1"),
            QStringLiteral("a\tb"),
            QStringLiteral("नमस्ते"),
            QStringLiteral("a\u200bb"),
            QString(300, QLatin1Char('7'))};
}

QImage canvas(double ratio) {
    QImage image(QSize(420, 30) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(kGround);
    return image;
}

template <class Draw> QImage drawn(double ratio, const QPoint &origin, Draw draw) {
    QImage image = canvas(ratio);
    QPainter painter(&image);
    painter.translate(origin);
    painter.setPen(kPen);
    draw(painter);
    return image;
}

class GlyphText : public testing::TestWithParam<double> {
protected:
    void expectSame(const QString &text, const QRect &rect, Qt::Alignment alignment,
                    const QPoint &origin = {}) {
        const QString told =
            QStringLiteral("%1 in %2x%3 at %4").arg(text).arg(rect.width()).arg(rect.height()).arg(GetParam());
        const QImage wanted = drawn(GetParam(), origin, [&](QPainter &painter) {
            painter.setFont(mText.font());
            painter.drawText(rect, int(alignment | Qt::AlignVCenter) | Qt::TextDontClip, text);
        });
        EXPECT_EQ(wanted, drawn(GetParam(), origin,
                                [&](QPainter &painter) { mText.draw(painter, rect, alignment, text); }))
            << qPrintable(told);
        EXPECT_EQ(wanted,
                  drawn(GetParam(), origin,
                        [&](QPainter &painter) { mText.drawOn(painter, kGround, rect, alignment, text); }))
            << qPrintable(told);
    }

    GZ::GlyphText &mText = GZ::GlyphText::ofTheme(QStringLiteral("fnt_index_title_text"));
};

TEST_P(GlyphText, DrawsThePixelsOfThePainter) {
    int i = 0;
    for (const QString &text : titleTexts()) {
        const QRect rect(5 + i % 7, 2, mText.width(text) + (i % 3) * 11, 20 + i % 4);
        for (const Qt::Alignment alignment : {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight}) {
            expectSame(text, rect, alignment);
        }
        ++i;
    }
}

TEST_P(GlyphText, LeavesWhatNeedsShapingToThePainter) {
    const tests::ExpectMessages aboutFonts(kNoFont);
    for (const QString &text : shapedTexts()) {
        expectSame(text, QRect(5, 2, 200, 20), Qt::AlignLeft);
        expectSame(text, QRect(5, 2, 201, 21), Qt::AlignHCenter);
    }
}

TEST_P(GlyphText, DrawsAtThePlaceOfAMovedPainter) {
    expectSame(QStringLiteral("均价:10.23"), QRect(0, 0, 101, 18), Qt::AlignHCenter, QPoint(33, 5));
    expectSame(QStringLiteral("10.23"), QRect(-3, 0, 50, 18), Qt::AlignLeft, QPoint(33, 5));
}

TEST_P(GlyphText, DrawsTextsLongerThanTheirRectangle) {
    expectSame(QStringLiteral("123456789.01万"), QRect(100, 2, 50, 20), Qt::AlignHCenter);
    expectSame(QStringLiteral("123456789.01万"), QRect(100, 2, 50, 20), Qt::AlignRight);
}

INSTANTIATE_TEST_SUITE_P(Ratios, GlyphText, testing::Values(1.0, 1.25, 1.5, 2.0, 3.0));

TEST(GlyphTextMeasures, WidthAndHeightAreThoseOfTheFont) {
    const tests::ExpectMessages aboutFonts(kNoFont);
    for (const char *key : {"fnt_index_title_text", "fnt_graph_axis_text", "fnt_default_normal_fix"}) {
        GZ::GlyphText &text = GZ::GlyphText::ofTheme(QLatin1String(key));
        const QFontMetrics metrics(GZ::CUiResource::instance().getFont(QLatin1String(key)));
        EXPECT_EQ(metrics.height(), text.height());
        for (const QString &line : titleTexts() + shapedTexts() + QStringList{QString(), QStringLiteral(" ")}) {
            EXPECT_EQ(metrics.horizontalAdvance(line), text.width(line)) << qPrintable(line);
        }
    }
}

TEST(GlyphTextMeasures, AnEmptyTextOrRectangleDrawsNothingOutside) {
    GZ::GlyphText &text = GZ::GlyphText::ofTheme(QStringLiteral("fnt_index_title_text"));
    QImage image = canvas(1.0);
    QPainter painter(&image);
    painter.setPen(kPen);
    text.drawOn(painter, kGround, QRect(10, 2, 50, 20), Qt::AlignLeft, QString());
    text.drawOn(painter, kGround, QRect(10, 2, 50, 20), Qt::AlignLeft, QStringLiteral("   "));
    painter.end();
    EXPECT_EQ(canvas(1.0), image);
}

TEST(GlyphTextMeasures, CutsAtTheUpperAndLowerEdgeOverAGround) {
    GZ::GlyphText &text = GZ::GlyphText::ofTheme(QStringLiteral("fnt_index_title_text"));
    const QRect low(10, 12, 100, 7);
    QImage image = canvas(1.0);
    QPainter painter(&image);
    painter.setPen(kPen);
    text.drawOn(painter, kGround, low, Qt::AlignLeft, QStringLiteral("均价"));
    painter.end();
    QImage wanted = canvas(1.0);
    painter.begin(&wanted);
    painter.setClipRect(low);
    painter.setPen(kPen);
    painter.setFont(text.font());
    painter.drawText(low, int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextDontClip, QStringLiteral("均价"));
    painter.end();
    EXPECT_EQ(wanted, image);
    EXPECT_NE(canvas(1.0), image);
}

TEST(GlyphTextMeasures, ATranslucentGroundIsNotCopied) {
    GZ::GlyphText &text = GZ::GlyphText::ofTheme(QStringLiteral("fnt_index_title_text"));
    const auto draw = [&](const QColor &ground) {
        return drawn(1.0, {}, [&](QPainter &painter) {
            text.drawOn(painter, ground, QRect(10, 2, 100, 20), Qt::AlignLeft, QStringLiteral("均价:10.23"));
        });
    };
    EXPECT_EQ(draw(kGround), draw(Qt::transparent));
    EXPECT_EQ(draw(kGround), draw(QColor(255, 255, 255, 254)));
}

TEST(GlyphTextMeasures, ManyCharactersAndColoursAreBounded) {
    GZ::GlyphText text(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_index_title_text")));
    std::mt19937 random(5);
    for (int i = 0; i < 3000; ++i) {
        QString line;
        for (int k = 0; k < 3; ++k) {
            line += QChar(ushort(0x4e00 + random() % 20000));
        }
        const QRect rect(5, 2, 100, 18 + i % 5);
        const QColor pen(int(random() % 256), int(random() % 256), 0);
        QImage composed = canvas(1.0);
        QPainter painter(&composed);
        painter.setPen(pen);
        text.drawOn(painter, kGround, rect, Qt::AlignLeft, line);
        painter.end();
        if (i % 100 == 0) {
            QImage wanted = canvas(1.0);
            painter.begin(&wanted);
            painter.setPen(pen);
            painter.setFont(text.font());
            painter.drawText(rect, int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextDontClip, line);
            painter.end();
            EXPECT_EQ(wanted, composed) << qPrintable(line);
        }
    }
}

TEST(GlyphTextMeasures, FollowsTheTheme) {
    GZ::CUiResource &theme = GZ::CUiResource::instance();
    const QString before = theme.theme();
    const QString key = QStringLiteral("fnt_default_small_heavy");
    GZ::GlyphText::ofTheme(key).width(QStringLiteral("12"));
    ASSERT_TRUE(
        theme.setTheme(before == QLatin1String("light") ? QStringLiteral("dark") : QStringLiteral("light")));
    EXPECT_EQ(theme.getFont(key), GZ::GlyphText::ofTheme(key).font());
    ASSERT_TRUE(theme.setTheme(before));
}

} // namespace
