#!/usr/bin/env python3
"""MACD, KDJ, BOLL and RSI of whole series in NumPy (Debian's python3-numpy), for a look beside timeshare_formula_bench.

Microseconds of processor time, the median of some runs, the same prices as that program's. Averages that look back for
ever are scanned by doubling, which is how an array library does a recurrence: log2 of the reach many passes.
"""
import statistics
import time

import numpy as np
from numpy.lib.stride_tricks import sliding_window_view


def average(values, keep):
    """y[i] = keep * y[i - 1] + (1 - keep) * values[i], with y[0] = values[0]."""
    result = values * (1.0 - keep)
    result[0] = values[0]
    step, weight = 1, keep
    while step < len(values) and weight > 1e-18:
        result[step:] += weight * result[:-step]
        step, weight = 2 * step, weight * weight
    return result


def ema(values, count):
    return average(values, 1.0 - 2.0 / (count + 1))


def sma(values, count):
    return average(values, 1.0 - 1.0 / count)


def extreme(values, count, function):
    result = np.empty_like(values)
    result[:count - 1] = (np.maximum if function is np.max else np.minimum).accumulate(values[:count - 1])
    result[count - 1:] = function(sliding_window_view(values, count), axis=1)
    return result


def macd(close, high, low):
    dif = ema(close, 12) - ema(close, 26)
    dea = ema(dif, 9)
    return dif, dea, 2 * (dif - dea)


def kdj(close, high, low):
    lowest = extreme(low, 9, np.min)
    rsv = (close - lowest) / (extreme(high, 9, np.max) - lowest) * 100
    k = sma(rsv, 3)
    d = sma(k, 3)
    return k, d, 3 * k - 2 * d


def boll(close, high, low):
    count = 20
    sums = np.cumsum(np.concatenate(([0.0], close)))
    mid = (sums[count:] - sums[:-count]) / count
    width = 2 * np.std(sliding_window_view(close, count), axis=1, ddof=1)
    return mid, mid + width, mid - width


def rsi(close, high, low):
    change = np.diff(close, prepend=close[0])
    return (sma(np.maximum(change, 0.0), 6) / np.maximum(sma(np.abs(change), 6), 1e-300) * 100,)


def main():
    for points in (241, 1440, 1000000):
        price = 10.0 + 0.5 * np.sin(np.arange(points) * 0.37)
        series = (price + 0.01, price + 0.02, price - 0.02)
        for formula in (macd, kdj, boll, rsi):
            runs = []
            for _ in range(7 if points > 10000 else 301):
                start = time.process_time_ns()
                formula(*series)
                runs.append((time.process_time_ns() - start) / 1000)
            print(f"{formula.__name__.upper():5} {points:8} points {statistics.median(runs):12.1f} us")


if __name__ == "__main__":
    main()
