#!/usr/bin/env bash
# Runs programs for Windows under Debian's wine64, headless, in a folder of settings of its own.
#   scripts/wine.sh PROGRAM.exe [ARGUMENT...]    runs one program, at most ten minutes
#   scripts/wine.sh --session COMMAND [ARG...]   one display and one wineserver for all programs that
#                                                COMMAND runs by this script, as does
#                                                ctest --preset windows
# Sessions wait for each other. PARCHLET_WINE_SECONDS is another limit than the ten minutes.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
wine=/usr/lib/wine/wine64
server=/usr/lib/wine/wineserver64
limit=${PARCHLET_WINE_SECONDS:-600}
[[ $# -gt 0 && ($1 != --session || $# -gt 1) ]] ||
  { echo "usage: scripts/wine.sh PROGRAM.exe [ARGUMENT...] | --session COMMAND [ARG...]" >&2; exit 2; }

if [[ -n ${PARCHLET_WINE_SESSION:-} ]]; then
  status=0
  timeout --kill-after=10 "$limit" "$wine" "$@" || status=$?
  # 137: it did not end when it was asked to, and was killed.
  [[ $status -ne 124 && $status -ne 137 ]] || echo "scripts/wine.sh: stopped after $limit s: $*" >&2
  exit $status
fi

for tool in "$wine" "$server" xvfb-run xauth flock; do
  command -v "$tool" >/dev/null ||
    { echo "scripts/wine.sh: no $tool: run scripts/install-deps.sh windows" >&2; exit 2; }
done
folder=$here/build/wine
mkdir -p "$folder"
exec 9>"$folder/lock"
flock 9
export WINEPREFIX=$folder/prefix WINEDEBUG=-all PARCHLET_WINE_SESSION=1
export WINESERVER=$server WINELOADER=$wine
# Neither .NET nor a browser is installed for what needs none, and the desktop gets no menus.
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
if [[ $1 == --session ]]; then
  shift
else
  set -- "${BASH_SOURCE[0]}" "$@"
fi
# shellcheck disable=SC2016
xvfb-run -a -s '-screen 0 1920x1080x24 -nolisten tcp' bash -c '
  if [[ ! -e $WINEPREFIX/ready ]]; then
    rm -rf "$WINEPREFIX"
    timeout --kill-after=10 300 "$WINELOADER" wineboot --init >"$WINEPREFIX.log" 2>&1 ||
      { echo "scripts/wine.sh: no settings could be made: see $WINEPREFIX.log" >&2; exit 2; }
    "$WINESERVER" -w
    touch "$WINEPREFIX/ready"
  fi
  status=0
  "$@" || status=$?
  # Before the display goes, of which its programs would complain.
  "$WINESERVER" -k || true
  "$WINESERVER" -w
  exit $status' wine.sh "$@" 9>&-
