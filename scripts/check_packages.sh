#!/usr/bin/env bash
# Installs the packages of build/packages in a bare Debian 12, uses them from C++ (CMake and pkg-config), from Python and on
# the command line, removes them again and compares the files: nothing may stay. Then it builds a library from the source
# tarball. Says how long a newcomer waits for the first result once everything is downloaded.
# Usage: scripts/check_packages.sh [FOLDER_OF_PACKAGES] [--with-source]
#        (--with-source also builds all libraries from the tarball; MIRROR is Debian's)
# Needs root (chroot, mount). The bare system is made once, in build/bare.tar, and unpacked anew each time.
set -euo pipefail
cd "$(dirname "$0")/.."
packages=$PWD/build/packages with_source=false
for word; do
  if [ "$word" = --with-source ]; then with_source=true; else packages=$(realpath "$word"); fi
done
mirror=${MIRROR:-http://deb.debian.org/debian}
bare=$PWD/build/bare.tar
compgen -G "$packages/*.deb" >/dev/null || { echo "check_packages.sh: no packages in $packages" >&2; exit 1; }
[ "$(id -u)" -eq 0 ] || { echo "check_packages.sh: a bare system can be made and entered by root only" >&2; exit 1; }

scripts/setup.sh bare
root=$(mktemp -d)
clean() {
  ! mountpoint -q "$root/proc" || umount "$root/proc"
  rm -rf "$root"
}
trap clean EXIT
if [ ! -e "$bare" ]; then
  echo "check_packages.sh: making a bare system from $mirror"
  log=$(mktemp)
  debootstrap --variant=minbase bookworm "$root" "$mirror" >"$log" 2>&1 || { tail "$log" >&2; exit 1; }
  mkdir -p build
  tar -C "$root" -cf "$bare.new" .
  mv "$bare.new" "$bare"
else
  tar -C "$root" -xf "$bare"
fi
mount -t proc proc "$root/proc"
cp /etc/resolv.conf "$root/etc/resolv.conf"
mkdir "$root/check"
cp "$packages"/*.deb tests/newcomer/* examples/data/part.stl "$root/check"

inside() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"
}
apt() { inside apt-get -q -o Acquire::Retries=2 --no-install-recommends "$@" >"$root/log" 2>&1 || { tail -n 30 "$root/log" >&2; return 1; }; }
# What apt, dpkg and the loader keep for themselves is theirs.
files() {
  (cd "$root" && find . -xdev \( -path ./proc -o -path ./check -o -path ./var/cache -o -path ./var/lib/apt -o -path ./var/log \
    -o -path ./tmp \) -prune -o ! -path ./log ! -path './var/lib/dpkg/*-old' -print) | LC_ALL=C sort
}
# measured WHAT COMMAND...: how long the command takes, and how much of that the processors work on it.
measured() {
  local TIMEFORMAT="$1: %1R s (processors %1U + %1S s)"
  shift
  time "$@"
}
has() { compgen -G "$packages/$1_*.deb" >/dev/null; }

apt update
# What the programs are made with is not part of what is measured and removed.
apt install -y g++ make cmake pkg-config python3
files >"$root/check/before"
all=()
newcomer=()
for package in "$packages"/*.deb; do
  all+=("/check/${package##*/}")
  case ${package##*/} in libormixgeometry-*) ;; *) newcomer+=("/check/${package##*/}") ;; esac
done
apt install -y --download-only "${all[@]}"
if [ ${#newcomer[@]} -gt 1 ]; then
  first_result() {
    apt install -y "${newcomer[@]}"
    if has ormixgeometry-tools; then inside ormix inspect /check/part.stl; fi
    if has python3-ormixgeometry; then inside python3 /check/first.py; fi
  }
  measured "first results of the module and the tools, once downloaded" first_result
fi
measured "installing all packages" apt install -y "${all[@]}"

inside cp -r /check /tmp/cmake
measured "C++ with CMake" inside sh -ec 'cd /tmp/cmake; cmake . >log; cmake --build . >>log; ./first >said'
cat "$root/tmp/cmake/said"
# shellcheck disable=SC2016  # expanded inside
measured "C++ with pkg-config" inside sh -ec \
  'cd /tmp; g++ -std=c++17 /check/first.cpp $(pkg-config --cflags --libs ormixgeometry) -o first; ./first >said'
cmp "$root/tmp/said" "$root/tmp/cmake/said"
if has python3-ormixgeometry; then inside python3 /check/first.py; fi
if has ormixgeometry-tools; then inside ormix --help | sed -n 1,3p; fi

mapfile -t names < <(for file in "$packages"/*.deb; do dpkg-deb -f "$file" Package; done)
apt purge -y "${names[@]}"
apt autoremove -y --purge
if ! files | diff "$root/check/before" -; then
  echo "check_packages.sh: these files (>) stay after the packages, or (<) went with them" >&2
  exit 1
fi
echo "removed without a trace: ${names[*]}"

if $with_source; then
  apt install -y ninja-build libboost-dev liblog4cplus-dev libcbor-dev libsimdjson-dev libeigen3-dev libpng-dev xz-utils
  cp "$packages"/ormixgeometry-*.tar.xz "$root/tmp"
  measured "building the demo from the source tarball" inside sh -ec \
    "cd /tmp; tar -xf ormixgeometry-*.tar.xz; cd ormixgeometry-*/
     cmake --preset demo >log; cmake --build --preset demo --parallel ${JOBS:-$(nproc)} >>log 2>&1 || { tail log; exit 1; }
     build/demo/bin/inspect_meshes /tmp/models examples/data/part.stl >>log"
fi
