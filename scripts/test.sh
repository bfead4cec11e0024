#!/usr/bin/env bash
# Builds and runs the tests. On a fresh Debian 12 machine it first installs what is missing.
#   scripts/test.sh         the tests, as built for development
#   scripts/test.sh --all   also: format check, what the last release offered, the manual, clang with
#                           its thread-safety analysis, clang-tidy, sanitizers, the DLL for Windows, a
#                           minute of every fuzzer, the Debian packages in a fresh Debian
set -euo pipefail
cd "$(dirname "$0")/.."

all=false
case "${1:-}" in
  '') ;;
  --all) all=true ;;
  *) echo "usage: scripts/test.sh [--all]" >&2; exit 2 ;;
esac

step() { printf '\n== %s\n' "$1"; }

preset() {
  step "$1: build"
  cmake --preset "$1" >"build/$1.configure.log" 2>&1 || { cat "build/$1.configure.log" >&2; exit 1; }
  cmake --build --preset "$1"
  step "$1: tests"
  ctest --preset "$1" --parallel "$(nproc)"
}

mkdir -p build
step "packages"
scripts/install-deps.sh test
if $all; then
  export CI=true  # a test that finds no X server fails, instead of being skipped
  step "format"
  git ls-files '*.h' '*.c' '*.cpp' | xargs clang-format --dry-run --Werror
fi
preset dev
if $all; then
  step "what the last release offered"
  scripts/check-abi.sh
  step "manual"
  scripts/docs.sh
  preset clang
  step "clang-tidy"
  scripts/tidy.sh
  preset asan
  preset tsan
  step "windows: build DLL, tests and a host, look at their names, and run the tests"
  scripts/install-deps.sh windows
  cmake --preset windows >build/windows.configure.log 2>&1 ||
    { cat build/windows.configure.log >&2; exit 1; }
  cmake --build --preset windows
  cmake -D SOURCE_FOLDER="$PWD" -D DLL=build/windows/src/parchlet.dll \
    -D HOST=build/windows/examples/win32_host/parchlet-win32-host.exe \
    -D TESTS=build/windows/tests/windows/parchlet-windows-tests.exe \
    -P tests/windows/CheckDll.cmake
  scripts/wine.sh --session ctest --preset windows
  step "windows, painted by GDI+: the same"
  cmake --preset windows-gdiplus >build/windows-gdiplus.configure.log 2>&1 ||
    { cat build/windows-gdiplus.configure.log >&2; exit 1; }
  cmake --build --preset windows-gdiplus
  cmake -D SOURCE_FOLDER="$PWD" -D DLL=build/windows-gdiplus/src/parchlet.dll -D PAINTER=gdiplus \
    -D TESTS=build/windows-gdiplus/tests/windows/parchlet-windows-tests.exe \
    -P tests/windows/CheckDll.cmake
  scripts/wine.sh --session ctest --preset windows-gdiplus
  step "windows: hosts against the installed DLL"
  rm -rf build/windows/prefix build/windows/host
  { cmake --install build/windows --prefix build/windows/prefix &&
      cmake -S tests/windows/host -B build/windows/host -G Ninja \
        --toolchain "$PWD/cmake/mingw-w64.cmake" \
        -D Parchlet_DIR="$PWD/build/windows/prefix/lib/cmake/Parchlet" &&
      cmake --build build/windows/host; } >build/windows.host.log 2>&1 ||
    { cat build/windows.host.log >&2; exit 1; }
  step "fuzz: a minute each"
  scripts/fuzz.sh 60
  step "Debian packages"
  scripts/package.sh
  scripts/test-packages.sh --clean-root
fi
echo
echo "All is well."
