#!/usr/bin/env bash
# Measures real contours: the world's coastlines, or the file given as argument. Then fits shapes to published points,
# and inspects the models of Debian's assimp-testmodels. With an STL file as argument, inspects that alone.
# Usage: scripts/demo.sh [FILE [OUTPUT_FOLDER]]
#        (default output: build/contours; the fits go to build/fits, what is made of models to build/models)
# Exit status: 0 when all went well, else that of the first program that failed.
set -euo pipefail
here=$PWD
cd "$(dirname "$0")/.."
build=$PWD/build/demo
jobs=${JOBS:-$(nproc)}

scripts/setup.sh build
cmake --preset demo >/dev/null
cmake --build --preset demo --parallel "$jobs"

# Images that drop documentation and the like install a package without its files; then they are unpacked into the
# build folder. Prints the first of the places where PATH of PACKAGE can be read.
find_in_package() {
  local package=$1 path=$2
  [ -r "/$path" ] && { echo "/$path"; return; }
  [ -r "$build/$package/$path" ] && { echo "$build/$package/$path"; return; }
  scripts/setup.sh demo >&2 || true
  [ -r "/$path" ] && { echo "/$path"; return; }
  mkdir -p "$build/$package"
  (cd "$build/$package" && apt-get -q download "$package" && dpkg -x "$package"_*.deb .) >&2 2>&1 || true
  [ -r "$build/$package/$path" ] && echo "$build/$package/$path"  # else the function fails
}

from_caller() { case $1 in /*) echo "$1" ;; *) echo "$here/$1" ;; esac; }

case ${1:-} in
  *.[sS][tT][lL])
    output=build/models
    [ $# -lt 2 ] || output=$(from_caller "$2")
    exec "$build/bin/inspect_meshes" "$output" "$(from_caller "$1")"
    ;;
esac

if [ $# -gt 0 ]; then
  input=$(from_caller "$1")
elif ! input=$(find_in_package gnuplot-doc usr/share/doc/gnuplot/examples/world.dat); then
  echo "demo.sh: the coastlines cannot be had (no network?); measuring the contours that come with the project" >&2
  input=examples/data/contours.txt
fi
output=build/contours
[ $# -lt 2 ] || output=$(from_caller "$2")
status=0
"$build/bin/measure_contours" "$input" "$output" || status=$?
echo
"$build/bin/fit_shapes" examples/data/fits.txt build/fits || [ "$status" -ne 0 ] || status=1
echo
if models=$(find_in_package assimp-testmodels usr/share/assimp/models/STL); then
  models=(examples/data/part.stl "$models"/*.[sS][tT][lL])
else
  echo "demo.sh: the models cannot be had (no network?); inspecting the one that comes with the project" >&2
  models=(examples/data/part.stl)
fi
"$build/bin/inspect_meshes" build/models "${models[@]}" || [ "$status" -ne 0 ] || status=1
exit "$status"
