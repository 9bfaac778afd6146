"""Runs ctest, then tells the ten slowest tests and which programs passed before, and ends with ctest's own summary.

    run.py BUILD... -- CTEST ARGUMENT...

The times are those that the test programs wrote under "times" in their build folders when they last ran.
With --self-test, sees to it that the summary comes last and that the exit code is ctest's.
"""

import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

SUMMARY = re.compile(r"\d+% tests passed, \d+ tests? failed out of \d+")
SLOWEST = 10


def times(builds):
    """(seconds, program, test) of every test that a program has told."""
    for build in builds:
        for path in sorted((build / "times").glob("*.json")):
            try:
                told = json.loads(path.read_text(encoding="utf-8"))
            except ValueError:
                continue  # a program that was killed while it wrote
            for suite in told.get("testsuites", []):
                for test in suite.get("testsuite", []):
                    yield float(test["time"].rstrip("s")), path.stem, f"{suite['name']}.{test['name']}"


def slowest(builds):
    found = sorted(times(builds), reverse=True)[:SLOWEST]
    return ["The slowest tests, in seconds:"] + [f"  {seconds:7.2f}  {name}  ({program})"
                                                 for seconds, program, name in found] if found else []


def unchanged(log):
    """Programs that say in ctest's log that they were not run."""
    if not log.is_file():
        return []
    return re.findall(r"^(\S+): passed before, unchanged$", log.read_text(encoding="utf-8", errors="replace"), re.M)


def run(builds, command, out):
    """Passes on what ctest says, with the rest before its summary. Answers its exit code."""
    held, holding = [], False
    process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True, errors="replace")
    for line in process.stdout:
        holding = holding or SUMMARY.match(line) is not None
        if holding:
            held.append(line)
        else:
            out.write(line)
            out.flush()
    code = process.wait()
    skipped = unchanged(Path("Testing/Temporary/LastTest.log"))
    lines = slowest(builds)
    if skipped:
        lines.append(f"{len(skipped)} programs passed before and are unchanged, with all that they read (--all runs them):")
        lines += [f"  {name}" for name in skipped]
    out.write("\n".join(lines + [""]) + "\n" if lines else "")
    out.write("".join(held))
    out.flush()
    return code


class Written(list):
    def write(self, text):
        self.append(text)

    def flush(self):
        pass


def self_test():
    wrong = []
    with tempfile.TemporaryDirectory() as folder:
        build = Path(folder)
        (build / "times").mkdir()
        tests = [{"name": f"T{i}", "time": f"{i / 10}s"} for i in range(20)]
        (build / "times/program.A.json").write_text(
            json.dumps({"testsuites": [{"name": "Suite", "testsuite": tests}]}), encoding="utf-8")
        (build / "times/program.B.json").write_text("{ cut", encoding="utf-8")
        says = "echo '1/1 Test'; echo; echo '50% tests passed, 1 tests failed out of 2'; echo; echo 'Errors'; exit 8"
        out = Written()
        code = run([build], ["sh", "-c", says], out)
        lines = "".join(out).split("\n")
        wanted = ["1/1 Test", "", "The slowest tests, in seconds:"]
        wanted += [f"  {i / 10:7.2f}  Suite.T{i}  (program.A)" for i in range(19, 9, -1)]
        wanted += ["", "50% tests passed, 1 tests failed out of 2", "", "Errors", ""]
        lines = [line for line in lines if not line.startswith("  ") or "Suite" in line]
        if code != 8:
            wrong.append(f"exit code {code}, expected that of ctest, 8")
        if lines != wanted:
            wrong.append(f"said {lines}, expected {wanted}")
        log = build / "log"
        log.write_text("a: passed before, unchanged\nx a: passed before, unchanged\n", encoding="utf-8")
        if unchanged(log) != ["a"]:
            wrong.append(f"unchanged: {unchanged(log)}")
    print("\n".join(wrong + [f"report of the tests: {len(wrong)} complaints"]))
    return 1 if wrong else 0


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    at = sys.argv.index("--")
    return run([Path(folder) for folder in sys.argv[1:at]], sys.argv[at + 1:], sys.stdout)


if __name__ == "__main__":
    sys.exit(main())
