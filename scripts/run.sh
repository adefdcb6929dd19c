#!/usr/bin/env bash
# Sets up, builds and starts the main application on its delivered database (build/Data/Vantrel.db).
# Pass --opd to start the front-desk application instead.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh RelWithDebInfo
app=build/vantrel
[ "${1:-}" = "--opd" ] && app=build/vantrel-opd
exec "$app"
