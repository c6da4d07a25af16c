#!/usr/bin/env bash
# Installs what is missing, builds the engine and the command-line host, puts
# the bundled API database at the engine's fixed path and checks each bundled
# example application.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build -DTARVO_BUILD_TESTS=OFF -DTARVO_BUILD_BENCHMARKS=OFF
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
"${sudo_cmd[@]}" cmake --install build --component database >/dev/null
for app in examples/*/; do
  app="${app%/}"
  echo "== ${app}"
  status=0
  build/bin/tarvo-api-check "$app/app" || status=$?
  echo "exit status ${status}"
done
