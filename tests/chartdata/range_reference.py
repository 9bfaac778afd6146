"""Value ranges of a chart, worked out independently: the expected values of RangeReferenceTest.

Reads a list of cases as JSON from the file named first and writes, for each step of each case, whether a range
changed and all ranges then wanted.
"""
import json
import math
import sys

UNSET = sys.float_info.max
EPS = 1e-5


def unset(v):
    return v is None or v == UNSET or math.isinf(v) or math.isnan(v)


class Chart:
    def __init__(self, case):
        self.c = case
        self.series = {}  # (stock, formula) -> list of values
        self.extreme = {}  # same key -> [max, min], None when unset
        self.wanted = {}

    def is_main(self, stock):
        return stock.upper() == self.c["stock"].upper()

    def is_free(self, stock):
        return any(stock.upper() in o["key"].upper() for o in self.c["overlays"] if not o["axis"])

    def is_overlay(self, stock):
        return any(stock.upper() in o["key"].upper() for o in self.c["overlays"])

    def is_volume(self, key):
        return key[1].upper() == self.c["volume"].upper()

    def keys(self):
        return sorted(self.series)

    def put(self, key, hi, lo):
        old = self.wanted.get(key)
        if old is not None and not hi > old[0] + EPS and not lo < old[1] - EPS:
            return False
        self.wanted[key] = (hi, lo)
        return True

    def base(self, key, middle):
        if self.is_main(key[0]):
            kind = self.c["kind"]
            if kind == 0:
                return self.c["dayClose"]
            if kind == 1:
                return self.c["lastClose"]
            if kind == 2 and middle[0] is not None and middle[1] is not None:
                return (middle[0] + middle[1]) * 0.5
            return None
        if self.is_overlay(key[0]):
            return self.c["overlayClose"][key[0]]
        return None

    def step(self, step):
        key = tuple(step["key"])
        if "values" in step:
            self.series[key] = step["values"]
            if step["fresh"] or key not in self.extreme:
                self.extreme[key] = [None, None]
        if key not in self.series:
            return False
        seen = self.series[key][max(step["first"], 0):][:self.c["points"]]
        seen = [v for v in seen if not unset(v)]
        if not seen:
            return False
        hi, lo = max(seen), min(seen)
        if self.is_volume(key):
            lo = 0.0
        e = self.extreme[key]
        grew = False
        if e[0] is None or hi > e[0] + EPS:
            e[0], grew = hi, True
        if e[1] is None:
            e[1] = lo
            if not grew:
                return False
        elif lo < e[1] - EPS:
            e[1], grew = lo, True
        if not grew:
            return False
        if not self.c["main"] or self.is_volume(key):
            return self.put(key, e[0], e[1])
        marks = self.c["flags"] // 4 % 2 == 1
        if self.c["overlays"] or marks:
            return self.joint(e, marks)
        return self.single(key, e)

    def joint(self, e, marks):
        shared, free = 0.0, 0.0
        if marks and self.c["orders"]:
            shared = self.c["orderAmplitude"]
        if marks and self.c["deals"]:
            shared = max(shared, self.c["dealAmplitude"])
        for key in self.keys():
            hi, lo = self.extreme.get(key, [None, None])
            if self.is_volume(key) or hi is None or lo is None:
                continue
            b = self.base(key, (hi, lo))
            if unset(b) or abs(b) <= EPS:
                continue
            to_free = not self.is_main(key[0]) and self.is_free(key[0])
            if abs(hi) <= EPS and abs(lo) <= EPS:
                amplitude = 0.0
            else:
                amplitude = max(free if to_free else shared, max(abs(lo - b), abs(hi - b)) / b)
            if to_free:
                free = amplitude
            else:
                shared = amplitude
        stored = False
        for key in self.keys():
            if self.is_volume(key):
                continue
            to_free = not self.is_main(key[0]) and self.is_free(key[0])
            a = free if to_free else shared
            if abs(a) <= EPS:
                continue
            b = self.base(key, e)
            if unset(b):
                continue
            stored = self.put(key, b + b * a, b - b * a) or stored
        return stored

    def single(self, key, e):
        known = [self.extreme[k] for k in self.keys() if not self.is_volume(k) and k in self.extreme]
        known = [k for k in known if k[0] is not None and k[1] is not None]
        hi = max([e[0]] + [k[0] for k in known])
        lo = min([e[1]] + [k[1] for k in known])
        room = self.c["tick"] * 10
        kind = self.c["kind"]
        replaces = self.c["types"].get(key[1]) == 2 and key[1].upper() != self.c["basic"].upper()
        if replaces or kind == 2:
            b, room = (hi + lo) * 0.5, 0.01
        elif kind == 0:
            b = self.c["dayClose"]
            if unset(room):
                room = 0.01
        elif kind == 1:
            b, room = self.c["lastClose"], 0.01
        else:
            b = None
        if unset(b):
            return False
        half = 0.0
        if abs(hi) > EPS or abs(lo) > EPS:
            half = max(abs(lo - b), abs(hi - b))
        if half <= room:
            half = room
        stored = False
        for k in self.keys():
            if not self.is_volume(k):
                stored = self.put(k, b + half, b - half) or stored
        return stored


def main():
    answers = []
    with open(sys.argv[1]) as source:
        cases = json.load(source)
    for case in cases:
        chart = Chart(case)
        steps = []
        for step in case["steps"]:
            changed = chart.step(step)
            ranges = [[k[0], k[1], r[0], r[1]] for k, r in sorted(chart.wanted.items())]
            steps.append({"changed": changed, "ranges": ranges})
        answers.append(steps)
    json.dump(answers, sys.stdout)


main()
