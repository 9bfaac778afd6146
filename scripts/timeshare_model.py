"""What a script model talks to the terminal with: read() its input, then line() for every line of the series.

    import timeshare_model as model

    day = model.read()
    model.line("昨收", [day.price[0]] * len(day))
"""

import json
import math
import sys


class Bars:
    """The minutes of a day, as lists of equal length: time (milliseconds since the epoch at the end of the minute),
    open, high, low, price, average, volume, amount."""

    def __init__(self, instrument, columns):
        self.instrument = instrument
        for name, values in columns.items():
            setattr(self, name, values)

    def __len__(self):
        return len(self.time)


class Day(Bars):
    """The instrument of the request: its bars, its trading day as text, the arguments as texts, and, of a group
    model, the bars of the group's instruments."""

    def __init__(self, told):
        super().__init__(told["instrument"], told["bars"])
        self.day = told["day"]
        self.arguments = told["arguments"]
        self.group = [Bars(member["instrument"], member["bars"]) for member in told["group"]]

    def number(self, name, least=-math.inf, most=math.inf):
        """The value of a numeric argument within a range."""
        text = self.arguments.get(name)
        if text is None:
            raise ValueError(f"缺少参数 {name}")
        try:
            value = float(text)
        except ValueError:
            raise ValueError(f"参数 {name} 不是数：{text}") from None
        if not least <= value <= most:
            raise ValueError(f"参数 {name} 为 {value:g}，应在 {least:g} 到 {most:g} 之间")
        return value

    def whole(self, name, least=1, most=100000):
        """The value of an argument that counts."""
        return int(self.number(name, least, most))


def read():
    """The input of this run."""
    return Day(json.loads(sys.stdin.readline()))


def line(name, values, **looks):
    """Gives one line, a number or None for every minute. looks: style, color="#rrggbb", axis="own" or "hidden"."""
    held = [value if value is not None and math.isfinite(value) else None for value in values]
    _say({"line": name, "values": held, **looks})


def progress(done, total, text=""):
    """Tells how far the run has come."""
    _say({"progress": done, "total": total, "text": text})


def fail(text):
    """Ends the run with an error."""
    _say({"error": text})
    sys.exit(1)


def _say(message):
    print(json.dumps(message, ensure_ascii=False), flush=True)
