#!/usr/bin/env bash
# Makes the manual, the guide and the reference of the public headers, as HTML in build/docs/html. A
# warning is an error. On a fresh Debian 12 machine it first installs what is missing.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh docs
mkdir -p build
rm -rf build/docs
version=$(sed -n 's/^project(Parchlet VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
if ! { cat docs/Doxyfile; echo "PROJECT_NUMBER = $version"; } | doxygen - >build/docs.log 2>&1; then
  cat build/docs.log >&2
  exit 1
fi
echo "The manual is build/docs/html/index.html"
