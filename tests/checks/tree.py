"""The files of the tree that the checks look at."""

import subprocess
import tempfile
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SOURCE_SUFFIXES = (".h", ".cpp")
SKIPPED_FOLDERS = {"build", ".git", "third_party"}


def tracked_files(root):
    """What git tracks, or every file outside build folders when the tree is no checkout."""
    try:
        listed = subprocess.run(["git", "-c", "safe.directory=*", "-C", str(root), "ls-files", "-z"],
                                check=True, capture_output=True)
    except (OSError, subprocess.CalledProcessError):
        return [path for path in sorted(root.rglob("*"))
                if path.is_file() and not SKIPPED_FOLDERS & set(path.relative_to(root).parts)]
    paths = [root / name.decode() for name in listed.stdout.split(b"\0") if name]
    return [path for path in paths if path.is_file()]


def sources(root, suffixes=SOURCE_SUFFIXES):
    return [path for path in tracked_files(root) if path.suffix in suffixes]


def finish(check, complaints, looked_at):
    """Prints the complaints and gives the exit code. Looking at nothing is a failure as well."""
    for complaint in complaints:
        print(complaint)
    print(f"{check}: {looked_at} files, {len(complaints)} complaints")
    return 1 if complaints or not looked_at else 0


def self_test(check, planted, look, counts=lambda source: True):
    """Plants files, each with the lines of its complaints, in a tree of its own, looks at it, and complains about what
    is not found and what is found without being planted. `counts` tells which files are looked at."""
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        for source, text, _ in planted:
            (root / source).parent.mkdir(parents=True, exist_ok=True)
            (root / source).write_text(text, encoding="utf-8")
        found, looked_at = look(root)
    expected = Counter(f"{source}:{line}" for source, _, lines in planted for line in lines)
    seen = Counter(complaint.split(": ")[0] for complaint in found)
    wrong = [f"expected and not found: {name}" for name in (expected - seen).elements()]
    wrong += [f"found and not expected: {name}" for name in (seen - expected).elements()]
    looked_for = sum(1 for source, _, _ in planted if counts(source))
    if looked_at != looked_for:
        wrong.append(f"looked at {looked_at} of {looked_for} files")
    return finish(f"{check}, planted faults", wrong, looked_at)
