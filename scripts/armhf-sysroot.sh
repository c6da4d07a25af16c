#!/usr/bin/env bash
# Prepares an armhf sysroot for cmake/toolchain-armhf.cmake: armhf-sysroot.sh DIR
#
# - Downloads Debian's armhf packages of zlib, minizip and TinyXML (runtime and
#   development files; the header-only CLI11 and nlohmann-json for the tools)
#   with `apt-get download` and unpacks them with `dpkg -x`.
#   apt works on a package list of its own under DIR/.apt, so the machine's apt
#   configuration is left alone and nothing is installed.
# - Points the absolute symbolic links of the packages into the sysroot.
# - Links the cross toolchain's runtime (/usr/arm-linux-gnueabihf/lib: dynamic
#   loader, libc, libstdc++, libgcc_s) into DIR/lib, so that
#   `qemu-arm -L DIR` runs the test programs.
# - Builds GoogleTest from the sources of libgtest-dev (/usr/src/googletest)
#   with the cross compiler and installs it into DIR/usr.
#
# Needs g++-arm-linux-gnueabihf, qemu-user and libgtest-dev
# (scripts/setup.sh --with-arm). Quick when DIR is already complete.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"

if (($# != 1)); then
  echo "usage: $0 DIR" >&2
  exit 64
fi
mkdir -p "$1"
sysroot="$(cd "$1" && pwd)"

triple=arm-linux-gnueabihf
toolchain_runtime=/usr/$triple/lib
gtest_source=/usr/src/googletest
packages=(zlib1g zlib1g-dev libminizip1 libminizip-dev libtinyxml2.6.2v5 libtinyxml-dev libcli11-dev nlohmann-json3-dev)

# What the finished sysroot was made from; a change of any of it makes it anew.
stamp_text="$(
  printf '%s\n' "${packages[@]}"
  sha256sum "$0" "$root/cmake/toolchain-armhf.cmake" | cut -d" " -f1
  dpkg-query -W -f='${Version}\n' libgtest-dev "g++-$triple" 2>/dev/null || true
)"
stamp="$sysroot/.tarvo-sysroot"
if [[ -f "$stamp" && "$(cat "$stamp")" == "$stamp_text" ]]; then
  exit 0
fi

echo "== preparing the armhf sysroot in $sysroot"
find "$sysroot" -mindepth 1 -maxdepth 1 ! -name .apt -exec rm -rf {} +

# apt on a private package list of armhf only.
apt_dir="$sysroot/.apt"
mkdir -p "$apt_dir/lists/partial" "$apt_dir/cache/archives/partial" "$apt_dir/debs"
apt_options=(
  -q
  -o APT::Architecture=armhf
  -o APT::Architectures::=armhf
  -o Dir::State::Lists="$apt_dir/lists"
  -o Dir::Cache="$apt_dir/cache"
  -o Dir::State::status=/dev/null
  -o Acquire::Languages=none
  -o APT::Sandbox::User=root
  -o Debug::NoLocking=1
)
download() {
  (cd "$apt_dir/debs" && rm -f ./*.deb && apt-get "${apt_options[@]}" download "${packages[@]}")
}
if ! download >/dev/null 2>&1; then
  # A list that fails while the mirror syncs (often the security suite) is
  # ignored by apt; the download below says whether what it needs was there.
  apt-get "${apt_options[@]}" update >"$apt_dir/update.log" 2>&1 || true
  if ! download >"$apt_dir/download.log" 2>&1; then
    cat "$apt_dir/update.log" "$apt_dir/download.log" >&2
    echo "cannot download the armhf packages: ${packages[*]}" >&2
    exit 1
  fi
fi
for deb in "$apt_dir"/debs/*.deb; do
  dpkg -x "$deb" "$sysroot"
done
# Documentation and examples are not needed for building.
rm -rf "$sysroot/usr/share/doc" "$sysroot/usr/share/man"

# Absolute links (libz.so -> /lib/...) would leave the sysroot.
while IFS= read -r -d '' link; do
  target="$(readlink "$link")"
  ln -sfn "$(realpath -m --relative-to="$(dirname "$link")" "$sysroot$target")" "$link"
done < <(find "$sysroot" -path "$apt_dir" -prune -o -type l -lname '/*' -print0)

# The cross toolchain's shared runtime, where the dynamic loader looks for it.
mkdir -p "$sysroot/lib"
for library in "$toolchain_runtime"/ld-linux-armhf.so.* "$toolchain_runtime"/*.so.[0-9]*; do
  ln -sfn "$library" "$sysroot/lib/"
done

# GoogleTest, cross-compiled from the packaged sources.
gtest_build="$sysroot/.gtest-build"
cmake -S "$gtest_source" -B "$gtest_build" -G Ninja \
  -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-armhf.cmake" \
  -DTARVO_ARMHF_SYSROOT="$sysroot" \
  -DCMAKE_BUILD_TYPE=Release \
  -DBUILD_GMOCK=OFF \
  -DCMAKE_INSTALL_PREFIX="$sysroot/usr" \
  -DCMAKE_INSTALL_LIBDIR="lib/$triple" >/dev/null
cmake --build "$gtest_build" -j "$(nproc)" >/dev/null
cmake --install "$gtest_build" >/dev/null
rm -rf "$gtest_build"

printf '%s\n' "$stamp_text" >"$stamp"
echo "== armhf sysroot ready"
