"""Reference of how results become series: reads charts with their operations, writes what each one leaves.

Written for clearness alone: a point is a dict, overlays are joined by grouping points of a second.
"""

import copy
import itertools
import json
import sys

LINES = 2


def points_of(operation):
    lines = operation["values"]
    return [
        {"time": tuple(time), "valid": 1, "values": [line[i] for line in lines]}
        for i, time in enumerate(operation["times"])
    ]


def second(point):
    return int(point["time"][0] / 1000)


def last_average(points):
    known = [point["values"][1] for point in points if point["values"][1] is not None]
    return known[-1] if known else 0.0


class Chart:
    def __init__(self, setting):
        self.live = setting["live"]
        self.fill_gaps = setting["fillGaps"]
        self.overlays = setting["overlays"]
        self.raw = {}
        self.shown = {}
        self.count = 0

    # Overlays

    def align(self, name, first):
        raw, main = self.raw.get(name), self.shown.get("main")
        if raw is None or main is None or first >= len(main) or first >= len(raw):
            return
        if self.fill_gaps:
            self.shown[name] = copy.deepcopy(raw)
            return
        slots = self.shown.setdefault(name, [])
        del slots[len(main):]
        while len(slots) < len(main):
            slots.append({"time": (0, 0), "valid": 0, "values": [0.0] * LINES})
        by_second = {
            key: list(group) for key, group in itertools.groupby(raw[first:], second)
        }
        for key, group in itertools.groupby(range(first, len(main)), lambda i: second(main[i])):
            for slot, point in zip(group, by_second.get(key, [])):
                slots[slot] = {
                    "time": main[slot]["time"],
                    "valid": 1,
                    "values": list(point["values"]),
                }

    def align_all(self, first):
        for name in self.overlays:
            self.align(name, first)

    # Operations: each answers (flags without the one of the range, average or None)

    def history(self, name, operation):
        points = points_of(operation)
        if name in self.overlays:
            self.raw[name] = points
            self.align(name, 0)
            return 4, None
        self.shown[name] = points
        if name != "main":
            return 4, None
        if self.live:
            self.count = len(points)
        self.align_all(0)
        return 4, last_average(points[-1:])

    def point(self, name, operation):
        overlay = name in self.overlays
        points = (self.raw if overlay else self.shown).get(name)
        if points is None:
            return 0, None
        time = tuple(operation["time"])
        times = [point["time"] for point in points]
        values = operation["values"]
        if not times or time > max(times):
            points.append({"time": time, "valid": 1, "values": values + [None] * (LINES - len(values))})
            index, flags = len(points) - 1, 5
        elif time in times:
            index = times.index(time)
            points[index]["values"][: len(values)] = values
            points[index]["valid"] = 1
            flags = 1 if overlay or index == len(points) - 1 else 5
        else:
            return 0, None
        if overlay:
            self.align(name, len(points) - 1)
            return flags, None
        if name != "main":
            return flags, None
        if self.live:
            self.count = len(points)
        self.align_all(index)
        return flags, values[1] if len(values) > 1 else 0.0

    def push(self, name, operation):
        assert name == "main"
        points, stored = points_of(operation), self.shown.get("main")
        flags, first = 4, 0
        if stored is None or not points:
            self.shown["main"] = points
        else:
            newest = points[-1]
            known = stored[-1]["time"][0] if stored else 0
            if known < newest["time"][0]:
                stored.append(newest)
            elif known == newest["time"][0]:
                if stored:
                    stored[-1] = newest
                else:
                    flags = 0
            first = max(len(stored) - 1, 0)
        if self.live:
            self.count = len(self.shown["main"])
        self.align_all(first)
        return flags, last_average(self.shown["main"])

    def run(self, operation):
        flags, average = getattr(self, operation["op"])(operation["series"], operation)
        return {
            "flags": flags,
            "average": None if average is None else "%g" % average,
            "count": self.count,
            "series": {name: copy.deepcopy(points) for name, points in self.shown.items()},
        }


def main():
    answers = []
    for setting in json.load(sys.stdin):
        chart = Chart(setting)
        answers.append([chart.run(operation) for operation in setting["operations"]])
    json.dump(answers, sys.stdout)


main()
