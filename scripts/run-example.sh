#!/usr/bin/env bash
# Installs what is missing, builds the engine and the command-line host, puts
# the bundled API database at the engine's fixed path and checks the bundled
# example applications.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build -DTARVO_BUILD_TESTS=OFF -DTARVO_BUILD_BENCHMARKS=OFF
cmake --install build --component Unspecified >/dev/null
for app in examples/*/; do
  app="${app%/}"
  echo "== ${app}"
  status=0
  build/bin/tarvo-api-check "$app/app" || status=$?
  echo "exit status ${status}"
done
