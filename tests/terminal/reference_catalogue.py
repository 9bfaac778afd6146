#!/usr/bin/env python3
"""Values of the catalogue's formulas over one made-up day, worked out the slow way from their text-book definitions.

To run: python3 reference_catalogue.py. It writes data/catalogue_day.csv, the minutes of the day, and
data/catalogue_values.csv, the values of every line at some of its points. Nothing here shares code with the formula engine: lists of numbers, None for no value.
"""

import itertools
import math
import pathlib

from reference_series import each, full, mean, running, windows

POINTS = 241
KEPT = sorted(set(range(70)) | set(range(70, POINTS, 6)) | {POINTS - 1})


def make_day():
    """Minutes as (open, high, low, close, average, volume, amount); prices in cents walk by a fixed rule."""
    state = 20261120
    bars, cents, volume_sum, amount_sum = [], 1234, 0, 0.0
    for i in range(POINTS):
        draws = []
        for _ in range(6):
            state = (state * 1103515245 + 12345) % 2**31
            draws.append((state >> 8) / 2**23)
        if i == 0:  # the opening auction: one price
            bar = [cents, cents, cents, cents, 48200]
        elif i in (33, 34, 117, 201):  # no trade
            bar = [cents, cents, cents, cents, 0]
        else:
            drift = 1.6 * math.sin(i / 23.0) + 0.8 * math.sin(i / 7.0)
            opened = cents + round(2 * draws[0] - 1)
            closed = opened + round(drift + 5 * (draws[1] - 0.5))
            high = max(opened, closed) + int(3 * draws[2])
            low = min(opened, closed) - int(3 * draws[3])
            shape = 1.0 + 2.5 * ((i - 120.0) / 120.0) ** 2
            bar = [opened, high, low, closed, 100 * int(1 + 90 * shape * draws[4])]
            cents = closed
        volume_sum += bar[4]
        amount = bar[4] * (bar[1] + bar[2] + bar[3]) / 300.0
        amount_sum += amount
        known = None if i in (50, 51) else bar[0] / 100.0  # the source did not know these opening prices
        bars.append((known, bar[1] / 100.0, bar[2] / 100.0, bar[3] / 100.0, amount_sum / volume_sum, bar[4], amount))
    return bars


DAY = make_day()
O, H, L, C, AVG, V, _ = [list(column) for column in zip(*DAY)]
N_ALL = range(POINTS)


# The net value of a fund, and the close of the index that it tracks, on the day before.
NET_VALUE, INDEX_CLOSE = 1.2345, 4000.0


def make_index():
    """Prices of the index by minute; the index opens late, and has minutes without a price of their own."""
    return [None if i < 2 or i % 17 == 5 else round(4000 * (1 + 0.004 * math.sin(i / 31.0)) + i % 5, 2) for i in N_ALL]


INDEX = make_index()


def before(x, n=1):
    return [x[i - n] if i >= n else None for i in N_ALL]


def some(x, n, rule):
    """A rule over those points of the window that there are; n 0 is the whole day so far."""
    result = []
    for whole in windows(x, n):
        part = [value for value in whole if value is not None]
        result.append(rule(part) if part else None)
    return result


def ma(x, n):
    return full(x, n, mean)


def population_deviation(part):
    return math.sqrt(math.fsum((value - mean(part)) ** 2 for value in part) / len(part))


def sample_deviation(part):
    return math.sqrt(math.fsum((value - mean(part)) ** 2 for value in part) / (len(part) - 1))


def total(x, n):
    return some(x, n, math.fsum)


def highest(x, n):
    return some(x, n, max)


def lowest(x, n):
    return some(x, n, min)


def ema(x, n):
    return running(x, itertools.repeat(2.0 / (n + 1)))


def sma(x, n, m=1):
    return running(x, itertools.repeat(m / n))


def instead(x, y):
    return [b if a is None else a for a, b in zip(x, y)]


def typical():
    return each(lambda h, l, c: (h + l + c) / 3, H, L, C)


def change_of_close():
    return each(lambda now, then: now - then, C, before(C))


def true_range():
    ranges = [H[0] - L[0]]
    for i in range(1, POINTS):
        ranges.append(max(H[i] - L[i], abs(H[i] - C[i - 1]), abs(L[i] - C[i - 1])))
    return ranges


def percent_above(x, reference):
    return each(lambda a, b: (a - b) / b * 100, x, reference)


def ratio_percent(x, y):
    return each(lambda a, b: a / b * 100, x, y)


def macd():
    dif = each(lambda a, b: a - b, ema(C, 12), ema(C, 26))
    dea = ema(dif, 9)
    return dif, dea, each(lambda a, b: 2 * (a - b), dif, dea)


def dmi():
    plus, minus = [0.0], [0.0]
    for i in range(1, POINTS):
        up, down = H[i] - H[i - 1], L[i - 1] - L[i]
        plus.append(up if up > 0 and up > down else 0.0)
        minus.append(down if down > 0 and down > up else 0.0)
    average = sma(true_range(), 14)
    pdi, mdi = ratio_percent(sma(plus, 14), average), ratio_percent(sma(minus, 14), average)
    adx = sma(each(lambda p, m: abs(p - m) / (p + m) * 100, pdi, mdi), 6)
    return pdi, mdi, adx, each(lambda a, b: (a + b) / 2, adx, before(adx, 6))


def trix():
    triple = ema(ema(ema(C, 12), 12), 12)
    value = percent_above(triple, before(triple))
    return value, ma(value, 9)


def kdj():
    rsv = each(lambda c, l, h: (c - l) / (h - l) * 100, C, lowest(L, 9), highest(H, 9))
    k = sma(rsv, 3)
    d = sma(k, 3)
    return k, d, each(lambda a, b: 3 * a - 2 * b, k, d)


def rsi(n):
    change = change_of_close()
    gain = each(lambda value: max(value, 0.0), change)
    return ratio_percent(sma(gain, n), sma(each(abs, change), n))


def cci():
    price = typical()
    spread = full(price, 14, lambda part: mean([abs(value - mean(part)) for value in part]))
    return (each(lambda p, m, s: (p - m) / (0.015 * s), price, ma(price, 14), spread),)


def williams(n):
    return each(lambda c, h, l: (h - c) / (h - l) * 100, C, highest(H, n), lowest(L, n))


def roc():
    value = percent_above(C, before(C, 12))
    return value, ma(value, 6)


def mtm():
    value = each(lambda a, b: a - b, C, before(C, 12))
    return value, ma(value, 6)


def obv():
    value, result = 0, []
    for i in N_ALL:
        if i > 0 and C[i] != C[i - 1]:
            value += V[i] if C[i] > C[i - 1] else -V[i]
        result.append(value)
    return result, ma(result, 30)


def accumulation():
    place = [((C[i] - L[i]) - (H[i] - C[i])) / (H[i] - L[i]) if H[i] != L[i] else 0.0 for i in N_ALL]
    return (total(each(lambda p, v: p * v, place, V), 0),)


def volume_ratio():
    change = change_of_close()

    def part(rule):
        return total(each(lambda d, v: v if rule(d) else 0, change, V), 26)

    rise, fall, flat = part(lambda d: d > 0), part(lambda d: d < 0), part(lambda d: d == 0)
    value = each(lambda r, f, e: (2 * r + e) / (2 * f + e) * 100, rise, fall, flat)
    return value, ma(value, 6)


def money_flow():
    price = typical()
    change = each(lambda a, b: a - b, price, before(price))
    into = total(each(lambda d, p, v: p * v if d > 0 else 0, change, price, V), 14)
    out = total(each(lambda d, p, v: p * v if d < 0 else 0, change, price, V), 14)
    return (each(lambda a, b: a / (a + b) * 100, into, out),)


def psychological():
    rises = [1 if i > 0 and C[i] > C[i - 1] else 0 for i in N_ALL]
    value = each(lambda count: count / 12 * 100, total(rises, 12))
    return value, ma(value, 6)


def cr():
    middle = each(lambda h, l: (h + l) / 2, before(H), before(L))
    above = total(each(lambda h, m: max(0.0, h - m), H, middle), 26)
    below = total(each(lambda m, l: max(0.0, m - l), middle, L), 26)
    value = ratio_percent(above, below)
    return value, before(ma(value, 10), 5), before(ma(value, 20), 9)


def brar():
    opened = instead(O, before(C))
    above = total(each(lambda h, c: max(0.0, h - c), H, before(C)), 26)
    below = total(each(lambda c, l: max(0.0, c - l), before(C), L), 26)
    over = total(each(lambda h, o: h - o, H, opened), 26)
    under = total(each(lambda o, l: o - l, opened, L), 26)
    return ratio_percent(above, below), ratio_percent(over, under)


def bollinger():
    middle, spread = ma(C, 20), full(C, 20, population_deviation)
    return middle, each(lambda m, s: m + 2 * s, middle, spread), each(lambda m, s: m - 2 * s, middle, spread)


def crossing():
    short, long = ma(C, 5), ma(C, 20)

    def crossed(a, b, price):
        result = [None]
        for i in range(1, POINTS):
            four = (a[i], b[i], a[i - 1], b[i - 1])
            happened = None not in four and a[i] > b[i] and a[i - 1] <= b[i - 1]
            result.append(price[i] if happened else None)
        return result

    return short, long, crossed(short, long, L), crossed(long, short, H)


def vwap():
    return (each(lambda a, b: a / b, total(each(lambda p, v: p * v, typical(), V), 0), total(V, 0)),)


def net_value():
    """The net value of the day before times the index now over its close; a minute keeps the index of the one before."""
    values, index = [], None
    for price in INDEX:
        index = index if price is None else price
        values.append(None if index is None else NET_VALUE * index / INDEX_CLOSE)
    return (values,)


def deviation():
    value = each(lambda c, a: (c / a - 1) * 100, C, AVG)
    middle, spread = ma(value, 30), full(value, 30, population_deviation)
    return value, each(lambda m, s: m + 2 * s, middle, spread), each(lambda m, s: m - 2 * s, middle, spread)


def schedule():
    by_time = [100000 * min((i + 1) / 240, 1) for i in N_ALL]
    return by_time, each(lambda volume: min(volume * 10 / 100, 100000), total(V, 0))


def candles():
    return C, instead(O, instead(before(C), C)), H, L, AVG


def styles():
    """The values of the lines that stand on the value axis; marks have one every fifteenth minute."""
    wave = [(c / C[0] - 1) * 100 for c in C]
    last = [wave[0]] + wave[:-1]

    def at(height, x=wave):
        return [value + height for value in x]

    def marks(place, x):
        return [x[i] if (i + 1) % 15 == place else None for i in N_ALL]

    share = each(lambda v, top: v / top, V, highest(V, 0))
    lines = [at(2), at(4), at(6), at(8), at(10), at(12), at(14), wave, marks(0, at(18)), wave]
    lines += [share, each(lambda s: s / 2, share), [abs(w) / 2 for w in wave], [abs(w) / 4 for w in wave]]
    lines += [at(22), at(22, last), [max(w, b) + 22.2 for w, b in zip(wave, last)]]
    lines += [[min(w, b) + 21.8 for w, b in zip(wave, last)], marks(3, at(27)), marks(0, at(28))]
    lines += [[0.05] + [None] * (POINTS - 1), marks(0, at(30)), marks(0, at(32))]
    lines += [[1.0 if i + 1 == minute else 0.0 for i in N_ALL] for minute in (30, 60, 90, 120, 150, 180)]
    return lines


FORMULAS = {
    "REALTIME": lambda: (C, AVG),
    "REALTIMEVOL": lambda: (V,),
    "IOPV": net_value,
    "VWAP成交均价": vwap,
    "量价分析": lambda: (C, AVG),
    "量价分析-量": lambda: (V,),
    "偏离度分析": deviation,
    "预计下单": schedule,
    "MACD": macd,
    "DMI": dmi,
    "TRIX": trix,
    "BIAS": lambda: [percent_above(C, ma(C, n)) for n in (6, 12, 24)],
    "KDJ": kdj,
    "RSI": lambda: [rsi(n) for n in (6, 12, 24)],
    "CCI": cci,
    "WR": lambda: [williams(n) for n in (10, 6)],
    "ROC": roc,
    "MTM": mtm,
    "VOL": lambda: (V, ma(V, 5), ma(V, 10)),
    "OBV": obv,
    "AD": accumulation,
    "VR": volume_ratio,
    "MFI": money_flow,
    "PSY": psychological,
    "CR": cr,
    "BRAR": brar,
    "ATR": lambda: (true_range(), sma(true_range(), 14)),
    "STDEV": lambda: (full(C, 20, sample_deviation),),
    "MA": lambda: [ma(C, n) for n in (5, 10, 30, 60)],
    "EXPMA": lambda: [ema(C, n) for n in (12, 50)],
    "BOLL": bollinger,
    "ENV": lambda: [each(lambda m: m * factor, ma(C, 14)) for factor in (1.005, 0.995)],
    "DC": lambda: [highest(H, 20), lowest(L, 20), each(lambda a, b: (a + b) / 2, highest(H, 20), lowest(L, 20))],
    "均线交叉": crossing,
    "分时K线": candles,
    "画线样式": styles,
}


def text(value):
    return "" if value is None else f"{value:.13g}"


def main():
    folder = pathlib.Path(__file__).parent / "data"
    with open(folder / "catalogue_day.csv", "w", encoding="utf-8") as file:
        file.write("open,high,low,close,average,volume,amount,index\n")
        for bar, index in zip(DAY, INDEX):
            own = ["0" if value is None else repr(value) for value in bar]
            file.write(",".join(own + ["" if index is None else repr(index)]) + "\n")
    with open(folder / "catalogue_values.csv", "w", encoding="utf-8") as file:
        file.write("formula,line," + ",".join(str(i) for i in KEPT) + "\n")
        for name, rule in FORMULAS.items():
            for number, line in enumerate(rule()):
                file.write(f"{name},{number}," + ",".join(text(line[i]) for i in KEPT) + "\n")


if __name__ == "__main__":
    main()
