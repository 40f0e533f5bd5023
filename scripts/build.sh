#!/usr/bin/env bash
# Installs what is missing, configures once and builds incrementally into build/.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/install-deps.sh"
export CCACHE_SLOPPINESS="pch_defines,time_macros,include_file_mtime,include_file_ctime"
if [ ! -f "$root/build/build.ninja" ]; then
  cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build "$root/build" -- --quiet
