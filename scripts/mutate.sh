#!/usr/bin/env bash
# Breaks the engine in some hundred places, one at a time, and tells which breaks the tests miss.
# Usage: mutate.sh [--survivors] [WORD ...]
# With words, only breaks in files whose path holds one of them; with --survivors, only those that
# the last report says were missed. Everything is made in build/mutation; its report.tsv has a line
# for each break. docs/testing.md says how to read it.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh test
mkdir -p build
exec nice python3 -B scripts/mutation/mutate.py "$@"
