"""Rules over series that the reference programs share: lists of numbers, None for no value."""

import math


def clean(value):
    """What is no finite number is no value."""
    return value if value is not None and not isinstance(value, complex) and math.isfinite(value) else None


def each(rule, *columns):
    """A rule over the values of a point; no value where one of them has none, or where the rule has no finite result."""
    result = []
    for values in zip(*columns):
        if any(value is None for value in values):
            result.append(None)
            continue
        try:
            result.append(clean(rule(*values)))
        except (ZeroDivisionError, ValueError, OverflowError):
            result.append(None)
    return result


def windows(x, n):
    """The last n points up to each point; all of them from the first one when n is 0."""
    return [x[max(0, i + 1 - n) if n else 0 : i + 1] for i in range(len(x))]


def full(x, n, rule):
    """A rule over windows of n points that all have a value."""
    return [clean(rule(part)) if len(part) == n and None not in part else None for part in windows(x, n)]


def mean(part):
    return math.fsum(part) / len(part)


def running(x, weights):
    """Each value pulls the result towards itself by its weight; the first one is the result."""
    result, last = [], None
    for value, weight in zip(x, weights):
        if value is None or weight is None:
            result.append(None)
            continue
        last = value if last is None else weight * value + (1 - weight) * last
        result.append(last)
    return result
