#include "toolkit/files/DecodedText.h"

#include <QtEndian>

#include <cerrno>
#include <iconv.h>
#include <utility>

namespace GZ {
namespace {

/// An encoding as the C library names it, and the bytes that a character of it takes at least.
struct Encoding {
    const char *name;
    int unit;
};
constexpr Encoding kUtf8{"UTF-8", 1};
constexpr Encoding kChinese{"GB18030", 1};
constexpr const char *kOfQString = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "UTF-16LE" : "UTF-16BE";

/// A text, and how many of its characters stand for what was none.
struct Decoded {
    QString text;
    int replaced = 0;
};

/// Writes characters into a text that has room for one per byte of the content: no encoding here has more of them.
class Decoder {
public:
    Decoder(iconv_t converter, const QByteArray &content)
        : mConverter(converter), mIn(const_cast<char *>(content.constData())), mInLeft(size_t(content.size())),
          mText(content.size(), Qt::Uninitialized), mOut(reinterpret_cast<char *>(mText.data())),
          mOutLeft(size_t(mText.size()) * sizeof(QChar)) {}

    Decoded decode(int unit) {
        int replaced = 0;
        while (iconv(mConverter, &mIn, &mInLeft, &mOut, &mOutLeft) == size_t(-1) && mOutLeft >= sizeof(QChar)) {
            const bool isCutOff = errno == EINVAL;
            skip(isCutOff ? mInLeft : size_t(unit));
            ++replaced;
        }
        mText.chop(int(mOutLeft / sizeof(QChar)));
        return {mText, replaced};
    }

private:
    void skip(size_t bytes) {
        bytes = qMin(bytes, mInLeft);
        mIn += bytes;
        mInLeft -= bytes;
        qToUnaligned(char16_t(QChar::ReplacementCharacter), mOut);
        mOut += sizeof(QChar);
        mOutLeft -= sizeof(QChar);
    }

    iconv_t mConverter;
    char *mIn;
    size_t mInLeft;
    QString mText;
    char *mOut;
    size_t mOutLeft;
};

/// Where the C library cannot get at the encoding, what is no UTF-8 comes as U+FFFD.
Decoded decodedFrom(const Encoding &encoding, const QByteArray &content) {
    const iconv_t converter = iconv_open(kOfQString, encoding.name);
    if (converter == iconv_t(-1)) {
        return {QString::fromUtf8(content), int(content.size())};
    }
    const Decoded decoded = Decoder(converter, content).decode(encoding.unit);
    iconv_close(converter);
    return decoded;
}

} // namespace

QString decodedText(const QByteArray &content) {
    static const std::pair<QByteArray, Encoding> kMarks[] = {
        {QByteArray("\xef\xbb\xbf"), kUtf8},
        {QByteArray("\xff\xfe\0\0", 4), {"UTF-32LE", 4}}, // begins as the next one does
        {QByteArray("\xff\xfe"), {"UTF-16LE", 2}},
        {QByteArray("\0\0\xfe\xff", 4), {"UTF-32BE", 4}},
        {QByteArray("\xfe\xff"), {"UTF-16BE", 2}},
    };
    for (const auto &[mark, encoding] : kMarks) {
        if (content.startsWith(mark)) {
            return decodedFrom(encoding, content.mid(mark.size())).text;
        }
    }
    return unmarkedText(content);
}

QString unmarkedText(const QByteArray &content) {
    const Decoded text = decodedFrom(kUtf8, content);
    return text.replaced == 0 ? text.text : decodedFrom(kChinese, content).text;
}

} // namespace GZ
