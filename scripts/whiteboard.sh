#!/usr/bin/env bash
# Starts the whiteboard on this desktop. On a fresh Debian 12 machine it first installs what is
# missing. Options are handed to parchlet-whiteboard; --help lists them.
set -euo pipefail
folder=$PWD
cd "$(dirname "$0")/.."

scripts/install-deps.sh demo
mkdir -p build
echo "Building (the first time takes about a minute) ..."
{ cmake --preset demo && cmake --build --preset demo --target parchlet-whiteboard; } \
  >build/whiteboard.log 2>&1 || { tail -40 build/whiteboard.log >&2; exit 1; }
program=$PWD/build/demo/apps/whiteboard/parchlet-whiteboard
cd "$folder"  # pictures are named from where the person is
exec "$program" "$@"
