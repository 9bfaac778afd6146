#include "terminal/market/TableHeadings.h"

#include <QTextCodec>

namespace terminal {
namespace {

QString decode(QByteArray line) {
    if (line.startsWith("\xef\xbb\xbf")) {
        line.remove(0, 3);
    }
    QTextCodec::ConverterState state;
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(line.constData(), line.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0) {
        return text;
    }
    QTextCodec *chinese = QTextCodec::codecForName("GB18030");
    return chinese ? chinese->toUnicode(line) : text;
}

} // namespace

TableHeadings readHeadings(const QByteArray &line) {
    const QString text = decode(line);
    TableHeadings headings;
    if (!text.contains(QLatin1Char(','))) {
        headings.separator = text.contains(QLatin1Char('\t'))  ? '\t'
                             : text.contains(QLatin1Char(';')) ? ';'
                                                               : ',';
    }
    // Only each heading's own edges are trimmed: an unnamed first column counts.
    for (const QString &heading : text.split(QLatin1Char(headings.separator))) {
        headings.words.append(heading.trimmed().remove(QLatin1Char('"')).toLower());
    }
    return headings;
}

} // namespace terminal
