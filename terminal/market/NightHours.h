#pragma once

#include <QDate>
#include <QString>
#include <QVector>

#include <optional>

namespace terminal {

/// When the night session of a product of an exchange ended that was held on an evening: a minute since midnight, as
/// nightEndOfProduct() has it, 0 when none was held. Nothing for products whose history is not known.
std::optional<int> nightEndOn(const QString &exchange, const QString &product, const QDate &evening);

} // namespace terminal
