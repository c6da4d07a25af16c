#!/usr/bin/env bash
# Builds the Debian packages into dist/: package.sh [--armhf]
#
#   libtarvo-api-check-engine      the engine library and its API database
#   tarvo-api-check                the command-line host and its manual page
#   libtarvo-api-check-engine-dev  headers, pkg-config file, CMake package
#
# Without an option for the machine's own architecture (amd64 here), with
# --armhf from the cross build for the platform's target. Each package is
# checked with lintian, which must report no error.
set -euo pipefail
cd "$(dirname "$0")/.."

arch_args=()
if [[ "${1:-}" == "--armhf" ]]; then
  scripts/setup.sh --with-arm
  build=build-package-armhf
  # TARVO_ARMHF_SYSROOT may name the sysroot of an existing cross build.
  sysroot="${TARVO_ARMHF_SYSROOT:-$PWD/$build/sysroot}"
  scripts/armhf-sysroot.sh "$sysroot"
  # GNUInstallDirs picks the multiarch directory only for native builds.
  arch_args=(-DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-armhf.cmake -DTARVO_ARMHF_SYSROOT="$sysroot"
    -DCMAKE_INSTALL_LIBDIR=lib/arm-linux-gnueabihf)
  pattern='*_armhf.deb'
elif [[ $# -eq 0 ]]; then
  scripts/setup.sh
  build=build-package
  pattern="*_$(dpkg --print-architecture).deb"
else
  echo "usage: $0 [--armhf]" >&2
  exit 64
fi

# Debian's hardening flags (fortified sources, stack protector, full RELRO).
export CFLAGS="$(dpkg-buildflags --get CFLAGS)" CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS)"
export LDFLAGS="$(dpkg-buildflags --get LDFLAGS)"
scripts/build.sh "$build" "${arch_args[@]}" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DTARVO_DB_CONFFILE=/etc/lumeric/APIAnalEngineDB.xml \
  -DTARVO_BUILD_TESTS=OFF -DTARVO_BUILD_BENCHMARKS=OFF -DTARVO_SANITIZE=OFF -DTARVO_FUZZ=OFF
mkdir -p dist
rm -f dist/$pattern
(cd "$build" && cpack -G DEB -B "$PWD/../dist" >/dev/null)
rm -rf dist/_CPack_Packages

status=0
for deb in dist/$pattern; do
  echo "== $deb"
  dpkg-deb -f "$deb" Package Version Architecture Depends
  # Tags left on purpose are listed, with the reason, in docs/design.md.
  lintian --tag-display-limit 0 "$deb" || status=1
done
exit $status
