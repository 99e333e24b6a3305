#!/usr/bin/env bash
# Builds everything with warnings as errors and runs every test.
# Usage: scripts/test.sh [preset]      (default: ci; JOBS in the environment limits the parallel jobs)
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-ci}
jobs=${JOBS:-$(nproc)}

scripts/setup.sh build test python
cmake --preset "$preset" -DORMIX_WARNINGS_AS_ERRORS=ON
cmake --build --preset "$preset" --parallel "$jobs"
ctest --preset "$preset" --parallel "$jobs"
