#!/usr/bin/env bash
# Usage: build_with_pkg_config.sh LIBDIR SOURCES FOLDER COMPILER [FLAGS...]
# Builds each program of the folder SOURCES against the installed package as pkg-config describes it, and runs it.
set -euo pipefail
libdir=$1 sources=$2 folder=$3
shift 3
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
flags=$(PKG_CONFIG_PATH=$libdir/pkgconfig pkg-config --cflags --libs ormixgeometry)
for source in "$sources"/*.cpp; do
  # shellcheck disable=SC2086  # the flags are words
  "$@" "$source" -o consumer $flags "-Wl,-rpath,$libdir"
  ./consumer
done
