"""How long the terminal takes from its start to its window and to its first complete picture.

    python3 bench/start.py build/bench [RUNS, 20] [--first] [OPTIONS OF THE TERMINAL]

The store is filled before the first run, by a terminal that stays for some seconds so that nothing is left for later ones to do.
With --first there is no store before each run. Without DISPLAY it is offscreen; see xvfb-run(1).
"""

import os
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

STAY = "8"  # seconds
NAMES = ("window by the clock", "window, processor time", "picture by the clock", "picture, processor time")


def main():
    program = Path(sys.argv[1]).resolve() / "bin/timeshare_start_bench"
    words = sys.argv[2:]
    runs = int(words.pop(0)) if words and words[0].isdigit() else 20
    is_first = "--first" in words
    options = [word for word in words if word != "--first"]
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o700)

        def start(stay="0"):
            store = Path(folder) / "market.db"
            if is_first:
                for file in Path(folder).glob("market.db*"):
                    file.unlink()
            begun = time.clock_gettime(time.CLOCK_MONOTONIC)
            said = subprocess.run([program, "--store", store, *options], check=True, text=True, stdout=subprocess.PIPE,
                                  env={**os.environ, "HOME": folder, "XDG_RUNTIME_DIR": folder, "START_BEGUN": repr(begun), "START_STAY": stay})
            return [float(word) for word in said.stdout.split()]

        start(STAY)
        figures = [start() for _ in range(runs)]
    for name, values in zip(NAMES, zip(*figures)):
        print(f"{name}: {statistics.median(values):.0f} ms in the median, {min(values):.0f} to {max(values):.0f}, {runs} runs")


if __name__ == "__main__":
    main()
