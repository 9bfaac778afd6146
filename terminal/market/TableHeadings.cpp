#include "terminal/market/TableHeadings.h"

#include "toolkit/files/DecodedText.h"

namespace terminal {
namespace {

QString decode(QByteArray line) {
    if (line.startsWith("\xef\xbb\xbf")) {
        line.remove(0, 3);
    }
    return GZ::unmarkedText(line);
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
