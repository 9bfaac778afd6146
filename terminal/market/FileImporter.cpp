#include "terminal/market/FileImporter.h"

#include "terminal/market/MinuteBarImporter.h"
#include "terminal/market/TickImporter.h"
#include "toolkit/files/RegularFile.h"

namespace terminal {
namespace {

/// A file that cannot be read counts as one of bars; its import tells why.
ImportKind kindOfFile(const QString &path) {
    constexpr qint64 kLongestLine = 65536; ///< bytes
    GZ::RegularFile file(path);
    const QByteArray head = file.head(kLongestLine);
    return file.isGood() ? kindOfTable(readHeadings(head.left(head.indexOf('\n')))) : ImportKind::Bars;
}

template <class Importer>
ImportOutcome importWith(CMarketStore &store, const ImportOptions &options, const QString &path,
                         const Progress &progress) {
    Importer importer(store, options);
    importer.setProgress(progress);
    return importer.importFile(path);
}

} // namespace

ImportOutcome importMarketFile(CMarketStore &store, const ImportOptions &options, const QString &path,
                               const Progress &progress) {
    return kindOfFile(path) == ImportKind::Bars ? importWith<MinuteBarImporter>(store, options, path, progress)
                                                : importWith<TickImporter>(store, options, path, progress);
}

} // namespace terminal
