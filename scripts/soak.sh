#!/usr/bin/env bash
# Keeps generated hosts calling, with the refresh timer running and a second thread of pushes, and
# compares every answer with the plain model's. Usage: soak.sh MINUTES [PRESET]
# PRESET is dev when not given; asan and tsan watch memory and threads as well.
set -euo pipefail
cd "$(dirname "$0")/.."

minutes=${1:-}
preset=${2:-dev}
if ! [[ $minutes =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: scripts/soak.sh MINUTES [PRESET]" >&2
  exit 2
fi
mkdir -p build
{ cmake --preset "$preset" && cmake --build "build/$preset" --target parchlet_thread_tests; } \
    >build/soak.log 2>&1 || { tail -40 build/soak.log >&2; exit 1; }
export LSAN_OPTIONS="suppressions=$PWD/tests/support/leaks.supp:print_suppressions=0"
export TSAN_OPTIONS="suppressions=$PWD/tests/support/races.supp:print_suppressions=0"
sessions=0
end=$((SECONDS + minutes * 60))
while ((SECONDS < end)); do
  export PARCHLET_SEED=$((RANDOM * 32768 + RANDOM))
  "build/$preset/tests/parchlet_thread_tests" --gtest_filter='*HostStorm*' >build/soak.log 2>&1 ||
    { tail -80 build/soak.log >&2; echo "The seed was $PARCHLET_SEED." >&2; exit 1; }
  sessions=$((sessions + 4))
done
echo "$sessions sessions of 1,000 calls: nothing differed"
