#include "toolkit/windows/CodeEdit.h"

#include "host/toolkit/CUiResource.h"
#include "host/toolkit/ThemeColor.h"
#include "toolkit/windows/LuaHighlighter.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTextBlock>

namespace GZ {
namespace {

constexpr int kIndent = 4; ///< blanks
constexpr int kGutterMargin = 6; ///< pixels on either side of a number

} // namespace

/// The strip of line numbers.
class CodeEdit::Gutter : public QWidget {
public:
    explicit Gutter(CodeEdit *edit) : QWidget(edit), mEdit(edit) {}

protected:
    void paintEvent(QPaintEvent *event) override { mEdit->paintGutter(event); }

private:
    CodeEdit *mEdit;
};

CodeEdit::CodeEdit(QWidget *parent)
    : QPlainTextEdit(parent), mGutter(new Gutter(this)), mHighlighter(new LuaHighlighter(document())) {
    setLineWrapMode(NoWrap);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &CodeEdit::placeGutter);
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect &rect, int dy) {
        if (dy != 0) {
            mGutter->scroll(0, dy);
        } else {
            mGutter->update(0, rect.y(), mGutter->width(), rect.height());
        }
    });
    connect(document(), &QTextDocument::contentsChange, this, [this](int, int removed, int added) {
        if (mMarked != 0 && removed != added) {
            markLine(0);
        }
    });
    updateColors();
}

void CodeEdit::markLine(int line) {
    mMarked = line > 0 ? qMin(line, blockCount()) : 0;
    if (mMarked != 0) {
        setTextCursor(QTextCursor(document()->findBlockByNumber(mMarked - 1)));
        centerCursor();
    }
    showMark();
    mGutter->update();
}

void CodeEdit::showMark() {
    QList<QTextEdit::ExtraSelection> marks;
    if (mMarked != 0) {
        QTextEdit::ExtraSelection mark;
        mark.format.setBackground(themeColor("clr_code_error_bg"));
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        mark.cursor = QTextCursor(document()->findBlockByNumber(mMarked - 1));
        marks.append(mark);
    }
    setExtraSelections(marks);
}

int CodeEdit::gutterWidth() const {
    const int digits = QString::number(qMax(blockCount(), 100)).size();
    return fontMetrics().horizontalAdvance(QLatin1Char('9')) * digits + 2 * kGutterMargin;
}

void CodeEdit::placeGutter() {
    setViewportMargins(gutterWidth(), 0, 0, 0);
    const QRect inner = contentsRect();
    mGutter->setGeometry(inner.left(), inner.top(), gutterWidth(), inner.height());
}

void CodeEdit::resizeEvent(QResizeEvent *event) {
    QPlainTextEdit::resizeEvent(event);
    placeGutter();
}

void CodeEdit::paintGutter(QPaintEvent *event) {
    QPainter painter(mGutter);
    painter.fillRect(event->rect(), themeColor("clr_code_gutter_bg"));
    painter.setFont(font());
    QTextBlock block = firstVisibleBlock();
    qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= event->rect().bottom()) {
        const qreal height = blockBoundingRect(block).height();
        const QRect row(0, qRound(top), mGutter->width(), qRound(height));
        const bool marked = block.blockNumber() + 1 == mMarked;
        if (marked) {
            painter.fillRect(row, themeColor("clr_code_error_bg"));
        }
        painter.setPen(themeColor(marked ? "clr_text_default" : "clr_code_gutter_text"));
        painter.drawText(row.adjusted(0, 0, -kGutterMargin, 0), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(block.blockNumber() + 1));
        top += height;
        block = block.next();
    }
}

void CodeEdit::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::NoModifier) {
        insertPlainText(QString(kIndent - textCursor().positionInBlock() % kIndent, QLatin1Char(' ')));
    } else if (event->key() == Qt::Key_Return && event->modifiers() == Qt::NoModifier) {
        startLine();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void CodeEdit::startLine() {
    const QString before = textCursor().block().text().left(textCursor().positionInBlock());
    int blanks = 0;
    while (blanks < before.size() && before[blanks].isSpace()) {
        ++blanks;
    }
    insertPlainText(QLatin1Char('\n') + before.left(blanks));
    ensureCursorVisible();
}

void CodeEdit::updateColors() {
    setFont(CUiResource::instance().getFont(QStringLiteral("fnt_default_normal_fix")));
    mHighlighter->updateColors();
    placeGutter();
    showMark();
    mGutter->update();
}

} // namespace GZ
