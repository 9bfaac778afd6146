#include "terminal/market/FileImporter.h"

#include "terminal/market/ColumnChoice.h"
#include "terminal/market/MinuteBarImporter.h"
#include "terminal/market/TickImporter.h"
#include "toolkit/files/RegularFile.h"

namespace terminal {
namespace {

/// The headings of a file; none of one that cannot be read, which counts as one of bars: its import tells why.
TableHeadings headingsOfFile(const QString &path) {
    constexpr qint64 kLongestLine = 65536; ///< bytes
    GZ::RegularFile file(path);
    const QByteArray head = file.head(kLongestLine);
    return file.isGood() ? readHeadings(head.left(head.indexOf('\n'))) : TableHeadings();
}

template <class Importer>
ImportOutcome importWith(CMarketStore &store, const ImportOptions &options, const QString &path,
                         const Progress &progress, const ImportTargetMaker &target) {
    Importer importer(store, options);
    importer.setProgress(progress);
    importer.setTarget(target);
    return importer.importFile(path);
}

} // namespace

ImportOutcome importMarketFile(CMarketStore &store, ImportOptions options, const QString &path,
                               const Progress &progress, const ImportTargetMaker &target) {
    TableHeadings headings = headingsOfFile(path);
    if (options.columns.isEmpty()) {
        options.columns = rememberedColumns(store, headings);
    }
    applyColumns(options.columns, headings); // what is wrong with it is told by the import
    return kindOfTable(headings) == ImportKind::Bars
               ? importWith<MinuteBarImporter>(store, options, path, progress, target)
               : importWith<TickImporter>(store, options, path, progress, target);
}

} // namespace terminal
