#pragma once

#include "host/records/RPCFormulaResult.h"

namespace TC {

/// \file
/// Brings the points of an overlay instrument, which need not fall on the same seconds, onto the points of the
/// main series, so that both share an index.

/// Whether a series has as many points and lines as another, in all its lists.
bool hasShapeOf(const se::RPCFormulaResult &series, const se::RPCFormulaResult &main);
/// Gives a series the shape of another: as many points, as many lines, the tags and shared lists themselves.
/// Points that are new to it are zero and not valid; those that it holds already stay.
void shapeLike(se::RPCFormulaResult &series, const se::RPCFormulaResult &main);

/// Puts the values of `overlay` into the points of `aligned`, which has the shape of `main`, from index `first`
/// of both on. Two points share a slot when they lie in the same second. A point of the overlay without a slot
/// is dropped; a slot without a point keeps what it had. Linear in what follows `first`. Answers the first slot
/// whose values or validity are others now, or the length of `main`.
std::size_t alignValues(se::RPCFormulaResult &aligned, const se::RPCFormulaResult &main,
                        const se::RPCFormulaResult &overlay, std::size_t first);

} // namespace TC
