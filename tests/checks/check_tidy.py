"""Runs clang-tidy over the product's sources. Arguments: the program and the build directory; with --self-test after
them, sees to it that faults are found in a unit of sources.

Whole folders are looked at as one unit, small ones of a library together, since most of the time goes into the headers
of Qt that each source includes. A unit that has passed is not looked at again until a source of it, a header of ours that they reach,
their compiler options, .clang-tidy or the program change: what passed is kept under tidy-cache in the build directory.
"""

import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from os import cpu_count
from pathlib import Path

import tree

FOLDERS = ("viewmodel", "chartdata", "chartview", "containers", "linkage", "statistics", "toolkit", "terminal")
UNIT = 60  # sources at most, where folders are put together
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def options_of(entry):
    """Compiler options of one entry of the compilation database, without the cache in front of the compiler, the
    output and the precompiled header, which another compiler may have made."""
    words = entry["arguments"] if "arguments" in entry else shlex.split(entry["command"])
    words = [word for word in words if word != entry["file"]]
    while words and not re.search(r"(clang\+\+|g\+\+|c\+\+)[-.\d]*$", words[0]):
        words.pop(0)
    kept, skip = [], 0
    for i, word in enumerate(words[1:], 1):
        if skip:
            skip -= 1
        elif word in ("-o", "-MF", "-MT", "-MQ", "-include") or (word == "-Xclang"):
            # -Xclang -include-pch -Xclang FILE and -Xclang -fno-pch-timestamp go in pairs.
            skip = 1
        elif word not in ("-c", "-MD", "-MMD", "-Winvalid-pch", "-Werror") and not word.startswith("-f"):
            kept.append(word)
    return kept + ["-fPIC"]


def sources_of(entry):
    """Sources that an entry compiles: itself, or what it includes when the build has put several into one."""
    path = Path(entry["directory"], entry["file"]).resolve()
    if path.parent.name != "Unity":
        return [path]
    return [Path(name) for name in INCLUDE.findall(path.read_text(encoding="utf-8"))]


def commands(build):
    """Options of every source of the folders, by path from the root."""
    database = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    found = {}
    for entry in database:
        for path in sources_of(entry):
            if tree.ROOT in path.parents:
                name = path.relative_to(tree.ROOT).as_posix()
                if name.split("/")[0] in FOLDERS and path.is_file():
                    found[name] = options_of(entry)
    return found


def units(sources):
    """The sources by options, in units of whole folders: (names, options)."""
    folders = {}
    for name in sorted(sources):
        folders.setdefault((tuple(sources[name]), os.path.dirname(name)), []).append(name)
    packed = {}
    for (options, _), names in folders.items():
        of_library = packed.setdefault(options, [])
        room = next((unit for unit in of_library if len(unit) + len(names) <= UNIT), None)
        if room is None:
            of_library.append(list(names))
        else:
            room.extend(names)
    return [(unit, list(options)) for options, of_library in packed.items() for unit in of_library]


class Digests:
    """Content of a file and of all our headers that it reaches, as one number."""

    def __init__(self):
        self.reached = {}

    def headers(self, names):
        """Our files that some files include, with themselves."""
        todo, seen = list(names), set()
        while todo:
            at = todo.pop()
            if at not in seen and (tree.ROOT / at).is_file():
                seen.add(at)
                todo += self.direct(at)
        return sorted(seen)

    def direct(self, name):
        if name not in self.reached:
            self.reached[name] = INCLUDE.findall((tree.ROOT / name).read_text(encoding="utf-8"))
        return self.reached[name]

    def of(self, names, *circumstances):
        digest = hashlib.sha256("\0".join(circumstances).encode())
        for header in self.headers(names):
            digest.update(header.encode() + b"\0" + (tree.ROOT / header).read_bytes() + b"\0")
        return digest.hexdigest()


def tidy(program, root, names, options):
    """What clang-tidy says about sources below a root, as one unit; empty when they pass."""
    with tempfile.NamedTemporaryFile("w", suffix=".cpp", encoding="utf-8") as unit:
        unit.writelines(f'#include "{root / name}"\n' for name in names)
        unit.flush()
        run = subprocess.run([program, "--quiet", f"--config-file={tree.ROOT / '.clang-tidy'}",
                              f"--header-filter=^{re.escape(str(root))}/", unit.name, "--", *options],
                             cwd=root, capture_output=True, text=True)
    return "" if run.returncode == 0 else run.stdout + run.stderr


def self_test(program):
    """Two sources with a fault each, one of them in a header, and a sound one between them."""
    planted = {"a.cpp": '#include "a.h"\nint *f() { return 0; }\n', "a.h": "struct A { virtual void f(); };\n"
               "struct B : A { virtual void f(); };\n", "b.cpp": "int g(int *x) { return x == nullptr ? 1 : 2; }\n",
               "c.cpp": "int h(int unused) { return 1; }\n"}
    wrong = []
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder).resolve()
        for name, text in planted.items():
            (root / name).write_text(text, encoding="utf-8")
        said = tidy(program, root, ["a.cpp", "b.cpp", "c.cpp"], ["-std=c++17"])
        seen = sorted(set(re.findall(r"(\w\.\w+):\d+:\d+: error: .*\[([\w-]+),", said)))
        expected = [("a.cpp", "modernize-use-nullptr"), ("a.h", "modernize-use-override"),
                    ("c.cpp", "misc-unused-parameters")]
        if seen != expected:
            wrong.append(f"found {seen}, expected {expected}")
        if tidy(program, root, ["b.cpp"], ["-std=c++17"]):
            wrong.append("a sound source is complained about")
        if not tidy(program, root, ["nowhere.cpp"], ["-std=c++17"]):
            wrong.append("a source that cannot be read is no complaint")
    return tree.finish("clang-tidy, planted faults", wrong, len(planted))


def main():
    program, build = sys.argv[1], Path(sys.argv[2])
    if sys.argv[3:] == ["--self-test"]:
        return self_test(program)
    cache = build / "tidy-cache"
    cache.mkdir(exist_ok=True)
    version = subprocess.run([program, "--version"], check=True, capture_output=True, text=True).stdout
    config = (tree.ROOT / ".clang-tidy").read_text(encoding="utf-8")
    sources, digests = commands(build), Digests()

    def passed_mark(unit):
        names, options = unit
        return cache / digests.of(names, version, config, *names, *options)

    def complaint(unit):
        said = tidy(program, tree.ROOT, *unit)
        if not said:
            passed_mark(unit).touch()
        return said

    every = list(units(sources))
    todo = [unit for unit in every if not passed_mark(unit).exists()]
    with ThreadPoolExecutor(cpu_count()) as pool:
        complaints = [said for said in pool.map(complaint, todo) if said]
    print(f"{len(every) - len(todo)} of {len(every)} units unchanged since they passed")
    return tree.finish("clang-tidy", complaints, len(sources))


if __name__ == "__main__":
    sys.exit(main())
