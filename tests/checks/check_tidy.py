"""Runs clang-tidy over the product's sources. Arguments: the program and the build directory.

A file that has passed is not looked at again until it, a header of ours that it reaches, its compiler options,
.clang-tidy or the program change: what passed is kept under tidy-cache in the build directory.
"""

import hashlib
import json
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from os import cpu_count
from pathlib import Path

import tree

FOLDERS = ("viewmodel", "chartdata", "chartview", "containers", "linkage", "statistics", "toolkit", "terminal")
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


def commands(build):
    """Options of every source of the folders, by path from the root."""
    database = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    found = {}
    for entry in database:
        path = Path(entry["directory"], entry["file"]).resolve()
        if tree.ROOT in path.parents:
            name = path.relative_to(tree.ROOT).as_posix()
            if name.split("/")[0] in FOLDERS and path.is_file():
                found[name] = options_of(entry)
    return found


class Digests:
    """Content of a file and of all our headers that it reaches, as one number."""

    def __init__(self):
        self.reached = {}

    def headers(self, name):
        """Our files that a file includes, with itself."""
        todo, seen = [name], set()
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

    def of(self, name, *circumstances):
        digest = hashlib.sha256("\0".join(circumstances).encode())
        for header in self.headers(name):
            digest.update(header.encode() + b"\0" + (tree.ROOT / header).read_bytes() + b"\0")
        return digest.hexdigest()


def tidy(program, name, options):
    """What clang-tidy says about a file, empty when it passes."""
    run = subprocess.run([program, "--quiet", str(tree.ROOT / name), "--", *options], cwd=tree.ROOT,
                         capture_output=True, text=True)
    return "" if run.returncode == 0 else run.stdout + run.stderr


def main():
    program, build = sys.argv[1], Path(sys.argv[2])
    cache = build / "tidy-cache"
    cache.mkdir(exist_ok=True)
    version = subprocess.run([program, "--version"], check=True, capture_output=True, text=True).stdout
    config = (tree.ROOT / ".clang-tidy").read_text(encoding="utf-8")
    sources, digests = commands(build), Digests()

    def passed_mark(name):
        return cache / digests.of(name, name, version, config, *sources[name])

    def complaint(name):
        said = tidy(program, name, sources[name])
        if not said:
            passed_mark(name).touch()
        return said

    todo = [name for name in sorted(sources) if not passed_mark(name).exists()]
    with ThreadPoolExecutor(cpu_count()) as pool:
        complaints = [said for said in pool.map(complaint, todo) if said]
    print(f"{len(sources) - len(todo)} files unchanged since they passed")
    return tree.finish("clang-tidy", complaints, len(sources))


if __name__ == "__main__":
    sys.exit(main())
