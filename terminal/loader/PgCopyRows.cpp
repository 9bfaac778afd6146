#include "terminal/loader/PgCopyRows.h"

#include "terminal/market/MarketDate.h"

#include <QtEndian>

#include <cstring>
#include <utility>

namespace terminal {
namespace {

const QDate kFirstDate(2000, 1, 1); ///< of PostgreSQL's dates
constexpr qint16 kColumns = 10;
constexpr int kReserved = 1 << 20; ///< bytes

} // namespace

PgCopyRows::PgCopyRows() {
    constexpr qint32 kNoFlags = 0;
    mBytes.reserve(kReserved);
    mBytes.append("PGCOPY\n\377\r\n\0", 11);
    put(kNoFlags);
    put(kNoFlags); // and no bytes more in front of the rows
}

template <class Number> void PgCopyRows::put(Number value) {
    char bytes[sizeof(Number)];
    qToBigEndian(value, bytes);
    mBytes.append(bytes, sizeof bytes);
}

template <class Number> void PgCopyRows::putField(Number value) {
    put(static_cast<qint32>(sizeof(Number)));
    put(value);
}

void PgCopyRows::add(int instrument, int day, const MinuteBar &bar) {
    put(kColumns);
    putField(static_cast<qint32>(instrument));
    putField(static_cast<qint32>(kFirstDate.daysTo(dateOf(day))));
    putField(bar.time);
    for (const double number : {bar.open, bar.high, bar.low, bar.price, bar.average, bar.volume, bar.amount}) {
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        putField(bits);
    }
}

void PgCopyRows::finish() {
    put(static_cast<qint16>(-1));
}

QByteArray PgCopyRows::take() {
    QByteArray taken;
    std::swap(taken, mBytes);
    mBytes.reserve(kReserved);
    return taken;
}

} // namespace terminal
