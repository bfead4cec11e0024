#!/usr/bin/env bash
# Uses the Debian packages of out/packages as an application's developer and its users would.
#   scripts/test-packages.sh              builds the hosts of tests/install against the unpacked packages,
#                                         and holds a meeting in Python with their library
#   scripts/test-packages.sh --clean-root also installs them in a fresh Debian, runs the hosts there
#                                         and removes the packages again; takes root and some minutes
set -euo pipefail
cd "$(dirname "$0")/.."

clean_root=false
case "${1:-}" in
  '') ;;
  --clean-root) clean_root=true ;;
  *) echo "usage: scripts/test-packages.sh [--clean-root]" >&2; exit 2 ;;
esac

work=$PWD/build/packages
rm -rf "$work"
mkdir -p "$work"
packages=(out/packages/*.deb)
names=()
for package in "${packages[@]}"; do
  dpkg -x "$package" "$work/unpacked"
  names+=("$(dpkg-deb -f "$package" Package)")
  if [[ ! -s $work/unpacked/usr/share/doc/${names[-1]}/copyright ]]; then
    echo "$package says nothing of its copyright." >&2
    exit 1
  fi
done

quiet() { "$@" >"$work/log" 2>&1 || { tail -40 "$work/log" >&2; exit 1; }; }

echo "== hosts against the unpacked packages: ${names[*]}"
quiet cmake -S tests/install/host -B "$work/host" -G Ninja -D WITH_X11=ON \
  -D CMAKE_PREFIX_PATH="$work/unpacked/usr"
quiet cmake --build "$work/host"
"$work/host/host" "$work"
"$work/host/c-host"
python3 tests/c/meeting.py "$(echo "$work"/unpacked/usr/lib/*/libparchlet.so.*.*.*)"
if ! $clean_root; then
  echo "All is well."
  exit 0
fi

root=$work/root
in_root() { DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"; }
trap 'rm -rf "$root"' EXIT

echo "== installing in a fresh Debian"
scripts/install-deps.sh package
quiet debootstrap --variant=minbase bookworm "$root"
mkdir "$root/packages"
cp "${packages[@]}" "$root/packages"
cp "$work"/host/{host,c-host,desktop-host} "$root/packages"
# With the fonts that the runtime recommends, for authors' names, and nothing else.
quiet in_root apt-get update
quiet in_root bash -c \
  'apt-get install -y --no-install-recommends fonts-wqy-microhei /packages/*.deb'
in_root /packages/host /packages
in_root /packages/c-host
in_root /packages/desktop-host
in_root parchlet-replay --version
in_root parchlet-whiteboard --version
in_root parchlet-replay --size 640x400 --out /packages/board.png /usr/share/parchlet/boards/welcome.jsonl

echo "== removing"
quiet in_root apt-get purge -y "${names[@]}"
left=$(find "$root" -iname '*parchlet*' -not -path "$root/packages/*" -not -path "$root/var/log/*")
if [[ -n $left ]]; then
  echo "The packages left behind:" >&2
  echo "$left" >&2
  exit 1
fi
if in_root /packages/host >/dev/null 2>&1; then
  echo "A host runs without the library: it was not the packages' that ran before." >&2
  exit 1
fi
echo "All is well."
