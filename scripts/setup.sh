#!/usr/bin/env bash
# Installs what the build needs (Debian packages), then configures and builds into build/.
# Usage: scripts/setup.sh [Debug|RelWithDebInfo]
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(cmake ninja-build g++ pkg-config
          qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite qt6-tools-dev qt6-tools-dev-tools
          qt6-multimedia-dev libgl-dev libegl-dev libxkbcommon-dev
          libgtest-dev sqlite3 fonts-dejavu-core fonts-noto-core)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

build_type="${1:-RelWithDebInfo}"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE="$build_type"
cmake --build build -j"$(nproc)"
