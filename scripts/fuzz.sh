#!/usr/bin/env bash
# Feeds decoders, text conversions, the reader of boards and the painter with invented input, and the
# engine with invented calls, under the sanitizers.
# Usage: fuzz.sh [SECONDS]
# SECONDS is the time for each fuzzer, a minute when not given. An input that brings one down stays in
# build/fuzz/findings; mended, it belongs into fuzz/corpus, where the tests look at it for good.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: scripts/fuzz.sh [SECONDS]" >&2
  exit 2
fi

scripts/install-deps.sh test
mkdir -p build/fuzz/findings
{ cmake --preset fuzz && cmake --build --preset fuzz; } >build/fuzz.log 2>&1 ||
  { tail -40 build/fuzz.log >&2; exit 1; }

export LSAN_OPTIONS="suppressions=$PWD/tests/support/leaks.supp:print_suppressions=0"
failed=()
for format in bmp gif jpeg png text board strokes calls; do
  found=build/fuzz/found/$format
  mkdir -p "$found" "fuzz/corpus/$format"
  printf '== %s\n' "$format"
  log=build/fuzz/$format.log
  # Some hundred calls, or a dozen marks: longer inputs cost more than they find.
  length=4096
  case $format in
    calls) length=1024 ;;
    strokes) length=512 ;;
  esac
  if ! "build/fuzz/fuzz/parchlet-fuzz-$format" -max_total_time="$seconds" -max_len="$length" -timeout=30 \
      -rss_limit_mb=2048 -artifact_prefix="build/fuzz/findings/$format-" -print_final_stats=1 \
      "$found" "fuzz/corpus/$format" >"$log" 2>&1; then
    tail -40 "$log" >&2
    failed+=("$format")
    continue
  fi
  grep -E 'number_of_executed_units|peak_rss_mb' "$log"
done
if ((${#failed[@]})); then
  echo "Brought down: ${failed[*]}; the inputs are in build/fuzz/findings." >&2
  exit 1
fi
echo "Nothing was brought down."
