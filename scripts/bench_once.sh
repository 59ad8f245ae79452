#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs every benchmark of the released build once, for no figures: fails when one reports an error or does not run.
set -euo pipefail
cd "$(dirname "$0")/.."
export TARVOLT_BENCH_ONCE=1
failed=0
for source in bench/*_bench.cpp; do
  name="$(basename "$source" .cpp)"
  status=0
  output="$("build/release/bin/$name" --benchmark_format=json 2>&1)" || status=$?
  ran="$(grep -c '"iterations"' <<<"$output" || true)"
  if [ "$status" -ne 0 ] || [ "$ran" -eq 0 ] || grep -q '"error_occurred": true' <<<"$output"; then
    failed=1
    echo "$name failed (status $status, $ran benchmarks run)"
    grep -E '"(name|error_message)"' <<<"$output" | grep -B1 '"error_message"' || tail -n 5 <<<"$output"
  else
    echo "$name: $ran run"
  fi
done
exit "$failed"
