"""Terminals without windows over servers, and what a feed's log tells of the same market."""

import os
import subprocess
import sys
import time
from pathlib import Path

PATIENCE = 900.0  # seconds that anything may take on a busy machine


class Terminal:
    """A timeshare_desk of a folder of programs, with its store in a folder of its own."""

    def __init__(self, programs, folder, urls, instruments, environment):
        folder.mkdir(mode=0o700)
        self.command = [f"{programs}/timeshare_desk", folder, *urls, str(instruments)]
        self.environment = {**os.environ, **environment, "HOME": str(folder), "XDG_RUNTIME_DIR": str(folder)}
        self.begin()

    def begin(self):
        self.process = subprocess.Popen(self.command, text=True, stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=self.environment)

    def kill(self):
        self.process.kill()
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()

    def ask(self, word):
        """The lines of its answer, as lists of words."""
        self.process.stdin.write(word + "\n")
        self.process.stdin.flush()
        lines = []
        for line in self.process.stdout:
            if line == "done\n":
                return lines
            lines.append(line.split())
        sys.exit(f"a terminal has ended with {self.process.wait()}")

    def state(self):
        return self.ask("state")[0]

    def is_whole(self):
        """Whether it lacks nothing of the running day, as it says."""
        return self.state()[1] == "1"

    def end(self):
        self.process.stdin.close()
        return self.process.wait()


class FeedLog:
    """What a feed has noted: where it was, and the sums of what it has told."""

    def __init__(self, path):
        self.path = Path(path)

    def lines(self):
        return [line.split() for line in self.path.read_text(encoding="utf-8").splitlines()] if self.path.exists() else []

    def place(self):
        """The market time of the last place, where a feed that is started again goes on."""
        return max((int(words[2]) for words in self.lines() if words[:1] == ["at"] and len(words) == 5), default=0)

    def sums(self):
        """The last sums of each instrument."""
        return {words[3]: [words[2]] + words[4:] for words in self.lines() if words[:1] == ["sum"] and len(words) == 8}


def is_alive(pid):
    try:
        return Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()[0] not in "ZX"
    except OSError:
        return False


def wait_for(what, holds):
    end = time.monotonic() + PATIENCE
    while not holds():
        if time.monotonic() > end:
            sys.exit(f"{what}: not within {PATIENCE:.0f} s")
        time.sleep(0.1)


def close_to(told, logged):
    """Sums are of the same numbers in the same order: equal to the last digit."""
    return len(told) == len(logged) and all(float(a) == float(b) for a, b in zip(told, logged))


def differences(terminals, log):
    """Where terminals were told anything else than the feed has noted."""
    logged = log.sums()
    found = []
    for number, terminal in enumerate(terminals):
        for _, day, key, *sums in terminal.ask("sums"):
            if not close_to([day, *sums], logged.get(key, [])):
                found.append(f"terminal {number}, {key}: told {[day, *sums]}, logged {logged.get(key)}")
    return found
