"""The events of the bus, as host/toolkit/Events.h tells them."""

import re
from dataclasses import dataclass, field

HEADER = "host/toolkit/Events.h"
KEYS = ("from", "first", "second", "text", "data", "taken")
CARRIED = ("first", "second", "text", "data")
KEY = re.compile(r"(?:^|; )(" + "|".join(KEYS) + r"): ")
COMMENT = re.compile(r"\s*///\s?(.*)")
ENTRY = re.compile(r"\s*(\w+)\s*=\s*([^,]*),?\s*(?://.*)?$")


@dataclass
class Event:
    name: str
    number: int
    line: int
    what: str = ""
    told: dict = field(default_factory=dict)


@dataclass
class Values:
    """An enumeration or another name of a type that an event carries."""
    name: str
    what: str
    values: list = field(default_factory=list)  # name, number, comment
    alias: str = ""


def told_in(lines, complain):
    """What happened, and what is told by key, from the lines of a comment."""
    what, told, key = [], {}, None
    for line in lines:
        parts = KEY.split(line)
        if parts[0]:
            (what if key is None else told[key]).append(parts[0])
        for name, text in zip(parts[1::2], parts[2::2]):
            if name in told:
                complain(f"tells {name} twice")
            if told and KEYS.index(name) < max(KEYS.index(seen) for seen in told):
                complain(f"tells {name} too late: the order is {', '.join(KEYS)}")
            told[name], key = [text], name
    return " ".join(what).strip(), {name: " ".join(texts).strip() for name, texts in told.items()}


def read_events(text):
    """Events of the enumeration, and complaints with their lines."""
    events, complaints, comment, inside = [], [], [], False
    for at, line in enumerate(text.split("\n"), 1):
        if re.match(r"\s*enum EEvent\b", line):
            inside, comment = True, []
            continue
        if not inside:
            continue
        if re.match(r"\s*};", line):
            break

        def complain(said, at=at):
            complaints.append(f"{HEADER}:{at}: {said}")

        if COMMENT.fullmatch(line):
            comment.append((at, COMMENT.fullmatch(line).group(1)))
            continue
        if not line.strip():
            continue
        entry = ENTRY.fullmatch(line)
        if not entry or not re.fullmatch(r"\d+", entry.group(2)):
            complain("is no event: a name, \"=\" and its number are wanted")
            comment = []
            continue
        what, told = told_in([words for _, words in comment], complain)
        event = Event(entry.group(1), int(entry.group(2)), at, what, told)
        for wanted in ("from", "taken"):
            if not told.get(wanted):
                complain(f"{event.name} does not tell \"{wanted}:\"")
        if not what:
            complain(f"{event.name} does not tell what happened")
        for empty in [key for key, words in told.items() if not words and key not in ("from", "taken")]:
            complain(f"{event.name} tells nothing at \"{empty}:\"")
        if events and event.number <= events[-1].number:
            complain(f"{event.name} = {event.number} does not follow {events[-1].number}")
        if event.name in [other.name for other in events]:
            complain(f"{event.name} stands twice")
        events.append(event)
        comment = []
    if not events:
        complaints.append(f"{HEADER}:1: has no events")
    return events, complaints


def read_values(text):
    """The other enumerations and names of types below the events."""
    found, comment, current = [], [], None
    for line in text.split("\n"):
        if COMMENT.fullmatch(line):
            comment.append(COMMENT.fullmatch(line).group(1))
            continue
        alias = re.match(r"using (\w+) = (.*);", line)
        opening = re.match(r"enum (\w+) : int \{(.*)", line)
        if alias:
            found.append(Values(alias.group(1), " ".join(comment), alias=alias.group(2).strip()))
        elif opening and opening.group(1) != "EEvent":
            current = Values(opening.group(1), " ".join(comment))
            found.append(current)
            line = opening.group(2)
        if current:
            note = re.search(r"///< (.*)", line)
            for name, number in re.findall(r"(\w+) = (-?\d+)", line.split("///<")[0]):
                current.values.append((name, int(number), note.group(1) if note else ""))
            if "}" in line:
                current = None
        comment = []
    return found
