"""Runs the benchmark programs of two folders by turns and prints the ratios of their times.

    compare.py FIRST SECOND      folders of programs; see compare.sh

Each round runs every program of both folders, the other one first in every second round, on the last core when it may be
chosen. The ratio of a case is second to first within a round: its median over the rounds, its least and its greatest. `quickest` is
the ratio of the shortest times of all rounds, which other load on the machine disturbs least.
"""

import json
import os
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

PROGRAMS = {"timeshare_bench": ".", "peers_bench": "timeshare|^G"}
ENVIRONMENT = {"QT_QPA_PLATFORM": "offscreen", "PEERS_NO_CHECK": "1", **os.environ}


def quiet_core():
    """Words before a command that give it a core of its own, as far as this machine allows."""
    words = ["taskset", "-c", str(max(os.sched_getaffinity(0)))]
    ahead = ["chrt", "-f", "10", *words]
    return ahead if subprocess.run([*ahead, "true"], capture_output=True).returncode == 0 else words


def times(program, case_filter, before):
    """Microseconds of every case of one run; none where the filter picks none."""
    listed = subprocess.run([str(program), f"--benchmark_filter={case_filter}", "--benchmark_list_tests"],
                            capture_output=True, env=ENVIRONMENT)
    if listed.returncode != 0 or not listed.stdout.strip():
        return {}
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run([*before, str(program), f"--benchmark_filter={case_filter}",
                        f"--benchmark_min_time={os.environ.get('MIN_TIME', '0.05')}",
                        f"--benchmark_out={out.name}", "--benchmark_out_format=json"],
                       check=True, capture_output=True, env=ENVIRONMENT)
        told = json.loads(Path(out.name).read_text(encoding="utf-8"))
    scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}
    return {run["name"]: run["real_time"] * scale[run["time_unit"]] for run in told["benchmarks"]
            if run.get("run_type", "iteration") == "iteration" and not run.get("error_occurred")}


def rounds(folders, count, before):
    """Times by program and case: a pair of lists, one time a round."""
    found = {}
    for i in range(count):
        for program, default in PROGRAMS.items():
            if not all((folder / program).exists() for folder in folders):
                continue
            order = (0, 1) if i % 2 == 0 else (1, 0)
            for which in order:
                for case, time in times(folders[which] / program, os.environ.get("FILTER", default), before).items():
                    found.setdefault((program, case), ([], []))[which].append(time)
        print(f"round {i + 1} of {count}", file=sys.stderr, flush=True)
    return found


def table(found):
    """Lines of the cases that both have, the worst ratio first."""
    rows = []
    for (_, case), (first, second) in found.items():
        if first and len(first) == len(second):
            ratios = sorted(b / a for a, b in zip(first, second))
            rows.append((statistics.median(ratios), ratios[0], ratios[-1], min(second) / min(first),
                         statistics.median(first), statistics.median(second), case))
    yield f"{'ratio':>6} {'least':>6} {'most':>6} {'quickest':>8} {'first us':>11} {'second us':>11}  case"
    for ratio, least, most, quickest, first, second, case in sorted(rows, reverse=True):
        yield f"{ratio:6.2f} {least:6.2f} {most:6.2f} {quickest:8.2f} {first:11.2f} {second:11.2f}  {case}"


def main():
    folders = [Path(name) for name in sys.argv[1:]]
    if len(folders) != 2:
        sys.exit(__doc__)
    print("\n".join(table(rounds(folders, int(os.environ.get("ROUNDS", "5")), quiet_core()))))


if __name__ == "__main__":
    main()
