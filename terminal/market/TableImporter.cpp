#include "terminal/market/TableImporter.h"

#include "terminal/market/ColumnChoice.h"
#include "terminal/market/MarketWriter.h"

namespace terminal {

bool TableImporter::goesOn(double part) const {
    return !mProgress || mProgress(static_cast<int>(part * 1000.0), 1000);
}

ImportOutcome TableImporter::importFile(const QString &path) {
    ImportOutcome outcome;
    BarFault fault = readFile(path, outcome);
    if (fault.isNone()) {
        const std::unique_ptr<ImportTarget> target =
            mMakeTarget ? mMakeTarget() : std::make_unique<MarketWriter>(mStore);
        fault = storeAll(*target, outcome);
        if (fault.isNone() && !target->commit()) {
            outcome.error = target->error();
        }
    }
    if (!fault.isNone()) {
        outcome.error = ImportText::located(path, fault);
    }
    if (!outcome.isGood()) {
        outcome.instruments.clear();
    }
    return outcome;
}

BarFault TableImporter::readFile(const QString &path, ImportOutcome &outcome) {
    BarFault fault = checkMarket(mOptions);
    ImportText text;
    if (fault.isNone()) {
        fault = text.open(path);
    }
    if (!fault.isNone()) {
        return fault;
    }
    TableHeadings headings = text.headings();
    QString trouble = applyColumns(mOptions.columns, headings);
    trouble = trouble.isEmpty() ? begin(headings) : trouble;
    if (!trouble.isEmpty()) {
        return {1, trouble};
    }
    mInstruments.emplace(mOptions, path);
    BarFault first;
    // The file is refused with its first wrong row; some more are told at once.
    const auto take = [&](int line, std::string_view row) {
        BarFault wrong = takeRow(line, row);
        outcome.rows += wrong.isNone() ? 1 : 0;
        if (wrong.isNone()) {
            return BarFault();
        }
        outcome.leftOut.add(line, wrong.reason);
        first = first.isNone() ? wrong : first;
        return outcome.leftOut.count < LeftOutRows::kTold ? BarFault() : first;
    };
    const auto passOver = [&outcome](int line) {
        outcome.leftOut.add(line, QStringLiteral("the headings over again"));
    };
    fault = text.eachRow(
        take, [this](double part) { return goesOn(part * mReadingPart); }, passOver);
    fault = first.isNone() ? fault : first;
    return fault.isNone() ? finishRows() : fault;
}

BarFault TableImporter::storeAll(ImportTarget &target, ImportOutcome &outcome) {
    const std::vector<InstrumentName> &names = mInstruments->names();
    for (size_t i = 0; i < names.size() && target.isGood(); ++i) {
        ImportedBars imported;
        BarFault fault = store(target, names[i], i, imported);
        if (!fault.isNone()) {
            return fault;
        }
        outcome.leftOut.add(imported.repeated);
        imported.repeated = LeftOutRows();
        outcome.instruments.append(imported);
    }
    return {};
}

} // namespace terminal
