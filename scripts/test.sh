#!/usr/bin/env bash
# Sets up, builds and runs every test: unit tests, widget tests and the scenario files.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh RelWithDebInfo
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j"$(nproc)" --timeout 300
