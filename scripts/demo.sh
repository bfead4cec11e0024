#!/usr/bin/env bash
# Replays the project's own board through the engine, as a meeting of six, and writes the page as a
# picture. On a fresh Debian 12 machine it first installs what is missing. Options are handed to
# parchlet-replay.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh demo
mkdir -p build out
echo "Building (the first time takes about a minute) ..."
{ cmake --preset demo && cmake --build --preset demo; } >build/demo.log 2>&1 ||
  { tail -40 build/demo.log >&2; exit 1; }
build/demo/apps/replay/parchlet-replay --nickname --out out/demo.png "$@" examples/boards/welcome.jsonl
echo "The picture is out/demo.png"
