#!/usr/bin/env bash
# Installs, with apt-get, whatever the build and the tests need and the machine
# lacks. Safe to run again: it installs nothing when everything is present.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  zlib1g-dev libminizip-dev libtinyxml-dev
  libgtest-dev libbenchmark-dev
  libcli11-dev nlohmann-json3-dev python3-jsonschema
  clang libclang-rt-dev
  python3
  dpkg-dev lintian
  libtree-sitter-dev
)
# --with-arm: also the cross compiler and emulator of scripts/test-armhf.sh.
if [[ "${1:-}" == "--with-arm" ]]; then
  packages+=(g++-arm-linux-gnueabihf qemu-user)
fi

missing=()
# npm fetches the SARIF schema for the tests; a node.js of another origin may
# bring its own npm.
if ! command -v npm >/dev/null; then missing+=(npm); fi
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed"; then
    missing+=("$package")
  fi
done
if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
# A list that fails to download while a mirror syncs is reported but need not
# stop the install: apt-get install says whether the packages were found.
"${sudo_cmd[@]}" apt-get update -qq || echo "apt-get update reported errors; installing anyway" >&2
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
