#!/usr/bin/env bash
# Compares what the libraries offer to hosts that are already built with the last release's, which is
# kept in abi/. More is fine; a difference in what was there before needs a new SONAME.
#   scripts/check-abi.sh            compares the libraries as built for development
#   scripts/check-abi.sh --record   makes them what the next ones are compared with: for a release
set -euo pipefail
cd "$(dirname "$0")/.."

record=false
case "${1:-}" in
  '') ;;
  --record) record=true ;;
  *) echo "usage: scripts/check-abi.sh [--record]" >&2; exit 2 ;;
esac

scripts/install-deps.sh test
scripts/install-deps.sh abi
work=build/abi
mkdir -p "$work" abi
{ cmake --preset dev && cmake --build --preset dev --target parchlet parchlet_x11; } \
  >build/abi.log 2>&1 || { tail -40 build/abi.log >&2; exit 1; }

soname_of() { grep -o "soname=['\"][^'\"]*" "$1" | cut -c9-; }

# check NAME LIBRARY HEADERS
check() {
  local name=$1 now=$work/$1.xml before=$work/$1.before.xml kept=abi/$1.xml.gz
  abidw --headers-dir "$3" --drop-private-types --drop-undefined-syms --exported-interfaces-only \
    --no-architecture --no-comp-dir-path --no-corpus-path --no-show-locs --no-elf-needed \
    --no-parameter-names --no-write-default-sizes "$2" | scripts/reduce-abi.py >"$now"
  if $record; then
    gzip -9n <"$now" >"$kept"
    echo "$kept holds $(soname_of "$now") now"
    return
  fi
  gunzip <"$kept" >"$before"
  if [[ $(soname_of "$before") != "$(soname_of "$now")" ]]; then
    echo "$(soname_of "$now") follows $(soname_of "$before"): hosts are built anew, nothing to compare"
  elif abidiff --no-added-syms "$before" "$now" >"$work/$name.diff"; then
    echo "$(soname_of "$now") offers all that it did"
  else
    cat "$work/$name.diff"
    failed+=("$(soname_of "$now")")
  fi
}

failed=()
check libparchlet build/dev/src/libparchlet.so include/parchlet
check libparchlet_x11 build/dev/src/x11/libparchlet_x11.so include/parchlet/x11
if ((${#failed[@]})); then
  cat >&2 <<END
Hosts built with the last release would break with ${failed[*]} (what changed stands above).
Keep what was there; or, before 1.0.0, give the project a new minor version in CMakeLists.txt, which
gives the library a new SONAME. As long as the version in CMakeLists.txt has never been released,
nobody can break: scripts/check-abi.sh --record, and commit abi/.
END
  exit 1
fi
