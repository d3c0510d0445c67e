#!/usr/bin/env bash
# Fuzzes each reader for so many seconds:  fuzz/run.sh [SECONDS]
# What is found is kept under build/fuzz/found, and what widens the coverage under build/fuzz/corpus.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
mkdir -p build
# shellcheck source=tools/dev/setup.sh
. tools/dev/setup.sh
seconds=${1:-60}
targets=(archive datagrams)

build_preset fuzz "${targets[@]/#/fuzz-}" >build/fuzz.log 2>&1 || {
  tail -n 40 build/fuzz.log >&2
  exit 1
}
PYTHONDONTWRITEBYTECODE=1 fuzz/seeds.py build/fuzz/seeds
mkdir -p build/fuzz/found
for target in "${targets[@]}"; do
  mkdir -p "build/fuzz/corpus/$target"
  # The memory of the sanitizers is in the limit; what a reader may hold is 64 MiB.
  "build/fuzz/bin/fuzz-$target" -max_total_time="$seconds" -max_len=65536 -timeout=10 -rss_limit_mb=1024 \
    -print_final_stats=1 -artifact_prefix=build/fuzz/found/ \
    "build/fuzz/corpus/$target" "build/fuzz/seeds/$target" >"build/fuzz/$target.log" 2>&1 || {
    tail -n 60 "build/fuzz/$target.log" >&2
    exit 1
  }
  echo "fuzz-$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "build/fuzz/$target.log") runs in $seconds s"
done
