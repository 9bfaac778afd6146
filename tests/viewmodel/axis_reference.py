"""The trading-time axis, worked out a second time by listing every position of a day.

Writes one line for each question: a key, a colon and whole numbers. The test asks its own axis the same
questions and compares the lines.
"""

from itertools import takewhile
from math import trunc

# Sessions as clock times, and the positions that are left out at the end of the day.
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
WIDTHS = [0.0, 0.5, 1.0, 2.0, 2.25, 3.0, 10.0, 57.5, 100.0, 241.0, 242.0, 243.0, 333.0 + 1.0 / 3.0, 482.0, 558.0,
          700.0, 977.0, 978.5, 1200.0, 1919.75]
FOUR_IN_THE_AFTERNOON = 16 * 60


def minute_of(clock):
    hour, minute = clock.split(":")
    return int(hour) * 60 + int(minute)


def minutes_of(session):
    opening, closing = map(minute_of, session.split("-"))
    return list(range(opening, closing + 1))


def index_of_minute(sessions, minute):
    """Sessions are lists of minutes. The position of the last listed minute that has come."""
    over = list(takewhile(lambda session: session[-1] <= minute, sessions))
    come = [m for session in over for m in session]
    if len(over) < len(sessions):
        come += [m for m in sessions[len(over)] if m <= minute]
    return len(come) - 1 if come else 0


def night_index_of_minute(sessions, minute):
    """In the evening only evening sessions count. Later each evening session counts one minute less than it has,
    and the distance to the session that comes next is taken with its sign."""
    evening = minute >= FOUR_IN_THE_AFTERNOON
    if evening:
        sessions = [session for session in sessions if session[0] > FOUR_IN_THE_AFTERNOON]
    else:
        sessions = [
            session[1:] if session[0] > FOUR_IN_THE_AFTERNOON and minute < session[0] else session
            for session in sessions
        ]
    ordinal = 0
    for session in sessions:
        left_behind = session[-1] <= minute or (not evening and session[0] > FOUR_IN_THE_AFTERNOON >= minute)
        if not left_behind:
            ordinal += minute - session[0] + 1
            break
        ordinal += len(session)
    return ordinal - 1 if ordinal >= 1 else ordinal


def pixel_of_index(width, count, index):
    between = (width - 2.0) / (count - 1)
    pixel = 1 + trunc(between * index)
    return 1 if pixel < 1 else min(pixel, trunc(width - 1.0))


def index_of_pixel(width, count, pixel):
    if width <= 0.0:
        return -1
    between = (width - 2.0) / (count - 1)
    if between == 0.0:
        # All positions share one pixel: what lies left of it or on it is the first, what lies right the last.
        return count - 1 if pixel > 0 else 0
    return sorted([0, trunc((between * 0.5 + pixel) / between), count - 1])[1]


def answer(key, numbers):
    print(key + ":", *numbers)


def main():
    for name, (clocks, left_out) in DAYS.items():
        sessions = [minutes_of(session) for session in clocks.split()]
        axis = [minute for session in sessions for minute in session]
        if left_out:
            axis = axis[:-left_out]
        count = len(axis)
        answer(f"sessions {name}", [end for session in sessions for end in (session[0], session[-1])])
        answer(f"count {name}", [count])
        answer(f"minutes {name}", [axis[min(index, count - 1)] for index in range(count + 30)])
        answer(f"index {name}", [index_of_minute(sessions, minute) for minute in range(-70, 1500)])
        answer(f"night index {name}", [night_index_of_minute(sessions, minute) for minute in range(-70, 1500)])
        for number, width in enumerate(WIDTHS):
            answer(f"pixel {name} {number}", [pixel_of_index(width, count, index) for index in range(-3, count + 3)])
            answer(f"at pixel {name} {number}",
                   [index_of_pixel(width, count, pixel) for pixel in range(-5, int(width) + 6)])
    answer("widths", [len(WIDTHS)])


if __name__ == "__main__":
    main()
