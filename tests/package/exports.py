"""What the shared libraries show: functions and classes that a public header marks, and nothing else.

    exports.py LIBRARY...

Every symbol that a library defines has to belong to a class or a function that is marked TIMESHARE_EXPORT in an installed
header, and there are not to be many more than there were. With --self-test, sees to it that other symbols are found.
"""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
MOST = 2000  # symbols of both libraries; one of a class with signals has some twenty
PREFIX = re.compile(r"^(vtable for|VTT for|typeinfo name for|typeinfo for|guard variable for|"
                    r"(non-)?virtual thunk to|construction vtable for) ")
CLASS = re.compile(r"\b(?:class|struct) TIMESHARE_EXPORT (\w+)")
FUNCTION = re.compile(r"^TIMESHARE_EXPORT [^;{(]*?(\w+)\(", re.MULTILINE)
NAMESPACES = {"TC", "timeshare", "GZ", "se", "bson", "kvservice", "quoter", "utils"}


def public_headers():
    listed = re.findall(r"^  ([a-z]+/[\w/]+\.h)\b", (ROOT / "cmake/PublicHeaders.cmake").read_text(), re.MULTILINE)
    return sorted((ROOT / "host").rglob("*.h")) + [ROOT / name for name in listed]


def marked(texts):
    """Names of the classes and of the functions that headers mark."""
    classes, functions = set(), set()
    for text in texts:
        classes.update(CLASS.findall(text))
        functions.update(FUNCTION.findall(text))
    return classes, functions


def owner(symbol):
    """The namespace of a demangled symbol and the name behind it: its class, or the function itself."""
    name = PREFIX.sub("", symbol)
    match = re.match(r"(\w+)::(\w+)", name)
    return match.groups() if match else ("", name)


def complaints(symbols, classes, functions):
    for symbol in symbols:
        if symbol == "TIMESHARE_1":
            continue  # the name of the version
        namespace, name = owner(symbol)
        if namespace not in NAMESPACES or name not in classes | functions:
            yield f"exported, and in no public header: {symbol}"
    if len(symbols) > MOST:
        yield f"{len(symbols)} symbols, {MOST} at most"


def symbols_of(library):
    text = subprocess.run(["nm", "-D", "--defined-only", "-C", library], check=True, capture_output=True, text=True).stdout
    return [re.sub(r"@@?TIMESHARE_\d+", "", line.split(maxsplit=2)[2]) for line in text.splitlines()]


def self_test():
    classes, functions = marked(["class TIMESHARE_EXPORT A : public B {\n", "TIMESHARE_EXPORT QString f(int a);\n"])
    assert (classes, functions) == ({"A"}, {"f"}), (classes, functions)
    good = ["TC::A::g(int)", "vtable for TC::A", "non-virtual thunk to TC::A::~A()", "GZ::f(int)", "TIMESHARE_1"]
    bad = ["TC::Hidden::g()", "boost::f()", "vtable for std::A", "QVector<TC::A>::f(int)", "void TC::A::g<int>(int)"]
    assert list(complaints(good, classes, functions)) == []
    for symbol in bad:
        assert list(complaints([symbol], classes, functions)), symbol
    assert list(complaints(["TC::A::g()"] * (MOST + 1), classes, functions))
    print("exports: faults are found")


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    classes, functions = marked(path.read_text(encoding="utf-8") for path in public_headers())
    symbols = [symbol for library in sys.argv[1:] for symbol in symbols_of(library)]
    assert len(symbols) > 500, "the libraries show what the headers mark"
    found = list(complaints(symbols, classes, functions))
    print("\n".join(found[:50]))
    print(f"exports: {len(symbols)} symbols, {len(found)} complaints")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
