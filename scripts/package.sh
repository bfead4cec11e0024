#!/usr/bin/env bash
# Builds the Debian packages into out/packages. On a fresh Debian 12 machine it first installs what is
# missing.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh package
mkdir -p build out
rm -rf out/packages
echo "Building (the first time takes some minutes) ..."
{ cmake --preset package && cmake --build --preset package &&
    cpack -G DEB --config build/package/CPackConfig.cmake -B "$PWD/out/packages"; } \
  >build/package.log 2>&1 || { tail -40 build/package.log >&2; exit 1; }
rm -rf out/packages/_CPack_Packages
echo "The packages are:"
ls out/packages/*.deb
