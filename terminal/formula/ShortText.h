#pragma once

#include <QString>

namespace terminal {

/// Characters that are kept of a text which comes from a formula or a model: an error, a name, a description.
constexpr int kLongestShortText = 200;

/// A text, cut when it is longer, never within a character.
inline QString shortened(const QString &text, int length = kLongestShortText) {
    if (text.size() <= length) {
        return text;
    }
    const bool splits = length > 0 && text[length - 1].isHighSurrogate();
    return text.left(splits ? length - 1 : length) + QStringLiteral("…");
}

/// The same of UTF-8, of which no more than is kept gets converted.
inline QString shortenedUtf8(const char *utf8, std::size_t size) {
    constexpr std::size_t kMostBytes = 4 * (kLongestShortText + 1); // more than so many characters have
    return shortened(QString::fromUtf8(utf8, static_cast<int>(size < kMostBytes ? size : kMostBytes)));
}

} // namespace terminal
