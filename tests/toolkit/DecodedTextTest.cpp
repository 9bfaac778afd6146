#include "toolkit/files/DecodedText.h"

#include <gtest/gtest.h>

using GZ::decodedText;
using GZ::unmarkedText;

namespace {

/// Literals with zeros in them.
template <size_t size> QByteArray rawBytes(const char (&literal)[size]) {
    return QByteArray(literal, size - 1);
}

} // namespace

// The bytes are those that iconv(1) and Python write for the texts.

TEST(DecodedText, MarksTellTheEncodingAndAreNoText) {
    EXPECT_EQ(decodedText("\xef\xbb\xbf\xe4\xb8\xad"), QStringLiteral("中"));
    EXPECT_EQ(decodedText(rawBytes("\xff\xfe\x2d\x4e\x61\x00")), QStringLiteral("中a"));
    EXPECT_EQ(decodedText(rawBytes("\xfe\xff\x4e\x2d\x00\x61")), QStringLiteral("中a"));
    EXPECT_EQ(decodedText(rawBytes("\xff\xfe\x00\x00\x2d\x4e\x00\x00")), QStringLiteral("中"));
    EXPECT_EQ(decodedText(rawBytes("\x00\x00\xfe\xff\x00\x00\x4e\x2d")), QStringLiteral("中"));
    for (const QByteArray &mark : {QByteArray("\xef\xbb\xbf"), QByteArray("\xff\xfe"), QByteArray()}) {
        EXPECT_EQ(decodedText(mark), QString());
    }
}

TEST(DecodedText, CharactersBeyondTheFirstPlaneComeAsPairs) {
    const QString text = QStringLiteral("𠮷");
    EXPECT_EQ(text.size(), 2);
    EXPECT_EQ(unmarkedText("\xf0\xa0\xae\xb7"), text);
    EXPECT_EQ(unmarkedText("\x95\x34\xb2\x35\xd6\xd0"), text + QStringLiteral("中")) << "four bytes of GB18030";
    EXPECT_EQ(decodedText(rawBytes("\xff\xfe\x42\xd8\xb7\xdf")), text);
}

TEST(DecodedText, ZerosAreCharacters) {
    EXPECT_EQ(unmarkedText(rawBytes("a\0b")), QString::fromUtf8("a\0b", 3));
}

TEST(DecodedText, WhatIsNoCharacterIsReplacedAndTheRestRead) {
    const QChar replaced(QChar::ReplacementCharacter);
    EXPECT_EQ(unmarkedText("a\xff\xd6\xd0\x62"), QStringLiteral("a%1中b").arg(replaced)) << "of GB18030";
    EXPECT_EQ(unmarkedText("\xd6\xd0\xb9"), QStringLiteral("中%1").arg(replaced)) << "cut off";
    EXPECT_EQ(decodedText("\xef\xbb\xbf\x61\xff\x62"), QStringLiteral("a%1b").arg(replaced));
    EXPECT_EQ(decodedText(rawBytes("\xff\xfe\x61\x00\x62")), QStringLiteral("a%1").arg(replaced));
    EXPECT_EQ(decodedText(rawBytes("\xff\xfe\x00\xdc\x61\x00")), QStringLiteral("%1a").arg(replaced));
}

TEST(DecodedText, AnyBytesAreAText) {
    QByteArray every;
    for (int byte = 0; byte < 256 * 256; ++byte) {
        every.append(char(byte >> 8)).append(char(byte));
    }
    for (const char *mark : {"", "\xef\xbb\xbf", "\xff\xfe", "\xfe\xff"}) {
        const QString text = decodedText(mark + every);
        EXPECT_GT(text.size(), every.size() / 4);
        EXPECT_LE(text.size(), every.size());
    }
}
