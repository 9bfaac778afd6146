#pragma once

#include <QSqlQuery>
#include <QVariant>

#include <string>
#include <type_traits>

namespace terminal {

inline void takeColumn(const QVariant &value, std::string &field) {
    field = value.toString().toStdString();
}

/// A field of a type that a QVariant can hold, or an enumeration, which is stored as its number; what cannot be read
/// as that type is 0 or empty.
template <class Field> void takeColumn(const QVariant &value, Field &field) {
    if constexpr (std::is_enum_v<Field>) {
        field = static_cast<Field>(value.toInt());
    } else {
        field = value.value<Field>();
    }
}

/// Takes the columns of a row, from the first one on, into as many fields.
template <class... Fields> void takeColumns(const QSqlQuery &row, Fields &...fields) {
    int column = 0;
    (takeColumn(row.value(column++), fields), ...);
}

} // namespace terminal
