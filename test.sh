#!/usr/bin/env bash
# Builds the program and its tests and runs the whole suite.
set -euo pipefail
root="$(cd "$(dirname "$0")" && pwd)"
"$root/scripts/build.sh"
cd "$root/build"
export QT_QPA_PLATFORM=offscreen
export KESTREL_NONINTERACTIVE=1
home="$(mktemp -d)"
trap 'rm -rf "$home"' EXIT
export XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache"
ctest --output-on-failure -j "$(nproc)" "$@"
