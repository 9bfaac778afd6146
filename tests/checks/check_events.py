"""Every event has one name, that of host/toolkit/Events.h: a bare number of an event, and a name of one's own for it,
are refused elsewhere in the product. With --self-test, plants faults in a tree of its own.

- The event in a call of deliverEvent, handleEvent or broadcast is a variable, or a name of the enumeration.
- So are the labels of a switch over an event, and what a variable named event is compared with.
- A constant or enumerator has no value of an event. Numbers under 180 are too common to tell; those between 180 and
  999 may be sizes when the name says so.
"""

import re
import sys

import cpp
import events
import tree

FOLDERS = ("host", "viewmodel", "chartdata", "chartview", "containers", "linkage", "statistics", "toolkit", "terminal")
CALLS = {"deliverEvent": 0, "handleEvent": 0, "broadcast": 1}  # place of the event among the arguments
SMALLEST, SMALLEST_PLAIN = 180, 1000
QUANTITY = re.compile(r"(Width|Height|Size|Pixels|Seconds|Milliseconds|Ms|Minutes|Days|Count|Limit|Rows|Points|Angle)$")
OWN_CONSTANT = re.compile(r"(k|e)[A-Z]\w*")
VARIABLE = {"event", "mEvent"}


def bad_event(words, names):
    """What is wrong with an expression for an event, None when nothing is."""
    for i, word in enumerate(words):
        if word.kind == "number":
            return f"the bare number {word.text} as an event"
        qualifies = i + 1 < len(words) and words[i + 1].text == "::"
        if word.kind == "name" and not qualifies and OWN_CONSTANT.fullmatch(word.text) and word.text not in names:
            return f"{word.text} as an event, which {events.HEADER} does not name"
    return None


def is_declaration(words):
    """Whether an argument is a parameter: int event"""
    return bool(words) and words[0].text == "int"


def labels_of(found, start, end):
    """Labels of a switch whose body is found[start..end], without those of switches inside: lists of tokens."""
    i, labels = start + 1, []
    while i < end:
        if found[i].text == "switch":
            i = cpp.closing_of(found, i + 1)  # the condition
            if found[i + 1].text == "{":
                i = cpp.closing_of(found, i + 1)
        elif found[i].text == "case":
            stop = next(k for k in range(i, end + 1) if found[k].text == ":")
            labels.append(found[i + 1:stop])
            i = stop
        i += 1
    return labels


def complaints_of(source, text, names, numbers):
    found = cpp.tokens(text)

    def said(word, what):
        return f"{source}:{word.line}: {what}"

    for i, word in enumerate(found[:-1]):
        after = found[i + 1]
        if word.text in CALLS and after.text == "(":
            parts = cpp.arguments(found, i + 1)
            if len(parts) > CALLS[word.text]:
                part = parts[CALLS[word.text]]
                what = None if is_declaration(part) else bad_event(part, names)
                if what:
                    yield said(part[0], what)
        elif word.text == "switch" and after.text == "(":
            close = cpp.closing_of(found, i + 1)
            condition = found[i + 2:close]
            if condition and condition[-1].text in VARIABLE and found[close + 1].text == "{":
                for label in labels_of(found, close + 1, cpp.closing_of(found, close + 1)):
                    what = bad_event(label, names)
                    if what:
                        yield said(label[0], what)
        elif word.text in ("==", "!=") and i:
            sides = [found[i - 1], found[i + 1]]
            if any(side.text in VARIABLE for side in sides):
                # The last name of what a side qualifies: TC::eDone, CPushButton::kClicked
                right = i + 1
                while right + 2 < len(found) and found[right + 1].text == "::":
                    right += 2
                what = bad_event([found[i - 1]], names) or bad_event([found[right]], names)
                if what:
                    yield said(word, what)
        elif word.kind == "name" and after.text in ("=", "{") and i + 3 < len(found) and found[i + 2].kind == "number" \
                and found[i + 3].text in (",", "}", ";"):
            number = cpp.number_of(found[i + 2].text)
            constant = OWN_CONSTANT.fullmatch(word.text)
            if number in numbers and number >= SMALLEST and constant and (
                    number >= SMALLEST_PLAIN or not QUANTITY.search(word.text)):
                yield said(word, f"{word.text} = {number}, which is an event: use its name")


def check(root):
    header = (root / events.HEADER).read_text(encoding="utf-8")
    found, complaints = events.read_events(header)
    names, numbers = {event.name for event in found}, {event.number for event in found}
    looked_at = 0
    for path in tree.sources(root):
        source = path.relative_to(root).as_posix()
        if source.split("/")[0] in FOLDERS and source != events.HEADER:
            looked_at += 1
            complaints += complaints_of(source, path.read_text(encoding="utf-8"), names, numbers)
    return complaints, looked_at


HEADER_TEXT = "enum EEvent : int {\n" + "".join(
    f"/// Something.\n/// from: graph\n/// taken: host\n{name} = {number},\n" for name, number in
    (("eDownloadStep", 0), ("eClicked", 5), ("eAsked", 190), ("eDone", 3151))) + "};\n"
# Every planted file with the lines of its complaints.
PLANTED = [
    (events.HEADER, HEADER_TEXT, []),
    ("chartview/Good.cpp", """// deliverEvent(3151, 0, 0, QString(), nullptr);
#include "host/toolkit/Events.h"
constexpr int kAskedWidth = 190; // a width
void f() { deliverEvent(TC::eDone, 5, 190, "deliverEvent(5)", nullptr); }
bool X::handleEvent(int event, int first, int second, QString text, void *data) {
    switch (event) {
    case TC::eClicked:
        switch (first) {
        case CTitle::eClose:
        case 5:
            return true;
        }
        return false;
    case eAsked:
        CEventDeliverer::broadcast(root, event, first, second, text, data);
        return CBaseWidget::handleEvent(event, first, 3151, text, data);
    }
    return event == TC::eDone;
}
""", []),
    ("chartview/Good.h", "bool handleEvent(int event, int, int, QString text = {}, void *data) override;\n"
     "int mWidth = 190;\nvoid g() { setWidth(190); const int kind = 190; }\n", []),
    ("host/Number.h", "void f() {\n    deliverEvent(3151, 0, 0, QString(), nullptr);\n}\n", [2]),
    ("toolkit/Small.cpp", "void f() {\n    deliverEvent(5, mId, 0, QString(), nullptr);\n"
     "    sender->deliverEvent(\n        0, done, total, QString(), nullptr);\n}\n", [2, 4]),
    ("toolkit/Handle.cpp", "void f() { handleEvent(CPushButton::kClicked, 1, 0, QString(), nullptr); }\n", [1]),
    ("toolkit/Unknown.cpp", "void f() { deliverEvent(eMine, 1, 0, QString(), nullptr); }\n", [1]),
    ("viewmodel/Choice.cpp", "void f() { deliverEvent(on ? eAsked : 3151, 1, 0, QString(), nullptr); }\n", [1]),
    ("viewmodel/Hex.cpp", "constexpr int kMine{0xC4F};\n", [1]),
    ("chartdata/Constant.cpp", "constexpr int kMine = 3'151;\n\nconstexpr int kOther = 190;\n", [1, 3]),
    ("chartdata/Wide.cpp", "constexpr int kWidth = 3151;\n", [1]),
    ("containers/Enumeration.cpp", "enum Own {\n    eFirst,\n    eMine = 190,\n    eLast = 3151\n};\n", [3, 4]),
    ("containers/Label.cpp", """bool X::handleEvent(int event, int first, int, QString, void *) {
    switch (event) {
    case 3151:
    case CCheckBox::kToggled:
        return true;
    case eAsked: {
        switch (first) {
        case 0:
            break;
        }
        break;
    }
    case 5:
        break;
    }
    return event == 190 || 0 == event || event != CPushButton::kClicked;
}
""", [3, 4, 13, 16, 16, 16]),
    ("linkage/Cast.cpp", "void f() {\n    switch (static_cast<int>(event)) {\n    case 3151:\n        break;\n    }\n}\n", []),
    ("statistics/Broadcast.cpp", "void f() { CEventDeliverer::broadcast(view, 3151, 0, 0, {}, nullptr); }\n", [1]),
    ("terminal/app/Broadcast.cpp", "void f() { CEventDeliverer::broadcast(g(5), eDone, 0, 0, {}, nullptr); }\n", []),
    ("tests/Free.cpp", "void f() { deliverEvent(3151, 0, 0, QString(), nullptr); }\n", []),
]


def main():
    if sys.argv[1:] == ["--self-test"]:
        return tree.self_test("event numbers", PLANTED, check, lambda source: source.split("/")[0] in FOLDERS
                              and source != events.HEADER)
    complaints, looked_at = check(tree.ROOT)
    return tree.finish("event numbers", complaints, looked_at)


if __name__ == "__main__":
    sys.exit(main())
