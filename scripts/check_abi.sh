#!/usr/bin/env bash
# Fails when programs that were linked before can no longer run with these libraries: an exported symbol is gone, a table
# of virtual functions or the size of a class in the public headers has changed since it was described in abi/.
# Usage: scripts/check_abi.sh [LIBRARY_FOLDER]             (default: build/ci/lib, as scripts/test.sh builds it)
#        scripts/check_abi.sh --update [LIBRARY_FOLDER]    (describes them anew: this announces the change)
# It takes some seconds. Only Release builds by Debian's g++ compare: what the compiler inlines is not exported.
set -euo pipefail
update=false
[ "${1:-}" != --update ] || { update=true; shift; }
libraries=$(realpath "${1:-$(dirname "$0")/../build/ci/lib}")
cd "$(dirname "$0")/.."

described=$(mktemp -d)
trap 'rm -rf "$described"' EXIT
python3 scripts/abi_description.py describe "$libraries" . "$described/new"
status=0
if [ -e abi/tables ]; then
  mkdir "$described/old"
  cp abi/tables abi/sizes "$described/old"
  xz -dc abi/symbols.xz >"$described/old/symbols"
  python3 scripts/abi_description.py compare "$described/old" "$described/new" || status=$?
fi
if $update; then
  mkdir -p abi
  cp "$described/new/tables" "$described/new/sizes" abi
  xz -9c "$described/new/symbols" >abi/symbols.xz
  echo "check_abi.sh: described anew in abi/"
  exit 0
fi
if [ "$status" -ne 0 ]; then
  cat >&2 <<'END'
check_abi.sh: the binary interface has changed. If this is intended:
  - when a release has what was before, raise ORMIX_ABI_VERSION in CMakeLists.txt by one (once a release is enough);
  - run scripts/check_abi.sh --update, commit abi/ with the change, and say in CHANGELOG.md what callers must do.
A template or an inline function that programs compile themselves from a header may vanish from the exported symbols,
when the compiler inlines it everywhere: this breaks nobody, and needs the second step only.
END
fi
exit "$status"
