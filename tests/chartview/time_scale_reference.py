"""The time scale beneath the panes, worked out a second time from clock times.

Reads cases as JSON from the standard input: a market day by name, the width of the view, the number of days and the
width of one character. Writes for every day its clip, the columns of its ticks, and its labels as left ends and texts.
"""

import json
import sys
from math import trunc

STRIP = 50
APART = 48

# Sessions as clock times. A day whose last position is not shown says so.
DAYS = {
    "night": ("21:00-24:00 00:01-02:30 09:01-10:15 10:31-11:30 13:31-15:00", 0),
    "treasury": ("09:15-11:30 13:01-15:15", 0),
    "commodity": ("09:00-10:15 10:31-11:30 13:31-15:00", 0),
    "hongkong": ("09:30-12:00 13:01-16:10", 0),
    "overseas": ("09:00-15:55 16:41-24:00 00:01-02:00", 0),
    "afterhours": ("09:30-11:30 13:01-15:00 15:05-15:30", 1),
    "longafternoon": ("09:30-11:30 13:01-15:30", 0),
    "stock": ("09:30-11:30 13:01-15:00", 0),
}


def minutes(clock):
    return int(clock[:2]) * 60 + int(clock[3:])


def text_of(minute):
    """Midnight at the end of a session is the hour 24."""
    return f"{minute // 60:02}:{minute % 60:02}"


def marks(sessions):
    """Positions of ticks: (position, whether it ends the day). Elapsed minutes run on through the breaks."""
    found, elapsed = [], 0
    for number, (first, last) in enumerate(sessions):
        length = last - first + (number > 0)
        final = number == len(sessions) - 1
        inside = [minute for minute in range(30, length + 1, 30) if minute < length or not final]
        found += [(elapsed + minute, False) for minute in inside]
        if final and length > 0:
            found.append((elapsed + length, True))
        elapsed += length
    return found


def scale(case):
    spans, left_out = DAYS[case["day"]]
    sessions = [tuple(map(minutes, span.split("-"))) for span in spans.split()]
    axis = [minute for first, last in sessions for minute in range(first, last + 1)]
    axis = axis[:len(axis) - left_out]
    days, char = case["days"], case["char"]
    day_width = (case["width"] - 2 * STRIP) / days

    def time(position):
        return text_of(axis[min(position, len(axis) - 1)])

    def column(position):
        step = (day_width - 2.0) / (len(axis) - 1)
        x = trunc(step * position) + 1
        return 1 if x < 1 else min(x, trunc(day_width - 1.0))

    out = []
    base = float(STRIP)
    for ago in reversed(range(days)):
        head = time(0) if days == 1 else f"24-03-{15 - ago:02}"
        ticks, labels = [base], [[trunc(base) + 1, head]]
        free = base + char * len(head) + APART
        for position, ends in marks(sessions):
            text = time(position)
            width = char * len(text)
            x = trunc(base + day_width - 1) if ends else column(position) + base
            ticks.append(x)
            begin = x - width if ends else x - width // 2
            if begin >= free:
                labels.append([begin - 2 if ends else begin, text])
                free = x + APART + (width if ends else width // 2)
        out.append({"clip": [trunc(base), trunc(day_width + 0.5)], "ticks": ticks, "labels": labels})
        base += day_width
    return out


def main():
    json.dump([scale(case) for case in json.load(sys.stdin)], sys.stdout)


if __name__ == "__main__":
    main()
