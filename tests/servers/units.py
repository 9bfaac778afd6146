"""The units of systemd: what they start is in the package and takes their options, and a loader's inbox is emptied.

    units.py --build FOLDER --cmake PROGRAM
"""

import argparse
import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

# What a unit starts that belongs to another package.
OTHERS = {"/usr/sbin/nats-server"}
UNITS = ("timeshare-nats.service", "timeshare-feed.service", "timeshare-load.service", "timeshare-load.timer")


def run(*words, status=0, **more):
    done = subprocess.run([str(word) for word in words], text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, **more)
    assert done.returncode == status, f"{words} ended with {done.returncode}, not {status}:\n{done.stdout}"
    return done.stdout


def look_at_unit(root, unit):
    """Every program is there, and what it is given are options of it."""
    for command in re.findall(r"^ExecStart=(.*)$", unit.read_text(), re.MULTILINE):
        program, *words = command.split()
        if program in OTHERS:
            continue
        installed = root / program[1:]
        assert os.access(installed, os.X_OK), f"{unit.name}: {program} is not installed"
        text = installed.read_text() if installed.name == "load-inbox" else run(installed, "--help")
        for option in (word for word in words if word.startswith("--")):
            assert option in text, f"{unit.name}: {program} knows no {option}"
    for place in re.findall(r"file:(/\S+)", unit.read_text()):
        assert (root / place[1:]).is_file(), f"{unit.name}: {place} is not installed"


def verify(units):
    """systemd's own look at them, where it is installed; what they start is not there on this machine."""
    if shutil.which("systemd-analyze"):
        done = subprocess.run(["systemd-analyze", "verify", "--man=no", *units], text=True, capture_output=True, check=False)
        wrong = [line for line in done.stderr.splitlines() if "timeshare-" in line and "is not executable: No such file" not in line]
        assert not wrong, wrong


def look_at_inbox(root, folder):
    """What is loaded is put aside, what is not stays and is told."""
    inbox = folder / "inbox"
    inbox.mkdir()
    for name in ("good one.csv", "bad.csv"):
        (inbox / name).write_text(name)
    programs = folder / "programs"
    programs.mkdir()
    loader = programs / "timeshare-load"  # one that refuses what is bad, and tells how it was asked
    loader.write_text('#!/bin/sh\necho "$@"\nfor last; do :; done\ntest "$(basename "$last")" != bad.csv\n')
    loader.chmod(0o755)
    said = run(root / "usr/libexec/timeshare/load-inbox", "postgres://loader@market/history", inbox, "--market", "SH", status=1,
               env={**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"})
    assert f"--history postgres://loader@market/history --market SH {inbox}/good one.csv\n" in said, said
    assert f"load-inbox: {inbox}/bad.csv is not loaded\n" in said, said
    assert sorted(path.relative_to(inbox).as_posix() for path in inbox.rglob("*.csv")) == ["bad.csv", "loaded/good one.csv"]


def main():
    parser = argparse.ArgumentParser()
    for option in ("build", "cmake"):
        parser.add_argument("--" + option, required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        root = folder / "root"
        for component in ("runtime", "terminal"):
            run(options.cmake, "--install", options.build, "--prefix", root / "usr", "--component", component)
        units = [root / "usr/lib/systemd/system" / unit for unit in UNITS]
        for unit in units:
            look_at_unit(root, unit)
        verify(units)
        look_at_inbox(root, folder)
        assert "start|load|status|stop" in run(root / "usr/bin/timeshare-servers", "--help")
        for program in ("timeshare-feed", "timeshare-load"):
            assert (root / "usr/bin" / program).is_symlink()
    print("installed, and they name what is there")


if __name__ == "__main__":
    main()
