#!/usr/bin/env bash
# Usage: check_symbols.sh NM LIBRARY
# Fails when the library exports a name outside namespace ormix (functions and variables, or the run-time type
# information, tables and thunks of its classes), or a unique symbol, which would keep the library loaded for ever.
set -euo pipefail
nm=$1 library=$2
symbols=$("$nm" -D --defined-only --format=posix "$library" | awk '{print $2, $1}')
[ -n "$symbols" ] || { echo "$library exports nothing" >&2; exit 1; }
ours='^[A-Za-z] _Z(T[VTIS]|GV|Th?n?[0-9]*_?|Tv[^N]*)?NK?5ormix'
status=0
if foreign=$(grep -vE "$ours" <<<"$symbols"); then
  printf 'not our names:\n%s\n' "$(c++filt <<<"$foreign")" >&2
  status=1
fi
if unique=$(grep '^u ' <<<"$symbols"); then
  printf 'unique symbols:\n%s\n' "$(c++filt <<<"$unique")" >&2
  status=1
fi
echo "$(wc -l <<<"$symbols") exported symbols"
exit $status
