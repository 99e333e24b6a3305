#!/usr/bin/env bash
# Usage: run_examples.sh PROGRAM DATA_FOLDER
# Runs every example of the help texts as it stands, in a copy of examples/data. Fails when one fails, says anything on
# the standard error, or prints and writes nothing.
set -uo pipefail
program=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/data" "$work/tmp"
ln -s "$program" "$work/bin/ormix"
cp "$2"/* "$work/data"
export PATH="$work/bin:$PATH" TMPDIR="$work/tmp"
cd "$work/data" || exit 1
failures=0 number=0
while IFS= read -r line; do
  number=$((number + 1))
  touch "$work/before"
  bash -o pipefail -c "$line; status=\$?; complete -p ormix 2>/dev/null; exit \$status" >"$work/out" 2>"$work/err" </dev/null
  status=$?
  written=$(find . "$work/tmp" -type f -newer "$work/before" -size +0)
  if [ "$status" -ne 0 ] || [ -s "$work/err" ] || { [ ! -s "$work/out" ] && [ -z "$written" ]; }; then
    echo "FAILED ($status): $line"
    cat "$work/err"
    failures=$((failures + 1))
  fi
done < <(ormix help --examples)
echo "$number examples, $failures failed"
[ "$number" -ge 20 ] && [ "$failures" -eq 0 ]
