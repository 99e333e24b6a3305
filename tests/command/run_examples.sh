#!/usr/bin/env bash
# Usage: run_examples.sh PROGRAM DATA_FOLDER PAGE...
# Runs, in a copy of examples/data, every example of the help texts and every session ("```console") of pages. An example
# fails when it does, says anything on the standard error, or prints and writes nothing; a line of a session that begins
# with "$ ", when it prints anything else than the lines behind it.
set -uo pipefail
program=$(realpath "$1") data=$(realpath "$2")
shift 2
pages=()
for page in "$@"; do pages+=("$(realpath "$page")"); done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/data" "$work/tmp"
ln -s "$program" "$work/bin/ormix"
cp "$data"/* "$work/data"
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
[ "$number" -ge 20 ] || { echo "only $number examples"; exit 1; }

for page in "${pages[@]}"; do
  before=$number
  awk '/^```/ { inside = /^```console/; next } inside' "$page" >"$work/session"
  # What is printed again, line by line, is the session itself.
  while IFS= read -r line; do
    [ "${line#\$ }" != "$line" ] || continue
    number=$((number + 1))
    echo "$line"
    bash -c "${line#\$ }" 2>&1 </dev/null
  done <"$work/session" >"$work/again"
  number=$((before + $(grep -c '^\$ ' "$work/session")))
  [ "$number" -gt "$before" ] || { echo "no session in $page"; failures=$((failures + 1)); }
  diff "$work/session" "$work/again" || { echo "FAILED: $page is not what the program prints"; failures=$((failures + 1)); }
done
echo "$number examples, $failures failures"
[ "$failures" -eq 0 ]
