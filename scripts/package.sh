#!/usr/bin/env bash
# Makes the Debian packages and the source tarball in build/packages, and checks them with lintian.
# Usage: scripts/package.sh [CMake arguments...]     (such as -DORMIX_BUILD_PYTHON=ON; JOBS limits the parallel jobs)
# DEBFULLNAME and DEBEMAIL say who makes them, as Debian's own tools have it; else the author of the last commit does.
# Exit status: that of what failed; lintian's errors fail, its warnings are printed.
set -euo pipefail
cd "$(dirname "$0")/.."
packages=$PWD/build/packages
jobs=${JOBS:-$(nproc)}

scripts/setup.sh build python package
maintainer="${DEBFULLNAME:-} <${DEBEMAIL:-}>"
if [ "$maintainer" = " <>" ]; then
  maintainer=$(git log -1 --format='%an <%ae>' 2>/dev/null) ||
    { echo 'package.sh: set DEBFULLNAME and DEBEMAIL: these sources are in no repository' >&2; exit 1; }
fi
# Times in the packages are those of the sources, so that the same sources give the same packages.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CMakeLists.txt)}
export SOURCE_DATE_EPOCH

rm -rf "$packages"
mkdir -p "$packages"
cmake --preset package "-DORMIX_PACKAGE_MAINTAINER=$maintainer" "$@"
cmake --build --preset package --parallel "$jobs"
(umask 022 && cpack --config build/package/CPackConfig.cmake)
rm -rf "$packages/_CPack_Packages"

version=$(sed -n 's/^project(ORMIXGeometry VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
if git rev-parse --git-dir >/dev/null 2>&1; then
  tarball=$packages/ormixgeometry-$version.tar.xz
  git archive --prefix="ormixgeometry-$version/" HEAD | xz -9 >"$tarball"
  [ -z "$(git status --porcelain --untracked-files=no)" ] ||
    echo "package.sh: the tarball has the last commit, the packages also what is not committed" >&2
else
  echo "package.sh: no tarball, as these sources are in no repository" >&2
fi

scripts/check_abi.sh build/package/lib
lintian --fail-on error --info --suppress-tags initial-upload-closes-no-bugs "$packages"/*.deb
ls -l "$packages"
