"""Axis strips worked out a second time, for comparison.

Reads a list of cases as JSON from the standard input and writes the expected ticks, labels and time lines.
"""

import json
import sys
from fractions import Fraction

UNSET = 1.7976931348623157e308


def price_decimals(step):
    if step == UNSET:
        return 2
    limit = 1e-5 if step > 1e-5 else 1e-6
    found = 0
    while abs(step - int(step)) >= limit and found <= 10:
        step = step * 10
        found += 1
    return found


def volume_decimals(volume):
    if abs(volume) < 10000 - 1e-5:
        return 0
    if abs(volume) >= 1e12 - 1e-5:
        return 2
    unit = 1e4 if abs(volume) < 1e8 - 1e-5 else 1e8
    return 1 if volume / unit >= 1000 else 2


def fixed(number, places):
    """Decimal text of an exact number, halves away from zero, no sign before zero."""
    places = min(max(places, 0), 10)
    digits = abs(number) * 10**places
    whole = int(digits + Fraction(1, 2))
    text = str(whole).rjust(places + 1, "0")
    if places:
        text = text[:-places] + "." + text[-places:]
    return ("-" if number < 0 and whole else "") + text


def text_of(number, places, kind):
    exact = Fraction(number)
    if kind == "percent":
        return fixed(exact * 100, places) + "%"
    if kind == "scaled":
        for size, unit in ((1e12, "万亿"), (1e8, "亿"), (1e4, "万")):
            if abs(number) >= size - 1e-5:
                return fixed(exact / int(size), places) + unit
    return fixed(exact, places)


def ticks(case):
    height, room = case["height"], int(case["height"] / (case["font"] * 3.2))
    high, low = case["max"], case["min"]
    if not case["main"]:
        return [(high - i * (high - low) / room, height * i // room) for i in range(room + 1)] if room else []
    if case["volume"]:
        room = {0: room, 1: room - 1, 2: room + 1}[room % 3]
        prices = room // 3 * 2
    else:
        room = prices = room // 2 * 2
    if room < 2:
        return [(case["close"], height // 2)]
    rows = [(high - (high - low) * i / prices, height * i // room) for i in range(prices)]
    high, low, bars = case["volMax"], case["volMin"], room - prices
    return rows + [(high - i * (high - low) / bars, height * (prices + i) // room) for i in range(bars)]


TOP, MIDDLE, BOTTOM = 0x20, 0x80, 0x40
LEFT, RIGHT = 0x1, 0x2


def labels(case):
    rows, font = ticks(case), case["font"]
    main, right, last_close = case["main"], case["right"], case["last"]
    band = main and case["volume"]
    step = price_decimals(case["tick"])
    places = case["precision"] if not main and case["precision"] is not None else step

    def box(y, where):
        left, width = (case["width"] - 48, 50) if right else (0, 48)
        rect = [left, y if where == TOP else y - font, width, font * (2 if where == MIDDLE else 1)]
        return rect, where | (LEFT if right else RIGHT)

    def plain(value, decimals):
        return text_of(value, decimals, "scaled" if abs(value) - 100000.0 > 1e-5 else "plain")

    if len(rows) == 1:
        value, y = rows[0]
        if right and not main:
            return []
        return [[*box(y, MIDDLE), "0.00%" if right else plain(value, step), "ic_clr_realtime_axis_text"]]

    out = []
    first_bar = 2 * len(rows) // 3 if band else len(rows)
    for i, (value, y) in enumerate(rows):
        where = TOP if i == 0 else BOTTOM if i == len(rows) - 1 else MIDDLE
        if not main:
            colour = "ic_clr_realtime_axis_text"
        elif i >= first_bar:
            colour = "ic_clr_realtime_colorstick"
        else:
            middle = len(rows) // (3 if band else 2)
            colour = ("ic_clr_realtime_axis_default_text" if i == middle
                      else "ic_clr_index_default_rise" if i < middle else "ic_clr_index_default_fall")
        if i >= first_bar:
            text = text_of(value, volume_decimals(value), "scaled")
        elif main and right:
            share = (value - last_close) / last_close if abs(last_close) > 1e-5 else 0.0
            text = text_of(share, places if i == len(rows) - 1 else 2, "percent")
        else:
            text = plain(value, places)
        out.append([*box(y, where), text, colour])
    return out


def time_lines(sessions):
    """Every minute of the day in a row; a line at each thirtieth of a session and at its end."""
    lines, before = [], 0
    for number, (first, last) in enumerate(sessions):
        length = last - first + (1 if number else 0)
        inner = [k for k in range(30, length, 30)]
        lines += [before + k for k in inner]
        if number < len(sessions) - 1 and length > 0:
            lines.append(before + length)
        before += max(length, 0)
    return lines


def main():
    answers = [{"ticks": ticks(case), "labels": labels(case), "lines": time_lines(case["sessions"])}
               for case in json.load(sys.stdin)]
    json.dump(answers, sys.stdout)


if __name__ == "__main__":
    main()
