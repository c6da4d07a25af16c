#!/usr/bin/env bash
# Installs what is missing, then builds and runs the whole test suite: the
# normal build, the AddressSanitizer/UndefinedBehaviorSanitizer build and a
# short run of every fuzz target, then the 32-bit ARM build with its tests
# under emulation, and finally the Debian packages (built, installed, used
# and removed again: this part needs root).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

echo "== test code against the code it tests"
scripts/test-size.sh

echo "== build and test (normal)"
scripts/build.sh build -DTARVO_BUILD_TESTS=ON -DTARVO_BUILD_BENCHMARKS=ON
ctest --test-dir build --output-on-failure -j "$(nproc)"

echo "== build and test (AddressSanitizer + UndefinedBehaviorSanitizer)"
scripts/build.sh build-sanitize -DTARVO_SANITIZE=ON -DTARVO_BUILD_BENCHMARKS=OFF
ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build-sanitize --output-on-failure -j "$(nproc)"

echo "== fuzz targets (short runs from the seed corpora)"
scripts/build.sh build-fuzz -DTARVO_FUZZ=ON -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DTARVO_BUILD_TOOLS=OFF
ctest --test-dir build-fuzz --output-on-failure -j "$(nproc)"

echo "== build and test for the target (armhf, under qemu-user)"
scripts/test-armhf.sh build-armhf

echo "== Debian packages: build, install, use, remove"
scripts/test-packages.sh
