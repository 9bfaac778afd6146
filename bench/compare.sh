#!/usr/bin/env bash
# Runs the benchmarks of two revisions by turns and prints, for every case, the ratio of their times with its spread.
#   bench/compare.sh REVISION [REVISION]    the second is the working tree when it is not told
# ROUNDS (5), FILTER (every case of timeshare_bench; of peers_bench ours and the floors) and MIN_TIME (0.05 s a case) are
# read from the environment. The builds stay under build/compare.
set -euo pipefail
cd "$(dirname "$0")/.."
peers="${TIMESHARE_PEERS_DIR:-$PWD/../shared/peers}"

# build REVISION: makes its benchmarks; the last line tells the folder of the programs.
build() {
  local source="$PWD" to="$PWD/build/bench"
  if [ -n "$1" ]; then
    local commit
    commit="$(git rev-parse --short "$1^{commit}")"
    source="$PWD/build/compare/$commit"
    to="$source/build/bench"
    if [ ! -d "$source" ]; then
      mkdir -p "$source"
      git archive "$commit" | tar -x -C "$source"
    fi
  fi
  (cd "$source" && cmake --preset bench -DTIMESHARE_PEERS_DIR="$peers" >/dev/null &&
    cmake --build --preset bench >&2)
  echo "$to/bin"
}

first="$(build "${1:?a revision to compare with}")"
second="$(build "${2:-}")"
exec python3 -B bench/compare.py "$first" "$second"
