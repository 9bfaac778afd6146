#!/usr/bin/env python3
"""Writes the reference values of the formula functions.

To run: python3 reference_formulas.py > data/reference_formulas.json

Every function is written down here once more, by its definition and without regard to speed: each point of a window
is looked at again for each point of the result. Points without a value are None.
"""
import json
import math
import random
import statistics

import reference_series
from reference_series import mean


class Vec(list):
    """A vector; numbers stand for themselves at every point."""

    def __add__(self, other): return each(lambda a, b: a + b, self, other)
    def __radd__(self, other): return each(lambda a, b: b + a, self, other)
    def __sub__(self, other): return each(lambda a, b: a - b, self, other)
    def __rsub__(self, other): return each(lambda a, b: b - a, self, other)
    def __mul__(self, other): return each(lambda a, b: a * b, self, other)
    def __rmul__(self, other): return each(lambda a, b: b * a, self, other)
    def __truediv__(self, other): return each(lambda a, b: a / b, self, other)
    def __rtruediv__(self, other): return each(lambda a, b: b / a, self, other)
    def __mod__(self, other): return each(lambda a, b: a - b * math.floor(a / b), self, other)
    def __neg__(self): return each(lambda a: -a, self)
    def __and__(self, other): return each(lambda a, b: truth(a and b), self, other)
    def __or__(self, other): return each(lambda a, b: truth(a or b), self, other)
    def __invert__(self): return each(lambda a: truth(not a), self)


LENGTH = 0


def truth(x):
    return 1.0 if x else 0.0


def vec(x):
    return x if isinstance(x, Vec) else Vec([x] * LENGTH)


def each(function, *arguments):
    return Vec(reference_series.each(function, *(vec(a) for a in arguments)))


def is_true(x):
    return x is not None and x != 0


def windows(x, n):
    return reference_series.windows(vec(x), n)


def complete(function, x, n):
    """A function of windows of n values."""
    return Vec(reference_series.full(vec(x), n, function))


def of_those_there(function, x, n):
    """A function of the values there are, with their distances from the point."""
    result = Vec()
    for w in windows(x, n):
        there = [(v, len(w) - 1 - i) for i, v in enumerate(w) if v is not None]
        result.append(function(there) if there else None)
    return result


def squares(w): return math.fsum((v - mean(w)) ** 2 for v in w)


def slope(w):
    middle = (len(w) - 1) / 2
    return math.fsum((i - middle) * v for i, v in enumerate(w)) / math.fsum((i - middle) ** 2 for i in range(len(w)))


def smoothed(x, weight):
    return Vec(reference_series.running(vec(x), vec(weight)))


def at_last(condition, value_of):
    """value_of(i, last) of the last point up to each at which the condition is true."""
    result, last = Vec(), None
    for i, c in enumerate(vec(condition)):
        last = i if is_true(c) else last
        result.append(None if last is None else value_of(i, last))
    return result


def at_first(condition, value_of):
    result, first = Vec(), None
    for i, c in enumerate(vec(condition)):
        first = i if first is None and c else first
        result.append(None if first is None else value_of(i, first))
    return result


def choose(c, a, b):
    return Vec(None if x is None else (y if x != 0 else z) for x, y, z in zip(vec(c), vec(a), vec(b)))


def reference(x, n):
    x = vec(x)
    distances = [None if d is None else math.trunc(d) for d in vec(n)]
    return Vec(x[i - d] if d is not None and 0 <= d <= i else None for i, d in enumerate(distances))


def less(a, b): return a is not None and b is not None and a < b


def cross(a, b):
    a, b = vec(a), vec(b)
    return Vec(truth(i > 0 and None not in (a[i], b[i], a[i - 1], b[i - 1]) and a[i] > b[i] and a[i - 1] <= b[i - 1])
               for i in range(LENGTH))


def long_cross(a, b, n):
    a, b = vec(a), vec(b)
    return Vec(truth(i >= n and less(b[i], a[i]) and all(less(a[j], b[j]) for j in range(i - n, i)))
               for i in range(LENGTH))


def filtered(condition, n):
    result = Vec()
    for c in vec(condition):
        result.append(truth(is_true(c) and not any(result[-n:])))
    return result


def folded(function):
    return lambda *arguments: each(function, *arguments)


FUNCTIONS = {
    "ABS": lambda x: each(abs, x),
    "SGN": lambda x: each(lambda a: float((a > 0) - (a < 0)), x),
    "SQRT": lambda x: each(math.sqrt, x),
    "LN": lambda x: each(math.log, x),
    "LOG": lambda x: each(math.log10, x),
    "EXP": lambda x: each(math.exp, x),
    "POW": lambda x, y: each(lambda a, b: a ** b, x, y),
    "MOD": lambda x, y: vec(x) % y,
    "FLOOR": lambda x: each(math.floor, x),
    "CEILING": lambda x: each(math.ceil, x),
    "INTPART": lambda x: each(math.trunc, x),
    "ROUND": lambda x: each(lambda a: math.copysign(math.floor(abs(a) + 0.5), a), x),
    "MAX": folded(max),
    "MIN": folded(min),
    "BETWEEN": lambda x, a, b: each(lambda v, p, q: truth(min(p, q) <= v <= max(p, q)), x, a, b),
    "EQ": folded(lambda a, b: truth(a == b)),
    "NE": folded(lambda a, b: truth(a != b)),
    "GT": folded(lambda a, b: truth(a > b)),
    "GE": folded(lambda a, b: truth(a >= b)),
    "LT": folded(lambda a, b: truth(a < b)),
    "LE": folded(lambda a, b: truth(a <= b)),
    "AND": folded(lambda *a: truth(all(a))),
    "OR": folded(lambda *a: truth(any(a))),
    "NOT": lambda x: each(lambda a: truth(not a), x),
    "IF": choose,
    "VALID": lambda x: Vec(truth(v is not None) for v in vec(x)),
    "DEFAULT": lambda x, y: Vec(b if a is None else a for a, b in zip(vec(x), vec(y))),
    "MA": lambda x, n: complete(mean, x, n),
    "WMA": lambda x, n: complete(lambda w: math.fsum(v * (i + 1) for i, v in enumerate(w)) / (n * (n + 1) / 2), x, n),
    "STD": lambda x, n: complete(statistics.stdev, x, n),
    "VAR": lambda x, n: complete(statistics.variance, x, n),
    "STDP": lambda x, n: complete(statistics.pstdev, x, n),
    "VARP": lambda x, n: complete(statistics.pvariance, x, n),
    "DEVSQ": lambda x, n: complete(squares, x, n),
    "AVEDEV": lambda x, n: complete(lambda w: math.fsum(abs(v - mean(w)) for v in w) / n, x, n),
    "SLOPE": lambda x, n: complete(slope, x, n),
    "SUM": lambda x, n: of_those_there(lambda w: math.fsum(v for v, _ in w), x, n),
    "HHV": lambda x, n: of_those_there(lambda w: max(v for v, _ in w), x, n),
    "LLV": lambda x, n: of_those_there(lambda w: min(v for v, _ in w), x, n),
    "HHVBARS": lambda x, n: of_those_there(lambda w: min(d for v, d in w if v == max(u for u, _ in w)), x, n),
    "LLVBARS": lambda x, n: of_those_there(lambda w: min(d for v, d in w if v == min(u for u, _ in w)), x, n),
    "COUNT": lambda c, n: Vec(sum(is_true(v) for v in w) for w in windows(c, n)),
    "EVERY": lambda c, n: Vec(truth(all(is_true(v) for v in w)) for w in windows(c, n)),
    "EXIST": lambda c, n: Vec(truth(any(is_true(v) for v in w)) for w in windows(c, n)),
    "EMA": lambda x, n: smoothed(x, 2 / (n + 1)),
    "SMA": lambda x, n, m: smoothed(x, m / n),
    "DMA": smoothed,
    "REF": reference,
    "CROSS": cross,
    "LONGCROSS": long_cross,
    "BARSLAST": lambda c: at_last(c, lambda i, last: i - last),
    "BARSSINCE": lambda c: at_first([is_true(v) for v in vec(c)] if not isinstance(c, Vec) else
                                    Vec(is_true(v) for v in c), lambda i, first: i - first),
    "BARSCOUNT": lambda x: at_first(Vec(v is not None for v in vec(x)), lambda i, first: i - first + 1),
    "VALUEWHEN": lambda c, x: at_last(c, lambda i, last: vec(x)[last]),
    "FILTER": filtered,
}

# GAPS has no value at some points, the first ones among them.
GAPS = "IF(EQ(MOD(BARPOS, 7), 3), NAN, REF(CLOSE, 2))"
EXPRESSIONS = [
    "CLOSE + OPEN", "CLOSE - 3", "2 - CLOSE", "-CLOSE", "CLOSE * VOL", "AMOUNT / VOL", "100 / (CLOSE - LOW)",
    "VOL % 7", "(OPEN - CLOSE) % 0.3", "GT(CLOSE, OPEN) & GT(VOL, 500)", "GT(CLOSE, OPEN) | GT(VOL, 500)",
    "~GT(CLOSE, OPEN)", "OPEN", "HIGH", "LOW", "VOL", "AMOUNT", "AVERAGE", "TIME", "BARPOS",
    "ABS(CLOSE - OPEN)", "SGN(CLOSE - OPEN)", "SQRT(CLOSE - OPEN)", "LN(CLOSE)", "LN(CLOSE - OPEN)", "LOG(VOL)",
    "EXP(CLOSE / 10)", "EXP(VOL)", "POW(CLOSE, 1.5)", "POW(CLOSE - OPEN, 0.5)", "MOD(CLOSE - OPEN, 0.07)",
    "FLOOR(10 * (CLOSE - OPEN))", "CEILING(10 * (CLOSE - OPEN))", "INTPART(10 * (CLOSE - OPEN))",
    "ROUND(10 * (CLOSE - OPEN))", "MAX(OPEN, CLOSE)", "MIN(OPEN, CLOSE, AVERAGE)", "MAX(OPEN, 20, LOW)",
    "BETWEEN(CLOSE, OPEN, AVERAGE)", "EQ(CLOSE, OPEN)", "NE(CLOSE, OPEN)", "GT(CLOSE, OPEN)", "GE(CLOSE, OPEN)",
    "LT(CLOSE, OPEN)", "LE(CLOSE, OPEN)", "AND(GT(CLOSE, OPEN), VOL)", "OR(GT(CLOSE, OPEN), LT(VOL, 300), 0)",
    "NOT(VOL)", "IF(GT(CLOSE, OPEN), HIGH, LOW)", "VALID(OPEN)", "DEFAULT(OPEN, REF(CLOSE, 1))",
]
for _name in ("MA", "WMA", "STDP", "VARP", "DEVSQ", "AVEDEV", "SUM", "HHV", "LLV", "HHVBARS", "LLVBARS"):
    for _n in (1, 2, 5, 60, 1000):
        EXPRESSIONS.append(f"{_name}(CLOSE, {_n})")
    EXPRESSIONS += [f"{_name}({GAPS}, 3)", f"{_name}(1e6 + CLOSE, 20)", f"{_name}(ROUND(CLOSE), 9)"]
for _name in ("STD", "VAR", "SLOPE"):
    for _n in (2, 5, 60, 1000):
        EXPRESSIONS.append(f"{_name}(CLOSE, {_n})")
    EXPRESSIONS += [f"{_name}({GAPS}, 3)", f"{_name}(1e6 + CLOSE, 20)", f"{_name}(ROUND(CLOSE), 9)"]
EXPRESSIONS += [f"{_name}({_x}, 0)" for _name in ("SUM", "HHV", "LLV", "HHVBARS", "LLVBARS", "COUNT")
                for _x in ("CLOSE - OPEN", GAPS)]
for _name in ("COUNT", "EVERY", "EXIST", "FILTER"):
    EXPRESSIONS += [f"{_name}({_c}, {_n})" for _c in ("GT(CLOSE, OPEN)", f"LT({GAPS}, CLOSE)") for _n in (1, 2, 3, 30)]
EXPRESSIONS += [
    "EMA(CLOSE, 1)", "EMA(CLOSE, 12)", f"EMA({GAPS}, 5)", "SMA(CLOSE, 3, 1)", "SMA(CLOSE, 3, 3)", f"SMA({GAPS}, 9, 2)",
    "DMA(CLOSE, VOL / 2000)", "DMA(CLOSE, 0.1)", f"DMA(CLOSE, {GAPS} / 100)",
    "REF(CLOSE, 0)", "REF(CLOSE, 1)", "REF(CLOSE, 30)", "REF(CLOSE, 1000)", "REF(CLOSE, -1)",
    "REF(CLOSE, BARSLAST(GT(CLOSE, OPEN)))", "REF(CLOSE, VOL / 100)",
    "CROSS(CLOSE, MA(CLOSE, 5))", "CROSS(CLOSE, 10)", f"CROSS(CLOSE, {GAPS})",
    "LONGCROSS(CLOSE, MA(CLOSE, 5), 1)", "LONGCROSS(CLOSE, MA(CLOSE, 5), 3)", f"LONGCROSS(CLOSE, {GAPS}, 2)",
    "BARSLAST(GT(CLOSE, OPEN))", f"BARSLAST(GT({GAPS}, CLOSE))", "BARSLAST(LT(CLOSE, 0))",
    "BARSSINCE(GT(VOL, 900))", f"BARSSINCE({GAPS})", f"BARSCOUNT({GAPS})", "BARSCOUNT(CLOSE)",
    "VALUEWHEN(GT(CLOSE, OPEN), VOL)", f"VALUEWHEN(GT(CLOSE, AVERAGE), {GAPS})",
    "SMA((CLOSE - LLV(LOW, 9)) / (HHV(HIGH, 9) - LLV(LOW, 9)) * 100, 3, 1)",
    "2 * (EMA(CLOSE, 12) - EMA(CLOSE, 26) - EMA(EMA(CLOSE, 12) - EMA(CLOSE, 26), 9))",
    "MA(CLOSE, 20) + 2 * STD(CLOSE, 20)",
]


def walk(count, seed):
    """Bars of a morning: (minutes after the first one, open, high, low, close, average, volume, amount)."""
    draw = random.Random(seed)
    price, bars, money, shares = 10.0, [], 0.0, 0.0
    for i in range(count):
        opening = price
        price = round(max(5.0, price + draw.choice([-0.05, -0.02, -0.01, 0.0, 0.0, 0.01, 0.02, 0.05])), 2)
        quiet = i % 23 == 11
        volume = 0.0 if quiet else float(draw.randrange(1, 1000))
        price = opening if quiet else price
        money, shares = money + volume * price, shares + volume
        bars.append([i, 0.0 if i % 37 == 5 else opening, round(max(opening, price) + draw.choice([0.0, 0.01, 0.03]), 2),
                     round(min(opening, price) - draw.choice([0.0, 0.01, 0.03]), 2), price,
                     round(money / shares, 4) if shares else price, volume,
                     0.0 if i % 41 == 7 else round(volume * price, 2)])
    return bars


def main():
    global LENGTH
    bars = walk(150, 20200309)
    LENGTH = len(bars)
    columns = [Vec(column) for column in zip(*bars)]
    names = dict(zip(("OPEN", "HIGH", "LOW", "CLOSE", "AVERAGE", "VOL", "AMOUNT"), columns[1:]), NAN=None)
    names["OPEN"] = Vec(v if v != 0 else None for v in names["OPEN"])
    names["AMOUNT"] = Vec(None if a == 0 and v != 0 else a for a, v in zip(names["AMOUNT"], names["VOL"]))
    clock = [9 * 60 + 31 + i for i in columns[0]]
    names["TIME"] = Vec(m // 60 * 100 + m % 60 for m in clock)
    names["BARPOS"] = Vec(range(1, LENGTH + 1))
    cases = [{"formula": text, "values": list(vec(eval(text, dict(FUNCTIONS), names)))} for text in EXPRESSIONS]
    print('{"bars": [\n' + ",\n".join(map(json.dumps, bars)) + '\n],\n"cases": [\n' +
          ",\n".join(json.dumps(case) for case in cases) + "\n]}")


if __name__ == "__main__":
    main()
