#pragma once

#include <QPlainTextEdit>

namespace GZ {

class LuaHighlighter;

/// A plain text editor with line numbers and the colours of Lua, which can mark one line as faulty. Tab puts in four
/// blanks, a new line keeps the indentation of the one before.
class CodeEdit : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit CodeEdit(QWidget *parent = nullptr);

    /// Marks a line, counted from 1, and puts the cursor into it; 0 marks none. Any change of the text takes the mark
    /// away.
    void markLine(int line);
    /// The marked line, or 0.
    int markedLine() const { return mMarked; }
    /// Width of the strip of line numbers, in pixels.
    int gutterWidth() const;
    /// Takes colours and font of the theme anew.
    void updateColors();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Gutter;

    void placeGutter();
    void paintGutter(QPaintEvent *event);
    void showMark();
    void startLine();

    Gutter *mGutter;
    LuaHighlighter *mHighlighter;
    int mMarked = 0;
};

} // namespace GZ
