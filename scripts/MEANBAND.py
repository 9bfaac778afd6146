# type: 1
# parameter N: 20
# parameter K: 2
#
# 均值回归带: the moving average of the last N prices, with a band of K standard deviations around it. Prices that have
# left the band tend to come back to the average.
# Source: John Bollinger, Bollinger on Bollinger Bands, McGraw-Hill 2001 (the standard deviation is that of the whole
# population of N prices).

import math

import timeshare_model as model


def band(prices, count, width):
    """Average, upper and lower edge for every price; None while there are fewer than `count` prices."""
    middle, upper, lower = [], [], []
    for end in range(1, len(prices) + 1):
        if end < count:
            for edge in (middle, upper, lower):
                edge.append(None)
            continue
        window = prices[end - count : end]
        average = math.fsum(window) / count
        spread = width * math.sqrt(math.fsum((price - average) ** 2 for price in window) / count)
        middle.append(average)
        upper.append(average + spread)
        lower.append(average - spread)
    return middle, upper, lower


def main():
    day = model.read()
    count = day.whole("N", 2, 1000)
    width = day.number("K", 0, 100)
    middle, upper, lower = band(day.price, count, width)
    model.line("中轨", middle)
    model.line("上轨", upper, style=4)
    model.line("下轨", lower, style=4)


if __name__ == "__main__":
    main()
