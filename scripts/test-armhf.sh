#!/usr/bin/env bash
# Builds the engine for its target, 32-bit ARM Linux (armhf), with Debian's
# cross compiler and runs the whole test suite, unit and end-to-end, under
# qemu-user emulation: test-armhf.sh [BUILD_DIR] (default build-armhf).
#
# The end-to-end tests use the engine's fixed paths (database, result file,
# /tmp/<n>), as the native tests do; run this after the native suite, not
# beside it (the test programs also take a lock on those paths).
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build-armhf}"
start=$SECONDS

scripts/setup.sh --with-arm
scripts/armhf-sysroot.sh "$build/sysroot"
scripts/build.sh "$build" \
  -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-armhf.cmake \
  -DTARVO_ARMHF_SYSROOT="$PWD/$build/sysroot" \
  -DTARVO_BUILD_TESTS=ON -DTARVO_BUILD_TOOLS=ON \
  -DTARVO_BUILD_BENCHMARKS=OFF -DTARVO_FUZZ=OFF -DTARVO_SANITIZE=OFF
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" --timeout 900
cases=$(grep -ho '^\[==========\] [0-9]* tests\? from .* ran' "$build/Testing/Temporary/LastTest.log" |
  awk '{ n += $2 } END { print n + 0 }')
echo "== armhf: ${cases} GoogleTest cases in the programs above; build and tests took $((SECONDS - start)) s"
