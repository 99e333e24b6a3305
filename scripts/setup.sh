#!/usr/bin/env bash
# Installs what is missing of the Debian packages the project needs; does nothing when all are there.
# Usage: scripts/setup.sh [GROUP...]      (those in the table below; default: build test)
# Without root and sudo it says what to install and fails.
set -euo pipefail

declare -A groups=(
  [build]="g++ cmake ninja-build pkg-config libboost-dev liblog4cplus-dev libcbor-dev libsimdjson-dev libeigen3-dev libpng-dev"
  [test]="libgtest-dev python3 python3-cbor2 python3-distributed python3-numpy python3-pil python3-pytest"
  [python]="python3-dev python3-mypy python3-numpy pybind11-dev"
  [demo]="gnuplot-doc assimp-testmodels libjs-three"
  # With a browser of 350 MB, for the tests of pages, which are left out without it.
  [page]="chromium libjs-three python3"
  [wheel]="python3-build python3-setuptools python3-wheel"
  [ci]="clang-format git python3 xz-utils"
  [docs]="doxygen python3-sphinx python3-myst-parser furo python3-sphinx-inline-tabs python3-sphinx-copybutton"
  [package]="dpkg-dev file lintian python3 xz-utils"
  [bare]="debootstrap"
)

wanted=()
[ $# -gt 0 ] || set -- build test
for name in "$@"; do
  [ -n "${groups[$name]:-}" ] || { echo "setup.sh: unknown group \"$name\" (${!groups[*]})" >&2; exit 2; }
  read -ra packages <<<"${groups[$name]}"
  wanted+=("${packages[@]}")
done

missing=()
for package in "${wanted[@]}"; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

install="apt-get install -y --no-install-recommends ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
    as_root=(sudo)
  else
    printf 'setup.sh: these packages are missing, and this is neither root nor able to sudo. Run as root:\n  %s\n' \
      "$install" >&2
    exit 1
  fi
fi

echo "setup.sh: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o Acquire::Retries=2 "$@" >"$log" 2>&1; }
# The lists of a fresh image are empty; an update that fails matters only when the installation fails, too.
apt update || echo "setup.sh: the package lists could not be updated" >&2
if ! apt install -y --no-install-recommends "${missing[@]}"; then
  tail -n 20 "$log" >&2
  printf 'setup.sh: could not install (no network, or no Debian 12 sources?): %s\n' "${missing[*]}" >&2
  exit 1
fi
