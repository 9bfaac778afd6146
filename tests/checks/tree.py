"""The files of the tree that the checks look at."""

import subprocess
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
