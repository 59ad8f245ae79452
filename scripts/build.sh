#!/usr/bin/env bash
# Configures once and builds: scripts/build.sh PRESET [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
preset="$1"
shift
[ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
if [ "$#" -gt 0 ]; then
  cmake --build --preset "$preset" --target "$@"
else
  cmake --build --preset "$preset"
fi
