#!/usr/bin/env bash
# Keeps generated hosts calling, with the refresh timer running and a second thread of pushes, and
# compares every answer with the plain model's. Usage: soak.sh MINUTES [PRESET]
# PRESET is dev when not given; asan and tsan watch memory and threads as well.
set -euo pipefail
cd "$(dirname "$0")/.."

minutes=${1:-}
preset=${2:-dev}
if ! [[ $minutes =~ ^[0-9]+(\.[0-9]+)?$ ]]; then
  echo "usage: scripts/soak.sh MINUTES [PRESET]" >&2
  exit 2
fi
mkdir -p build
{ cmake --preset "$preset" && cmake --build "build/$preset" --target parchlet-soak; } \
    >build/soak.log 2>&1 || { tail -40 build/soak.log >&2; exit 1; }
export LSAN_OPTIONS="suppressions=$PWD/tests/support/leaks.supp:print_suppressions=0"
export TSAN_OPTIONS="suppressions=$PWD/tests/support/races.supp:print_suppressions=0"
exec "build/$preset/tests/model/parchlet-soak" "$minutes" "$RANDOM"
