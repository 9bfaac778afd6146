#include "chartdata/SeriesDigest.h"

#include <QHashFunctions>

#include <algorithm>
#include <string>
#include <vector>

namespace TC {
namespace {

template <class Number> uint digestOfNumbers(const std::vector<Number> &numbers, std::size_t count, uint seed) {
    return qHashBits(numbers.data(), std::min(count, numbers.size()) * sizeof(Number), seed);
}

template <class Number>
uint digestOfLines(const std::vector<std::vector<Number>> &lines, std::size_t count, uint seed) {
    for (const std::vector<Number> &line : lines) {
        seed = digestOfNumbers(line, count, seed);
    }
    return seed;
}

} // namespace

uint digestOfPoints(const se::RPCFormulaResult &series, int count, uint seed) {
    const std::size_t points = std::size_t(std::max(count, 0));
    seed = digestOfNumbers(series.mValid, points, seed);
    seed = digestOfLines(series.mValues, points, seed);
    seed = digestOfLines(series.mExtra1, points, seed);
    seed = digestOfLines(series.mExtra2, points, seed);
    for (const std::vector<std::string> &line : series.mTexts) {
        for (std::size_t i = 0; i < std::min(points, line.size()); ++i) {
            seed = qHashBits(line[i].data(), line[i].size(), seed ^ uint(i));
        }
    }
    return seed;
}

} // namespace TC
