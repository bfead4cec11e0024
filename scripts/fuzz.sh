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
# Feeds one target; says how it went in one go, as several run side by side.
feed() {
  local target=$1 length=4096 found=build/fuzz/found/$1 log=build/fuzz/$1.log
  # Some hundred calls, or a dozen marks: longer inputs cost more than they find.
  case $target in
    calls) length=1024 ;;
    strokes) length=512 ;;
  esac
  mkdir -p "$found" "fuzz/corpus/$target"
  # The largest picture takes 256 MB; nothing may ask for twice that.
  if "build/fuzz/fuzz/parchlet-fuzz-$target" -max_total_time="$seconds" -max_len="$length" \
    -timeout=30 -rss_limit_mb=2048 -malloc_limit_mb=512 -artifact_prefix="build/fuzz/findings/$target-" \
    -print_final_stats=1 "$found" "fuzz/corpus/$target" >"$log" 2>&1; then
    printf '== %s\n%s\n' "$target" "$(grep -E 'number_of_executed_units|peak_rss_mb' "$log")"
  else
    printf '== %s: brought down; the input is in build/fuzz/findings\n%s\n' "$target" \
      "$(tail -40 "$log")" >&2
    return 1
  fi
}
export -f feed
export seconds

echo "Feeding 8 targets for $seconds s each ..."
printf '%s\n' calls strokes bmp gif jpeg png text board |
  xargs -P "$(nproc)" -I {} bash -c 'feed {}'
echo "Nothing was brought down."
