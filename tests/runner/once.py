"""Runs a test program, unless it has passed before and nothing that it depends on has changed since.

    once.py --build FOLDER --name NAME PROGRAM [ARGUMENT...]

With TIMESHARE_SKIP_UNCHANGED=1 a program that passed is not run again; the output says so. Without it, every call
runs. What passed is kept under "passed" in the build folder: a digest of
- the program, and the libraries and the terminal that this tree builds,
- the data that tests read: what is no source under tests/, formulas/ and scripts/, and the folders beside the tree
  that some tests read when they are there,
- the installed packages (Qt and its plugins, fonts, time zones, Python), the system's release, the environment,
- the day, since a program may ask for the date.
Tests whose outcome is decided by the machine's timing are not to be run by this: threads and fuzzers run each time.
With --self-test, sees to it that each of these changes makes a program run again, and that a failure is not kept.
"""

import argparse
import contextlib
import datetime
import hashlib
import io
import os
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PACKAGES = Path("/var/lib/dpkg/status")
SKIP = "TIMESHARE_SKIP_UNCHANGED"
DATA_FOLDERS = ("tests", "formulas", "scripts")
SOURCES = {".h", ".cpp", ".md"}
# Variables that no test program reads, and that differ from one shell to the next.
IDLE_VARIABLES = {SKIP, "_", "PWD", "OLDPWD", "SHLVL", "TERM", "COLUMNS", "LINES", "CTEST_INTERACTIVE_DEBUG_MODE"}


def is_idle(name):
    return name in IDLE_VARIABLES or name.startswith(("CCACHE_", "SSH_", "GTEST_OUTPUT"))


def is_partial():
    """Whether the environment picks some of the tests: what passes then has not passed as a whole."""
    return any(name.startswith("GTEST_") and name != "GTEST_OUTPUT" for name in os.environ)


def content(path):
    digest = hashlib.sha256()
    with open(path, "rb") as file:
        for block in iter(lambda: file.read(1 << 20), b""):
            digest.update(block)
    return digest.hexdigest()


def data_files(root):
    """What is no source below the folders of data."""
    for folder in DATA_FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.is_file() and path.suffix not in SOURCES and "__pycache__" not in path.parts:
                yield path


def built_files(build):
    """Libraries, the terminal and the fonts' set-up of a build folder."""
    built = sorted((build / "lib").glob("*.so*")) + [build / "bin/timeshare-terminal", build / "fonts.conf"]
    return [path for path in built if path.is_file()]


def parts_of_key(root, build, command, packages=PACKAGES, today=None):
    """What decides whether a program passes, as lines."""
    program = Path(command[0])
    yield "program " + content(program)
    yield "command " + "\0".join(map(str, command))
    for path in built_files(build):
        yield f"built {path.name} {content(path)}"
    for path in data_files(root):
        yield f"data {path.relative_to(root)} {content(path)}"
    beside = root.parent / "shared" / "data"
    for path in sorted(beside.rglob("*")) if beside.is_dir() else ():
        if path.is_file():
            yield f"beside {path.relative_to(beside)} {path.stat().st_size} {path.stat().st_mtime_ns}"
    yield "packages " + (content(packages) if packages.is_file() else os.urandom(16).hex())
    yield "system " + os.uname().release
    for name in sorted(os.environ):
        if not is_idle(name):
            yield f"variable {name}={os.environ[name]}"
    yield f"day {today or datetime.date.today()}"


def key_of(*arguments, **options):
    return hashlib.sha256("\n".join(parts_of_key(*arguments, **options)).encode(errors="surrogateescape")).hexdigest()


def run(root, build, name, command, **options):
    """Exit code of the program, 0 without a run when it passed before."""
    mark = build / "passed" / name
    key = "" if is_partial() else key_of(root, build, command, **options)
    if key and os.environ.get(SKIP) == "1" and mark.is_file() and mark.read_text(encoding="utf-8") == key:
        print(f"{name}: passed before, unchanged", flush=True)
        return 0
    if key:
        mark.unlink(missing_ok=True)
    code = subprocess.run(list(map(str, command))).returncode
    if code == 0 and key:
        mark.parent.mkdir(parents=True, exist_ok=True)
        mark.write_text(key, encoding="utf-8")
    return code if 0 <= code < 256 else 128 - code if code < 0 else 1


class SelfTest:
    def __init__(self, folder):
        self.root, self.build = Path(folder, "tree"), Path(folder, "build")
        self.packages, self.log = Path(folder, "status"), Path(folder, "log")
        self.program = self.build / "bin/program"
        for path in (self.program, self.build / "lib/libours.so", self.build / "bin/timeshare-terminal",
                     self.build / "fonts.conf", self.root / "tests/golden/images/a.png", self.root / "formulas/A.lua",
                     self.root / "scripts/A.py", self.root / "tests/a.cpp", self.root / "docs/a.md",
                     Path(folder, "shared/data/bars.csv"), self.packages):
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text("first", encoding="utf-8")
        self.folder, self.today, self.wrong, self.steps = Path(folder), "2024-03-15", [], 0
        self.set_program(0)

    def set_program(self, code):
        self.program.write_text(f"#!/bin/sh\necho run >> '{self.log}'\nexit {code}\n", encoding="utf-8")
        self.program.chmod(0o755)

    def expect(self, what, runs, code=0):
        """One call: whether the program is run, and the exit code."""
        self.steps += 1
        before = self.log.stat().st_size if self.log.exists() else 0
        said = io.StringIO()
        with contextlib.redirect_stdout(said):
            seen = run(self.root, self.build, "program.Test", [self.program], packages=self.packages, today=self.today)
        ran = (self.log.stat().st_size if self.log.exists() else 0) > before
        if (ran, seen, "passed before, unchanged" in said.getvalue()) != (runs, code, not runs):
            self.wrong.append(f"{what}: run {ran}, exit code {seen}, {said.getvalue()!r}; expected {runs}, {code}")

    def all(self):
        self.expect("the first time", True)
        self.expect("nothing has changed", False)
        for path in (self.build / "lib/libours.so", self.build / "bin/timeshare-terminal", self.build / "fonts.conf",
                     self.root / "tests/golden/images/a.png", self.root / "formulas/A.lua",
                     self.root / "scripts/A.py", self.folder / "shared/data/bars.csv", self.packages):
            path.write_text("second time", encoding="utf-8")
            self.expect(f"{path.name} has changed", True)
            self.expect(f"{path.name} has stayed", False)
        (self.root / "tests/new.json").write_text("{}", encoding="utf-8")
        self.expect("a new file of data", True)
        for path in (self.root / "tests/a.cpp", self.root / "docs/a.md"):
            path.write_text("second time", encoding="utf-8")
            self.expect(f"{path.name} is not read by a program", False)
        self.today = "2024-03-16"
        self.expect("another day", True)
        os.environ["TIMESHARE_SELF_TEST"] = "1"
        self.expect("another environment", True)
        os.environ["GTEST_FILTER"] = "A.*"
        self.expect("a choice of tests is always run", True)
        del os.environ["GTEST_FILTER"]
        self.expect("and leaves what is kept", False)
        del os.environ[SKIP]
        self.expect("asked for all", True)
        os.environ[SKIP] = "1"
        self.set_program(3)
        self.expect("a program that fails", True, 3)
        self.expect("which is not kept", True, 3)
        self.set_program(0)
        self.expect("mended", True)
        self.expect("and kept", False)
        self.packages.unlink()
        self.expect("unknown packages", True)
        self.expect("are never the same", True)


def self_test():
    for name in [name for name in os.environ if name.startswith("GTEST_")]:
        del os.environ[name]
    os.environ[SKIP] = "1"
    with tempfile.TemporaryDirectory() as folder:
        test = SelfTest(folder)
        test.all()
    print("\n".join(test.wrong + [f"runs of programs: {test.steps} steps, {len(test.wrong)} complaints"]))
    return 1 if test.wrong else 0


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--name", required=True)
    parser.add_argument("command", nargs=argparse.REMAINDER)
    arguments = parser.parse_args()
    return run(ROOT, arguments.build, arguments.name, arguments.command)


if __name__ == "__main__":
    sys.exit(main())
