#!/usr/bin/env bash
# Finds and measures the regions of photographs, finds out which cells of a tissue touch, measures the world's coastlines,
# fits shapes to published points, and inspects, repairs and simplifies the models of Debian's assimp-testmodels. With a
# PNG image, a file of a mesh (STL, OBJ, PLY, OFF) or a file of rings as argument, measures that alone. What came out of it
# is joined to one page, build/report.html or OUTPUT_FOLDER/report.html, whose path is printed last.
# Usage: scripts/demo.sh [FILE [OUTPUT_FOLDER]] [--triangles NUMBER]
#        (how many triangles simplified meshes keep; a tenth without it)
#        (default output: build/regions, build/contacts, build/contours, build/fits and build/models)
# Exit status: 0 when all went well, else that of the first program that failed.
set -euo pipefail
words=() simplification=()
while [ $# -gt 0 ]; do
  if [ "$1" = --triangles ] && [ $# -gt 1 ]; then simplification=(--triangles "$2") && shift; else words+=("$1"); fi
  shift
done
set -- "${words[@]}"
here=$PWD
cd "$(dirname "$0")/.."
build=$PWD/build/demo
jobs=${JOBS:-$(nproc)}

scripts/setup.sh build
cmake --preset demo >/dev/null
cmake --build --preset demo --parallel "$jobs"

# Unpacks a package into the build folder, without installing it, and prints where PATH of it can be read.
find_unpacked() {
  local package=$1 path=$2
  [ -r "/$path" ] && { echo "/$path"; return; }
  [ -r "$build/$package/$path" ] && { echo "$build/$package/$path"; return; }
  mkdir -p "$build/$package"
  # The lists of a fresh image are empty.
  (cd "$build/$package" &&
    { apt-get -q download "$package" || { apt-get -q update && apt-get -q download "$package"; }; } &&
    dpkg -x "$package"_*.deb .) >&2 2>&1 || true
  [ -r "$build/$package/$path" ] && echo "$build/$package/$path"  # else the function fails
}

# The same of a package that is installed where it can be. Images that drop documentation and the like install it without
# its files; then it is unpacked.
find_in_package() {
  [ -r "/$2" ] || scripts/setup.sh demo >&2 || true
  find_unpacked "$@"
}

from_caller() { case $1 in /*) echo "$1" ;; *) echo "$here/$1" ;; esac; }

status=0
run() { "$@" || { local code=$?; [ "$status" -ne 0 ] || status=$code; }; }

# Joins folders to a page, in which meshes turn where there is three.js.
report() {
  local three
  if three=$(find_unpacked libjs-three usr/share/javascript/three/three.min.js); then
    export ORMIX_THREE_SCRIPT=$three
  else
    echo "demo.sh: three.js cannot be had (no network?); the page has pictures of the meshes" >&2
  fi
  run "$build/bin/make_report" "$@"
  exit "$status"
}

if [ $# -gt 0 ]; then
  file=$(from_caller "$1")
  case $1 in
    *.[sS][tT][lL] | *.[oO][bB][jJ] | *.[pP][lL][yY] | *.[oO][fF][fF]) kind=models ;;
    *.[pP][nN][gG]) kind=regions ;;
    *) kind=contours ;;
  esac
  output=build/$kind
  [ $# -lt 2 ] || output=$(from_caller "$2")
  case $kind in
    models) run "$build/bin/inspect_meshes" "$output" "$file" "${simplification[@]}" ;;
    regions) run "$build/bin/measure_regions" "$output" "$file" ;;
    contours) run "$build/bin/measure_contours" "$file" "$output" ;;
  esac
  [ -d "$output" ] || exit "$status"
  echo
  report "$output/report.html" "$output"
fi

if coins=$(find_unpacked python3-skimage usr/lib/python3/dist-packages/skimage/data/coins.png); then
  photographs=("$coins" "${coins%coins.png}cell.png" "${coins%coins.png}horse.png")
else
  echo "demo.sh: the photographs cannot be had (no network?); measuring the image that comes with the project" >&2
  photographs=(examples/data/blobs.png)
fi
run "$build/bin/measure_regions" build/regions "${photographs[@]}"
echo
run "$build/bin/find_contacts" build/contacts
echo
if ! coastlines=$(find_in_package gnuplot-doc usr/share/doc/gnuplot/examples/world.dat); then
  echo "demo.sh: the coastlines cannot be had (no network?); measuring the contours that come with the project" >&2
  coastlines=examples/data/contours.txt
fi
run "$build/bin/measure_contours" "$coastlines" build/contours
echo
run "$build/bin/fit_shapes" examples/data/fits.txt build/fits
echo
if models=$(find_in_package assimp-testmodels usr/share/assimp/models/STL); then
  models=(examples/data/part.stl "$models"/*.[sS][tT][lL])
else
  echo "demo.sh: the models cannot be had (no network?); inspecting the one that comes with the project" >&2
  models=(examples/data/part.stl)
fi
run "$build/bin/inspect_meshes" build/models "${models[@]}" "${simplification[@]}"
echo
report build/report.html build/regions build/contacts build/contours build/fits build/models
