"""Makes docs/events.md from host/toolkit/Events.h. With --check, complains instead when the page is another one;
with --self-test, sees to it that a malformed entry and a page that lags behind are found.
"""

import re
import sys

import events
import tree

PAGE = "docs/events.md"
HEAD = """# Events

Made from `host/toolkit/Events.h` by `tests/checks/events_page.py`; a change belongs there.

Panes, graphs, data objects and dialogs deliver numbered events upwards (`host/toolkit/CEventDeliverer.h`). Each carries
two whole numbers, a text and a pointer; what is not told here is 0, empty or null. An event that is not consumed is
answered with false and travels on by that alone, up to the host. A host hears all of them by overriding
`handleEvent` in the participant that holds the view.
"""
SECTIONS = (
    ("For the host to take", "The view asks or tells, and nothing below the host takes it."),
    ("For the host to send", "By `CEventDeliverer::broadcast` to every participant below a widget."),
    ("Between the parts of the view", "These reach the host only where they are said to travel on."),
)


def section_of(event):
    if event.told["from"] == "host":
        return 1
    takers = [taker.split(",")[0].strip() for taker in event.told["taken"].split(";")]
    return 0 if "host" in takers or "for the host" in event.told["from"] else 2


def cell(text):
    return text.replace("|", "\\|")


def carried(event):
    return "; ".join(f"{key}: {event.told[key]}" for key in events.CARRIED if key in event.told)


def page_of(text, found):
    lines = [HEAD]
    for at, (title, told) in enumerate(SECTIONS):
        lines += [f"## {title}", "", told, "", "| number | name | what happened | from | carries | taken by |",
                  "|---|---|---|---|---|---|"]
        for event in found:
            if section_of(event) == at:
                row = (str(event.number), f"`{event.name}`", event.what, event.told["from"], carried(event),
                       event.told["taken"])
                lines.append("| " + " | ".join(cell(part) for part in row) + " |")
        lines.append("")
    lines += ["## What they carry", ""]
    for values in events.read_values(text):
        lines.append(f"`{values.name}`: {values.what}" + (f" In C++ `{values.alias}`." if values.alias else ""))
        lines.append("")
        if values.values:
            lines += ["| value | name | |", "|---|---|---|"]
            lines += [f"| {number} | `{name}` | {cell(note)} |" for name, number, note in values.values]
            lines.append("")
    return re.sub(r" +\|", " |", "\n".join(lines).rstrip() + "\n")


def complaints_of(header, page):
    """Complaints about the header, or about a page that is not made from it."""
    found, complaints = events.read_events(header)
    if not complaints and page != page_of(header, found):
        complaints.append(f"{PAGE}:1: is not what {events.HEADER} tells: run tests/checks/events_page.py")
    return complaints, len(found)


SOUND = """enum EEvent : int {
    /// A thing was done; it went well.
    /// from: graph
    /// first: x; second: y, pixels; text: name
    /// taken: pane; travels on; host
    eDone = 180,
    /// Another.
    /// It has two lines.
    /// from: host
    /// taken: graph
    eOther = 3000,
};
"""
# What is replaced in the sound text, and the line of its complaint.
PLANTED = [("    /// from: graph\n", "", "5"), ("    /// taken: graph\n", "", "10"), ("/// from: graph", "/// from:", "6"),
           ("    /// A thing was done; it went well.\n", "", "5"), ("= 3000", "= 180", "11"),
           ("= 3000", "= kNumber", "11"), ("eOther", "eDone", "11"), ("second: y", "first: y", "6"),
           ("/// first: x", "/// text: x", "6"), ("= 180", "= 0", "1")]


def self_test():
    found, wrong = events.read_events(SOUND)
    if [(event.number, event.what, event.told) for event in found] != [
            (180, "A thing was done; it went well.", {"from": "graph", "first": "x", "second": "y, pixels",
                                                      "text": "name", "taken": "pane; travels on; host"}),
            (3000, "Another. It has two lines.", {"from": "host", "taken": "graph"})]:
        wrong.append("the sound header is read as something else")
    page = page_of(SOUND, found)
    for old, new, line in PLANTED:
        said, _ = complaints_of(SOUND.replace(old, new), page)
        if not any(words.split(":")[1] == line for words in said):
            wrong.append(f"not found at line {line}: {old!r} replaced by {new!r}, said {said}")
    wrong += complaints_of(SOUND, page)[0]
    return tree.finish("page of events, planted faults", wrong, len(PLANTED))


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    header = (tree.ROOT / events.HEADER).read_text(encoding="utf-8")
    target = tree.ROOT / PAGE
    if sys.argv[1:] == ["--check"]:
        complaints, looked_at = complaints_of(header, target.read_text(encoding="utf-8") if target.is_file() else "")
        return tree.finish("page of events", complaints, looked_at)
    found, complaints = events.read_events(header)
    if not complaints:
        target.write_text(page_of(header, found), encoding="utf-8")
    return tree.finish("page of events", complaints, len(found))


if __name__ == "__main__":
    sys.exit(main())
