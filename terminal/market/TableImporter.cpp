#include "terminal/market/TableImporter.h"

namespace terminal {

bool TableImporter::goesOn(double part) const {
    return !mProgress || mProgress(static_cast<int>(part * 1000.0), 1000);
}

ImportOutcome TableImporter::importFile(const QString &path) {
    ImportOutcome outcome;
    BarFault fault = readFile(path, outcome);
    if (fault.isNone()) {
        MarketWriter writer(mStore);
        fault = storeAll(writer, outcome);
        if (fault.isNone() && !writer.commit()) {
            outcome.error = writer.error();
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
    const QString trouble = begin(text.headings());
    if (!trouble.isEmpty()) {
        return {1, trouble};
    }
    mInstruments.emplace(mOptions, path);
    const auto take = [&](int line, std::string_view row) {
        BarFault wrong = takeRow(line, row);
        outcome.rows += wrong.isNone() ? 1 : 0;
        return wrong;
    };
    fault = text.eachRow(take, [this](double part) { return goesOn(part * mReadingPart); });
    return fault.isNone() ? finishRows() : fault;
}

BarFault TableImporter::storeAll(MarketWriter &writer, ImportOutcome &outcome) {
    const std::vector<InstrumentName> &names = mInstruments->names();
    for (size_t i = 0; i < names.size() && writer.isGood(); ++i) {
        ImportedBars imported;
        BarFault fault = store(writer, names[i], i, imported);
        if (!fault.isNone()) {
            return fault;
        }
        outcome.instruments.append(imported);
    }
    return {};
}

} // namespace terminal
