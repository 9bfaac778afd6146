"""Every file that the documents name exists: what a link points to, and a path between backticks. With --self-test,
plants faults in a tree of its own and sees to it that they are found.

A path between backticks begins with a folder of the root, or is a bare name of a source, a page or a script. A bare
name stands at the root, beside the page, or in a folder that was named in the same line before it.
"""

import re
import sys

import tree

LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
QUOTED = re.compile(r"`([^`]+)`")
BARE = re.compile(r"[A-Za-z_][\w.-]*\.(h|cpp|py|md|cmake|qrc|txt)")
PATH = re.compile(r"(\./)?[\w.-]+(/[\w.*-]*)*")
MADE = {"build"}  # folders that a build makes
ABSENT = {"NAME.py", "CMakeLists.txt"}  # placeholders, names of files in another's tree


def folders_of_root(root):
    return {path.relative_to(root).parts[0] for path in tree.tracked_files(root)}


def exists(root, name):
    """Whether a path from the root is there; a * stands for any letters."""
    return any(root.glob(name.rstrip("/"))) if "*" in name else (root / name).exists()


def words_of(text):
    """Lines outside of blocks of code, each with its number."""
    inside = False
    for at, line in enumerate(text.split("\n"), 1):
        if line.lstrip().startswith("```"):
            inside = not inside
        elif not inside:
            yield at, line


def complaints_of(root, page, text, top):
    here = (root / page).parent
    for at, line in words_of(text):
        for target in LINK.findall(line):
            path = target.split("#")[0]
            if path and not re.match(r"[a-z]+:", path) and not (here / path).exists():
                yield f"{page}:{at}: there is no {target}"
        folder = None
        for name in QUOTED.findall(line):
            if not PATH.fullmatch(name):
                continue
            plain = name[2:] if name.startswith("./") else name
            first = plain.split("/")[0]
            if "/" in plain and first in top and first not in MADE:
                if not exists(root, plain):
                    yield f"{page}:{at}: there is no {name}"
                folder = plain.rsplit("/", 1)[0]
            elif "/" in plain and BARE.fullmatch(plain.rsplit("/", 1)[1]) and first not in MADE:
                yield f"{page}:{at}: there is no {name}"
            elif name.startswith("./"):
                if not exists(root, plain):
                    yield f"{page}:{at}: there is no {name}"
            elif BARE.fullmatch(plain) and plain not in ABSENT:
                beside = here.relative_to(root) / plain
                places = (plain, beside, f"{folder}/{plain}" if folder else plain)
                if not any(exists(root, str(place)) for place in places):
                    yield f"{page}:{at}: there is no {name}" + (f" in {folder}" if folder else "")


def check(root):
    complaints, looked_at, top = [], 0, folders_of_root(root)
    for path in tree.sources(root, (".md",)):
        page = path.relative_to(root).as_posix()
        if page != "CHANGELOG.md":  # which tells of files that have gone since
            looked_at += 1
            complaints += complaints_of(root, page, path.read_text(encoding="utf-8"), top)
    return complaints, looked_at


PLANTED = [
    ("host/A.h", "", []),
    ("host/B.h", "", []),
    ("run", "", []),
    ("docs/other.md", "# Other\n", []),
    ("docs/good.md", """[other](other.md), [a part](other.md#other), [here](#good), [far](https://example.org/x)
`host/A.h`, `B.h` and `host/`; `./run`, `run`; `host/*.h`; `other.md`; `build/day.png`; `a/b`; `std::map<int>`
```
[not looked at](nowhere.md) `host/Nowhere.h`
```
""", []),
    ("README.md", "[other](docs/other.md)\n[lost](docs/lost.md)\n`host/Lost.h` and `host/A.h`\n`host/A.h`, `Lost.h`\n\n"
     "`B.h` without a folder\n`Lost.cpp`\n`host/*.cpp`\n`./walk`\n`gone/Lost.h`\n", [2, 3, 4, 6, 7, 8, 9, 10]),
    ("docs/deep/page.md", "[up](../good.md) [lost](good.md)\n", [1]),
    ("CHANGELOG.md", "`host/Gone.h`\n", []),
]


def main():
    if sys.argv[1:] == ["--self-test"]:
        return tree.self_test("paths in documents", PLANTED, check,
                              lambda source: source.endswith(".md") and source != "CHANGELOG.md")
    complaints, looked_at = check(tree.ROOT)
    return tree.finish("paths in documents", complaints, looked_at)


if __name__ == "__main__":
    sys.exit(main())
