#!/usr/bin/env bash
# Installs what is missing, builds the engine and the command-line host, puts
# the bundled API database at the engine's fixed path, packs each bundled
# example application into a zip package (as applications are delivered) and
# checks it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build -DTARVO_BUILD_TESTS=OFF -DTARVO_BUILD_BENCHMARKS=OFF
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
"${sudo_cmd[@]}" cmake --install build --component database >/dev/null
mkdir -p build/examples
for app in examples/*/; do
  name="$(basename "$app")"
  package="$PWD/build/examples/${name}.zip"
  rm -f "$package"
  scripts/package-app.py "${app}app" "${name}/www" "$package"
  echo "== ${name}"
  status=0
  build/bin/tarvo-api-check "$package" || status=$?
  echo "exit status ${status}"
done
