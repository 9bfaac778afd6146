#include "terminal/loader/LoadBatch.h"

namespace terminal {

/// Takes one file. Rows of instruments count from 1 in the order in which they come.
class LoadBatch::FileTarget : public ImportTarget {
public:
    FileTarget(LoadBatch &batch, CMarketStore &store, const QString &file)
        : mBatch(batch), mCatalogue(store.catalogue()), mFile(file) {}

    bool isGood() const override { return mBars <= mBatch.mMostBars; }
    QString error() const override {
        return isGood() ? QString()
                        : QStringLiteral("%1: more than %2 bars in one file: split it by days")
                              .arg(mFile)
                              .arg(mBatch.mMostBars);
    }
    qint64 putInstrument(const Instrument &instrument) override {
        const auto before = mBatch.mInstruments.constFind(instrument.key());
        const bool isKnown = before != mBatch.mInstruments.constEnd();
        mNew[kFirstNew + mNew.size()] = isKnown ? *before : instrument;
        return mNew.lastKey();
    }
    bool putTradingDay(const QString &, const QDate &, bool) override { return true; }
    bool putDay(qint64 instrument, int day, BarSource, const MinuteBars &bars) override {
        mBars += bars.size();
        if (isGood()) {
            mDays[placeOf(instrument, day)].bars = bars;
        }
        return isGood();
    }
    bool putTick(qint64, int, int, const Tick &) override { return true; }
    bool putPreviousClose(qint64 instrument, int day, double price) override {
        mDays[placeOf(instrument, day)].previousClose = price;
        return true;
    }
    bool putDaySessions(qint64 instrument, int day, const DaySessions &sessions) override {
        mDays[placeOf(instrument, day)].sessions = sessions;
        return true;
    }
    MinuteBars importedBars(qint64 instrument, int day) override {
        const auto found = mBatch.mDays.find(placeOf(instrument, day));
        return found == mBatch.mDays.end() ? MinuteBars() : found->second.bars;
    }
    Ticks importedTicks(qint64, int) override { return {}; }
    bool commit() override {
        if (!isGood()) {
            return false;
        }
        for (auto &day : mDays) {
            if (day.second.bars.empty()) {
                continue; // a close alone
            }
            LoadedDay &kept = mBatch.mDays[day.first];
            const double before = kept.previousClose;
            kept = std::move(day.second);
            kept.previousClose = kept.previousClose > 0.0 ? kept.previousClose : before;
        }
        for (auto used = mUsed.constBegin(); used != mUsed.constEnd(); ++used) {
            mBatch.mInstruments[used.key()] = *used;
        }
        return true;
    }

private:
    static constexpr qint64 kFirstNew = 1LL << 40; ///< rows of a store are below

    LoadBatch::Place placeOf(qint64 row, int day) {
        if (mLastRow != row) {
            mLastRow = row;
            const Instrument instrument = instrumentOf(row);
            mLastKey = instrument.key();
            mUsed[mLastKey] = instrument;
        }
        return {mLastKey, day};
    }
    Instrument instrumentOf(qint64 row) {
        if (row >= kFirstNew) {
            return mNew[row];
        }
        if (mByRow.isEmpty()) {
            for (const Instrument &instrument : mCatalogue->instruments) {
                mByRow[instrument.id] = instrument.key();
            }
        }
        return mCatalogue->instruments.value(mByRow.value(row));
    }

    LoadBatch &mBatch;
    const std::shared_ptr<const Catalogue> mCatalogue;
    const QString mFile;
    QHash<qint64, QString> mByRow; ///< keys of the catalogue's
    QMap<qint64, Instrument> mNew; ///< by the rows that were answered
    QMap<QString, Instrument> mUsed; ///< by key
    std::map<LoadBatch::Place, LoadedDay> mDays;
    size_t mBars = 0; ///< of all days of the file
    qint64 mLastRow = 0;
    QString mLastKey;
};

std::unique_ptr<ImportTarget> LoadBatch::target(CMarketStore &store, const QString &file) {
    return std::make_unique<FileTarget>(*this, store, file);
}

int LoadBatch::bars() const {
    size_t count = 0;
    for (const auto &day : mDays) {
        count += day.second.bars.size();
    }
    return static_cast<int>(count);
}

void LoadBatch::clear() {
    mDays.clear();
    mInstruments.clear();
}

} // namespace terminal
