#include "toolkit/windows/LuaHighlighter.h"

#include "host/toolkit/ThemeColor.h"

#include <QSet>

namespace GZ {
namespace {

const QSet<QString> &keywords() {
    static const QSet<QString> words{"and",      "break",  "do",   "else", "elseif", "end",  "false", "for",
                                     "function", "goto",   "if",   "in",   "local",  "nil",  "not",   "or",
                                     "repeat",   "return", "then", "true", "until",  "while"};
    return words;
}

bool isWordStart(QChar c) {
    return c.isLetter() || c == QLatin1Char('_');
}

bool isWordPart(QChar c) {
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

/// The level of a long bracket that opens at `at`, as 2 of "[==["; -1 when none does.
int longBracketLevel(const QString &text, int at) {
    int end = at + 1;
    while (end < text.size() && text[end] == QLatin1Char('=')) {
        ++end;
    }
    const bool opens =
        at < text.size() && text[at] == QLatin1Char('[') && end < text.size() && text[end] == QLatin1Char('[');
    return opens ? end - at - 1 : -1;
}

QTextCharFormat colored(const char *key) {
    QTextCharFormat format;
    format.setForeground(themeColor(key));
    return format;
}

} // namespace

LuaHighlighter::LuaHighlighter(QTextDocument *document) : QSyntaxHighlighter(document) {
    updateColors();
}

void LuaHighlighter::updateColors() {
    mKeyword = colored("clr_code_keyword");
    mFunction = colored("clr_code_function");
    mNumber = colored("clr_code_number");
    mText = colored("clr_code_text");
    mComment = colored("clr_code_comment");
    rehighlight();
}

void LuaHighlighter::highlightBlock(const QString &text) {
    setCurrentBlockState(eCode);
    int at = 0;
    const int before = previousBlockState();
    if (before >= eLongText) {
        at = colorLongBracket(text, 0, 0, before - eLongText, false);
    } else if (before >= eLongComment) {
        at = colorLongBracket(text, 0, 0, before - eLongComment, true);
    }
    while (at < text.size()) {
        const QChar c = text[at];
        const int level = longBracketLevel(text, at);
        if (QStringView(text).mid(at, 2) == QLatin1String("--")) {
            at = colorComment(text, at);
        } else if (level >= 0) {
            at = colorLongBracket(text, at, at + level + 2, level, false);
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            at = colorText(text, at);
        } else if (c.isDigit()) {
            at = colorNumber(text, at);
        } else if (isWordStart(c)) {
            at = colorWord(text, at);
        } else {
            ++at;
        }
    }
}

int LuaHighlighter::colorLongBracket(const QString &text, int start, int from, int level, bool comment) {
    const QString closing = QLatin1Char(']') + QString(level, QLatin1Char('=')) + QLatin1Char(']');
    const int found = text.indexOf(closing, from);
    const int end = found < 0 ? text.size() : found + closing.size();
    if (found < 0) {
        setCurrentBlockState((comment ? eLongComment : eLongText) + level);
    }
    setFormat(start, end - start, comment ? mComment : mText);
    return end;
}

int LuaHighlighter::colorComment(const QString &text, int start) {
    const int level = longBracketLevel(text, start + 2);
    if (level >= 0) {
        return colorLongBracket(text, start, start + level + 4, level, true);
    }
    setFormat(start, text.size() - start, mComment);
    return text.size();
}

int LuaHighlighter::colorText(const QString &text, int start) {
    int end = start + 1;
    while (end < text.size() && text[end] != text[start]) {
        end += text[end] == QLatin1Char('\\') ? 2 : 1;
    }
    end = qMin(end + 1, text.size());
    setFormat(start, end - start, mText);
    return end;
}

int LuaHighlighter::colorNumber(const QString &text, int start) {
    int end = start;
    while (end < text.size() && (isWordPart(text[end]) || text[end] == QLatin1Char('.'))) {
        ++end;
    }
    setFormat(start, end - start, mNumber);
    return end;
}

int LuaHighlighter::colorWord(const QString &text, int start) {
    int end = start;
    while (end < text.size() && isWordPart(text[end])) {
        ++end;
    }
    int next = end;
    while (next < text.size() && text[next].isSpace()) {
        ++next;
    }
    if (keywords().contains(text.mid(start, end - start))) {
        setFormat(start, end - start, mKeyword);
    } else if (next < text.size() && (text[next] == QLatin1Char('(') || text[next] == QLatin1Char('{'))) {
        setFormat(start, end - start, mFunction);
    }
    return end;
}

} // namespace GZ
