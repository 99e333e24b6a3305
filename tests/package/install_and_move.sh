#!/usr/bin/env bash
# Usage: install_and_move.sh CMAKE BUILD PREFIX
# Installs the build tree beside PREFIX and moves it there: nothing in the package may remember where it was.
set -euo pipefail
cmake=$1 build=$2 prefix=$3
rm -rf "$prefix" "$prefix.first"
"$cmake" --install "$build" --prefix "$prefix.first" >"$prefix.log" || { cat "$prefix.log"; exit 1; }
mv "$prefix.first" "$prefix"
if grep -rlF "$prefix.first" "$prefix" || grep -rlIF "$build" "$prefix"; then
  echo "These installed files name the place they were built or installed at." >&2
  exit 1
fi
