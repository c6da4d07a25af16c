#!/usr/bin/env bash
# Builds the Debian packages and tries them as their users would (needs root):
# installs the amd64 packages with dpkg, builds a host against them through
# pkg-config and through the CMake package and checks an example application
# with each and with the installed command-line host, removes the packages and
# checks that only the configuration file is left; then builds the armhf
# packages and inspects them.
set -euo pipefail
cd "$(dirname "$0")/.."

fail() {
  echo "test-packages: $*" >&2
  exit 1
}

scripts/package.sh
arch="$(dpkg --print-architecture)"
names=(libtarvo-api-check-engine tarvo-api-check libtarvo-api-check-engine-dev)
debs=()
for name in "${names[@]}"; do debs+=("dist/${name}_1.0.0-1_${arch}.deb"); done
dpkg -i "${debs[@]}" >/dev/null

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
scripts/package-app.py examples/remote-guide/app remote-guide/www "$work/remote-guide.zip"
finding="../js/guide.js(19) : UndocumentedAPI 'GetRecommendations' used"

echo "== consumer through pkg-config"
# shellcheck disable=SC2046
g++ -std=c++17 -rdynamic tests/packaging/consumer.cpp $(pkg-config --cflags --libs tarvo-api-check-engine) \
  -o "$work/consumer-pc"
[[ "$("$work/consumer-pc" "$work/remote-guide.zip" 1001)" == "$finding"$'\n'"code 1001" ]] ||
  fail "pkg-config consumer"

echo "== consumer through find_package"
cmake -S tests/packaging -B "$work/cmake" -G Ninja >/dev/null
cmake --build "$work/cmake" >/dev/null
[[ "$("$work/cmake/consumer" "$work/remote-guide.zip" 1001)" == "$finding"$'\n'"code 1001" ]] ||
  fail "find_package consumer"

echo "== installed tarvo-api-check"
status=0
out="$(tarvo-api-check "$work/remote-guide.zip")" || status=$?
[[ $status -eq 1 && "$out" == "$finding" ]] || fail "tarvo-api-check: exit $status, output: $out"
man -w tarvo-api-check >/dev/null || fail "no manual page"

echo "== removal"
for name in "${names[@]}"; do dpkg -L "$name"; done | sort -u >"$work/files"
dpkg -r "${names[@]}" >/dev/null
conffile=/etc/lumeric/APIAnalEngineDB.xml
while read -r path; do
  if [[ -d "$path" && ! -L "$path" ]]; then
    # Directories of our own go with the packages; shared ones stay.
    case "$path" in
      /usr/include/tarvo | */cmake/TarvoApiCheckEngine | /usr/share/doc/*tarvo-api-check*)
        [[ ! -e "$path" ]] || fail "$path left behind" ;;
    esac
    continue
  fi
  if [[ "$path" == "$conffile" ]]; then
    [[ -f "$path" ]] || fail "the configuration file $path went with the package"
  elif [[ -e "$path" || -L "$path" ]]; then
    fail "$path left behind"
  fi
done <"$work/files"
dpkg -P libtarvo-api-check-engine >/dev/null
[[ ! -e "$conffile" ]] || fail "$conffile left after purging"

echo "== armhf packages"
TARVO_ARMHF_SYSROOT="${TARVO_ARMHF_SYSROOT:-$PWD/build-armhf/sysroot}" scripts/package.sh --armhf
for name in "${names[@]}"; do
  deb="dist/${name}_1.0.0-1_armhf.deb"
  [[ "$(dpkg-deb -f "$deb" Architecture)" == armhf ]] || fail "$deb: not armhf"
  dpkg-deb -c "$deb" >"$work/contents"
  case "$name" in
    libtarvo-api-check-engine) expected=./usr/lib/arm-linux-gnueabihf/libtarvo-api-check-engine.so ;;
    tarvo-api-check) expected=./usr/bin/tarvo-api-check ;;
    *) expected=./usr/lib/arm-linux-gnueabihf/pkgconfig/tarvo-api-check-engine.pc ;;
  esac
  grep -q " $expected\$" "$work/contents" || fail "$deb lacks $expected"
done
dpkg-deb -x dist/libtarvo-api-check-engine_1.0.0-1_armhf.deb "$work/armhf"
readelf -h "$work/armhf/usr/lib/arm-linux-gnueabihf/libtarvo-api-check-engine.so" | grep -q "Machine: *ARM" ||
  fail "the armhf library is not an ARM object"
echo "== packages: all checks passed"
