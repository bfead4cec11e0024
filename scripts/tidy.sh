#!/usr/bin/env bash
# Has clang-tidy look at every source that the preset clang builds.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh test
mkdir -p build
cmake --preset clang >build/tidy.log 2>&1 || { cat build/tidy.log >&2; exit 1; }
echo "Looking at $(grep -c '"file"' build/clang/compile_commands.json) compilations ..."
if ! run-clang-tidy -quiet -p build/clang -j "$(nproc)" "$PWD/.*\.cpp\$" >build/tidy.log 2>&1; then
  grep -vE '^clang-tidy|warnings? generated|^$' build/tidy.log >&2
  exit 1
fi
echo "clang-tidy has nothing to say."
