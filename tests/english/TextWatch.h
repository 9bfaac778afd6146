#pragma once

#include <QStringList>
#include <QTranslator>

class QWidget;

namespace tests {

/// Sees every text that a program asks a translation for, and keeps those in Chinese that no catalogue has. Install it after
/// the program's language; it translates nothing by itself.
class TextWatch : public QTranslator {
public:
    TextWatch();
    ~TextWatch() override;

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *comment, int count) const override;
    /// "context: text" of each text that has no translation.
    QStringList missing() const;

private:
    QTranslator mLibrary;
    QTranslator mTerminal;
    struct Found;
    Found *mFound;
};

/// What a window and its parts say: texts, titles, tips, names for screen readers, entries of boxes, headings and entries of
/// menus, each with the class that says it.
QStringList textsOf(const QWidget &window);

/// The texts with Chinese in them, after names of data were taken out.
QStringList chineseOf(const QStringList &texts, QStringList names);

/// The parts of a window whose text is wider than their room, with both widths.
QStringList clippedOf(const QWidget &window);

} // namespace tests
