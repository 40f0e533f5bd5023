#!/usr/bin/env bash
# Installs the Debian packages the build and the test suite need. Quiet and quick when all are there.
set -euo pipefail

packages=(
  cmake ninja-build ccache g++ pkg-config
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6svg6
  libgl-dev libquazip1-qt6-dev zlib1g-dev
  sqlite3 python3 libxml2-utils python3-canmatrix
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
