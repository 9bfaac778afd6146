"""Every block of C++ in the documents compiles against the public headers, all in one translation unit.

    check_blocks.py COMPILER INCLUDE...    the include folders of the build, and those of Qt
    check_blocks.py COMPILER INCLUDE... --self-test

A block stands in a function of a widget. What it takes for granted is told in an HTML comment before it, which a reader does not
see: lines of C++ that stand outside of that function.

    <!-- given:
    TC::CRealtimeMainWidget *view = nullptr;
    -->
    ```cpp
    view->request(false);
    ```

`#include` lines of either are hoisted. A block that begins with `class`, `struct`, `template` or `enum` stands by itself.
"""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

import tree

BLOCK = re.compile(r"(?:<!-- given:\n(?P<given>.*?)-->\n+)?^```cpp\n(?P<code>.*?)^```$", re.MULTILINE | re.DOTALL)
INCLUDE = re.compile(r"^\s*#\s*include[^\n]*\n", re.MULTILINE)
WHOLE = re.compile(r"\s*(?://[^\n]*\n\s*)*(class|struct|template|enum)\b")
FLAGS = ["-std=c++17", "-fPIC", "-fsyntax-only", "-DQT_NO_KEYWORDS", "-x", "c++"]


def blocks_of(root):
    """The blocks of all pages: page, line, what is given, code."""
    pages = [path for path in tree.sources(root, (".md",)) if path.name != "CHANGELOG.md"]
    for path in pages:
        text = path.read_text(encoding="utf-8")
        for match in BLOCK.finditer(text):
            line = text.count("\n", 0, match.start("code")) + 1
            yield path.relative_to(root).as_posix(), line, match["given"] or "", match["code"]


def unit_of(blocks):
    """One translation unit, whose lines are told as those of the pages."""
    includes, bodies = ["#include <QtWidgets>\n"], []
    for at, (page, line, given, code) in enumerate(blocks):
        for text in (given, code):
            includes += INCLUDE.findall(text)
        blank = INCLUDE.sub("\n", code)
        place = f'#line {line} "{page}"\n'
        if WHOLE.match(blank):
            body = f"{place}{blank}"
        else:
            body = f"struct Shown : QWidget {{ void run(); }};\nvoid Shown::run() {{\n{place}{blank}\n}}\n"
        bodies.append(f'#line 1 "given in {page}:{line}"\nnamespace block_{at} {{\n{INCLUDE.sub("", given)}\n{body}\n}}\n')
    return "".join(dict.fromkeys(includes)) + "".join(bodies)


def check(compiler, folders, root):
    blocks = list(blocks_of(root))
    with tempfile.TemporaryDirectory() as scratch:
        unit = Path(scratch) / "blocks.cpp"
        unit.write_text(unit_of(blocks), encoding="utf-8")
        done = subprocess.run([compiler, *FLAGS, *(f"-I{folder}" for folder in folders), str(unit)], capture_output=True,
                              text=True)
    complaints = [line for line in done.stderr.splitlines() if re.search(r":\d+(:\d+)?: (fatal )?error: ", line)]
    if done.returncode and not complaints:
        complaints = done.stderr.splitlines() or [f"{compiler} ended with {done.returncode}"]
    return complaints, len(blocks)


PLANTED = [
    ("docs/sound.md", "<!-- given:\nint answer() { return 42; }\n-->\n```cpp\nint seen = answer() + width();\n```\n", []),
    ("docs/class.md", "```cpp\n#include <vector>\nclass A { std::vector<int> mAll; };\n```\n\n```sh\nno code\n```\n", []),
    ("docs/wrong.md", "Text\n\n```cpp\nint one = 1;\nint two = nothing();\n```\n", [5]),
]


def self_test(compiler, folders):
    def look(root):
        complaints, looked_at = check(compiler, folders, root)
        return [re.sub(r"^([^:]*:\d+):.*", r"\1: wrong", one) for one in complaints], looked_at
    return tree.self_test("blocks", PLANTED, look)


def main():
    compiler, *folders = sys.argv[1:]
    if folders and folders[-1] == "--self-test":
        return self_test(compiler, folders[:-1])
    return tree.finish("blocks of C++", *check(compiler, folders, tree.ROOT))


if __name__ == "__main__":
    sys.exit(main())
