#!/usr/bin/env bash
# Installs the Debian packages that are still missing.
# Usage: install-deps.sh demo|test|package|windows|abi|docs
# As root, or with sudo.
set -euo pipefail

purpose=${1:-test}
packages=(g++ cmake ninja-build pkg-config libcairo2-dev libpng-dev
  libjpeg62-turbo-dev libgif-dev libhwy-dev libpango1.0-dev fonts-wqy-microhei libcli11-dev nlohmann-json3-dev
  libxcb1-dev libxcb-shm0-dev libxcb-shape0-dev libxcb-xfixes0-dev libxcb-randr0-dev
  libxcb-xkb-dev libxkbcommon-dev libxkbcommon-x11-dev)
if [[ $purpose == test ]]; then
  packages+=(git python3 clang libclang-rt-14-dev llvm-14 clang-format clang-tidy libgtest-dev libgmock-dev
    libbenchmark-dev fonts-dejavu-core xvfb picom xdotool x11-xserver-utils openbox)
fi
if [[ $purpose == package ]]; then
  packages+=(dpkg-dev file debootstrap)
fi
if [[ $purpose == windows ]]; then
  packages=(cmake ninja-build g++-mingw-w64-x86-64-posix googletest libhwy-dev
    wine64 xvfb xauth fonts-dejavu-core fonts-wqy-microhei)
fi
if [[ $purpose == abi ]]; then
  packages=(abigail-tools python3)
fi
if [[ $purpose == docs ]]; then
  packages=(doxygen python3)
fi

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
  [[ $status == 'install ok installed' ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [[ $EUID -ne 0 ]]; then
  if ! command -v sudo >/dev/null; then
    echo "These Debian packages are missing, and neither root nor sudo is at hand to install them:" >&2
    echo "  ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update &&
       "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y \
         --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
  tail -20 "$log" >&2
  echo "The packages could not be installed; apt-get's last words are above." >&2
  exit 1
fi
