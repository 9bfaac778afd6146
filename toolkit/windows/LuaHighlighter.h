#pragma once

#include <QSyntaxHighlighter>
#include <QTextCharFormat>

namespace GZ {

/// Colours of the parts of a Lua text: keywords, names that are called, numbers, texts and comments, those that run
/// over several lines included.
class LuaHighlighter : public QSyntaxHighlighter {
    Q_OBJECT
public:
    explicit LuaHighlighter(QTextDocument *document);

    /// Takes the colours of the theme anew.
    void updateColors();

protected:
    void highlightBlock(const QString &text) override;

private:
    /// What a long bracket that is open at the end of a line holds; states of the lines.
    enum EState : int { eCode = -1, eLongComment = 1, eLongText = 1000 };

    int colorLongBracket(const QString &text, int start, int from, int level, bool comment);
    int colorComment(const QString &text, int start);
    int colorText(const QString &text, int start);
    int colorNumber(const QString &text, int start);
    int colorWord(const QString &text, int start);

    QTextCharFormat mKeyword;
    QTextCharFormat mFunction;
    QTextCharFormat mNumber;
    QTextCharFormat mText;
    QTextCharFormat mComment;
};

} // namespace GZ
