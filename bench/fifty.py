#!/usr/bin/env python3
"""Many terminals without windows on one feed and one PostgreSQL, with kills of all of them in between.

    python3 bench/fifty.py build/bench [--terminals 50] [--seconds 600] [--instruments 20] [--days 20] [--kills 5] [--seed N]

Every terminal starts with an empty store, follows the instruments and fetches their past days. While they do PostgreSQL is
killed. For a third of the time nothing is, and processor time is taken. Over the rest there are kills, at times, of whom and for
how long as it is drawn by the seed: of the feed, NATS, PostgreSQL and some of the terminals, several at once; with four kills or
more each of them is killed. With --quiet nobody is, and what the servers take is told. Then the feed is ended, and what every
terminal was told has to come to the sums in the feed's own log, and its store has to hold every bar of the server: the script
ends with 1 when one does not.
"""

import argparse
import datetime
import json
import os
import random
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from desks import FeedLog, Terminal, differences, is_alive, wait_for

SERVERS = Path(__file__).resolve().parents[1] / "setup/servers"
SERVER_NAMES = ["feed", "nats", "postgres"]
KINDS = SERVER_NAMES + ["terminals"]  # of what is killed
LONGEST_GONE = 3.0  # seconds between a kill and the start
LAST_WAIT = 60.0  # for what was sent last
LONGEST_QUIET = 90000  # milliseconds of the market, in which every minute that ran ends
PLACE_LAG = 3  # seconds of the feed, between two places in its log at the most


class Desk:
    """The servers, as setup/servers runs them."""

    def __init__(self, build, folder, feed_options):
        self.build, self.folder, self.feed_options = build, folder, feed_options
        words = self.start().replace("\\\n", "").split()
        self.environment = dict(word.split("=", 1) for word in words[:2])
        self.urls = words[4], words[6]
        self.log = FeedLog(folder / "feed/sums")

    def run(self, *words):
        done = subprocess.run([SERVERS, *words], stdout=subprocess.PIPE, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"servers {words[0]} ended with {done.returncode}")
        return done.stdout

    def start(self):
        return self.run("start", self.folder, "--programs", f"{self.build}/bin", "--", *self.feed_options)

    def pid(self, name):
        return json.loads((self.folder / "running.json").read_text())[name]["pid"]

    def end(self, how, *names):
        """Ends some of the servers by a signal, and waits until they have."""
        pids = {name: self.pid(name) for name in names}
        for pid in pids.values():
            os.kill(pid, how)
        for name, pid in pids.items():
            wait_for(f"the end of {name}", lambda each=pid: not is_alive(each))

    def processor_time(self, name):
        """Seconds that one of the servers has taken, with the children that it has and had."""
        pid = self.pid(name)
        ticks = 0
        for place in Path("/proc").glob("[0-9]*/stat"):
            try:
                words = place.read_text().rpartition(")")[2].split()
            except OSError:
                continue
            if place.parent.name == str(pid):
                ticks += sum(map(int, words[11:15]))
            elif words[1] == str(pid):
                ticks += sum(map(int, words[11:13]))
        return ticks / os.sysconf("SC_CLK_TCK")


def write_days(path, keys, days):
    """Minute bars of the last weekdays before today; answers how many an instrument has."""
    chance = random.Random(14)
    date = datetime.datetime.now(datetime.timezone(datetime.timedelta(hours=8))).date()
    dates = []
    while len(dates) < days:
        date -= datetime.timedelta(days=1)
        if date.weekday() < 5:
            dates.append(date)
    with open(path, "w", encoding="utf-8") as file:
        file.write("datetime,code,open,high,low,close,volume,amount\n")
        for key in keys:
            for day in reversed(dates):
                for number in range(240):
                    minute = 571 + number if number < 120 else 781 + number - 120
                    price = chance.randrange(1000, 1100)
                    volume = 100 * chance.randrange(1, 500)
                    file.write(f"{day} {minute // 60:02}:{minute % 60:02}:00,{key},{price / 100},{(price + 2) / 100},"
                               f"{(price - 2) / 100},{price / 100},{volume},{price * volume / 100}\n")
    return 240 * days


def has_all(terminal, bars):
    return all(int(words[3]) == bars for words in terminal.ask("past"))


def spread(values):
    values = sorted(values)
    return f"median {values[len(values) // 2]:.2f}, most {values[-1]:.2f}"


def measure(terminals, seconds):
    """Processor time of the terminals over some seconds, in percent of a core."""
    before = [float(terminal.state()[2]) for terminal in terminals]
    begun = time.monotonic()
    time.sleep(seconds)
    taken = time.monotonic() - begun
    return [100 * (float(terminal.state()[2]) - cpu) / taken for terminal, cpu in zip(terminals, before)]


def draw_kills(chance, count, seconds, terminals):
    """Times after the begin, whom to kill then, which of the terminals, and for how long, in the order of time."""
    first = KINDS[:]
    chance.shuffle(first)
    kills = []
    for number, at in enumerate(sorted(chance.uniform(0, 0.9 * seconds) for _ in range(count))):
        chosen = {kind for kind in KINDS if chance.random() < 0.3} | {first[number % len(first)]}
        some = sorted(chance.sample(range(terminals), chance.randint(1, 1 + terminals // 5))) if "terminals" in chosen else []
        kills.append((at, [name for name in SERVER_NAMES if name in chosen], some, chance.uniform(0, LONGEST_GONE)))
    return kills


def kill_at_random(desk, terminals, seconds, options):
    begun = time.monotonic()
    for at, names, some, gone in draw_kills(random.Random(options.seed), options.kills, seconds, len(terminals)):
        time.sleep(max(0.0, begun + at - time.monotonic()))
        print(f"killed after {time.monotonic() - begun:.1f} s for {gone:.1f} s: "
              + ", ".join(names + [f"terminal {number}" for number in some]), flush=True)
        desk.end(signal.SIGKILL, *names)
        for number in some:
            terminals[number].kill()
        time.sleep(gone)  # which the others are without them
        for number in some:
            terminals[number].begin()
        desk.start()
    time.sleep(max(0.0, begun + seconds - time.monotonic()))


def session(options, folder):
    desk = Desk(options.build, folder / "servers", ["--start", "13:00", "--pace", str(options.pace)])
    try:
        programs = f"{options.build}/bin"
        first = Terminal(programs, folder / "first", desk.urls, options.instruments, desk.environment)
        keys = [words[2] for words in first.ask("sums")]
        first.end()
        bars = write_days(folder / "days.csv", keys, options.days)
        desk.run("load", desk.folder, "--programs", programs, str(folder / "days.csv"))
        begun = time.monotonic()
        terminals = [Terminal(programs, folder / f"terminal-{number}", desk.urls, len(keys), desk.environment)
                     for number in range(options.terminals)]
        wait_for("the first days", lambda: any(int(words[3]) > 0 for terminal in terminals for words in terminal.ask("past")))
        if not options.quiet:
            desk.end(signal.SIGKILL, "postgres")
            desk.start()
        for terminal in terminals:
            wait_for("the history", lambda each=terminal: has_all(each, bars))
        told = f"took {desk.processor_time('postgres'):.1f} s with the loading" if options.quiet else "was killed meanwhile"
        print(f"{len(terminals)} terminals have {len(keys)} instruments with {options.days} days each after "
              f"{time.monotonic() - begun:.1f} s, PostgreSQL {told}", flush=True)
        wait_for("the running day", lambda: all(terminal.is_whole() for terminal in terminals))
        before = {name: desk.processor_time(name) for name in ("nats", "feed")}
        percent = measure(terminals, options.seconds / 3)
        if options.quiet:
            print("processor time: " + ", ".join(f"{name} {300 * (desk.processor_time(name) - took) / options.seconds:.2f} % of a core"
                                                 for name, took in before.items()), flush=True)
        else:
            kill_at_random(desk, terminals, 2 * options.seconds / 3, options)
        wait_for("the market after the kills", lambda: all(terminal.is_whole() for terminal in terminals))
        # A feed that was killed tells some seconds once more: until it is beyond them terminals know more than it does. And one that
        # was started in the middle of a minute may hear of it with its next change alone.
        further = desk.log.place() + max(PLACE_LAG * 1000 * options.pace, LONGEST_QUIET)
        wait_for("the feed to come to where it was", lambda: desk.log.place() >= further)
        desk.end(signal.SIGTERM, "feed")
        end = time.monotonic() + LAST_WAIT
        while (wrong := differences(terminals, desk.log)) and time.monotonic() < end:
            time.sleep(0.5)
        wrong += [f"terminal {number}: days were lost" for number, terminal in enumerate(terminals) if not has_all(terminal, bars)]
        memory = [float(terminal.state()[3]) for terminal in terminals]
        minutes = sum(int(sums[1]) for key, sums in desk.log.sums().items() if key in keys)
        ended = [terminal.end() for terminal in terminals]
        print(f"processor time of a terminal: {spread(percent)} % of a core over {options.seconds / 3:.0f} s; "
              f"memory: {spread(memory)} MB")
        print(f"{len(keys)} instruments with {minutes} minutes of the running day, {'no kills' if options.quiet else f'{options.kills} kills of seed {options.seed}'}: "
              f"{len(wrong)} sums are off, {sum(status != 0 for status in ended)} terminals ended badly")
        print("\n".join(wrong[:20]), end="\n" if wrong else "")
        return not wrong and not any(ended) and minutes > 0
    finally:
        desk.run("stop", desk.folder)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", metavar="BUILD", type=lambda path: str(Path(path).resolve()))
    for name, normal in (("terminals", 50), ("seconds", 600), ("instruments", 20), ("days", 20), ("kills", 5)):
        parser.add_argument(f"--{name}", type=int, default=normal)
    parser.add_argument("--quiet", action="store_true", help="without kills")
    parser.add_argument("--pace", type=float, default=1.0)
    parser.add_argument("--seed", type=int, default=random.randrange(1000000), help="of the kills")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)  # the user postgres goes through it
        sys.exit(0 if session(options, Path(folder)) else 1)


if __name__ == "__main__":
    main()
