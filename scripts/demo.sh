#!/usr/bin/env bash
# Measures real contours: the world's coastlines, or the file given as argument. Then fits shapes to published points.
# Usage: scripts/demo.sh [FILE [OUTPUT_FOLDER]]      (default output: build/contours; the fits go to build/fits)
# Exit status: 0 when both went well, else that of the measuring, else 1.
set -euo pipefail
here=$PWD
cd "$(dirname "$0")/.."
build=$PWD/build/demo
jobs=${JOBS:-$(nproc)}

scripts/setup.sh build
cmake --preset demo >/dev/null
cmake --build --preset demo --parallel "$jobs"

# The coastlines are part of gnuplot's documentation. Images that drop documentation install the package without its
# files; then they are unpacked into the build folder.
world=usr/share/doc/gnuplot/examples/world.dat
find_world() {
  [ -r "/$world" ] && { echo "/$world"; return; }
  [ -r "$build/gnuplot-doc/$world" ] && { echo "$build/gnuplot-doc/$world"; return; }
  scripts/setup.sh demo >&2 || true
  [ -r "/$world" ] && { echo "/$world"; return; }
  mkdir -p "$build/gnuplot-doc"
  (cd "$build/gnuplot-doc" && apt-get -q download gnuplot-doc && dpkg -x gnuplot-doc_*.deb .) >&2 2>&1 || true
  [ -r "$build/gnuplot-doc/$world" ] && echo "$build/gnuplot-doc/$world"  # else the function fails
}

from_caller() { case $1 in /*) echo "$1" ;; *) echo "$here/$1" ;; esac; }
if [ $# -gt 0 ]; then
  input=$(from_caller "$1")
elif ! input=$(find_world); then
  echo "demo.sh: the coastlines cannot be had (no network?); measuring the contours that come with the project" >&2
  input=examples/data/contours.txt
fi
output=build/contours
[ $# -lt 2 ] || output=$(from_caller "$2")
status=0
"$build/bin/measure_contours" "$input" "$output" || status=$?
echo
"$build/bin/fit_shapes" examples/data/fits.txt build/fits || [ "$status" -ne 0 ] || status=1
exit "$status"
