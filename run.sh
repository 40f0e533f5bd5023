#!/usr/bin/env bash
# Builds the program and runs it. Without arguments it generates from the example project and lists
# what it wrote; with arguments it starts the default edition (J1939 Kestrel) with them.
set -euo pipefail
root="$(cd "$(dirname "$0")" && pwd)"
"$root/scripts/build.sh"

if [ $# -gt 0 ]; then
  exec "$root/build/bin/j1939-kestrel" "$@"
fi

out="$root/build/example-output"
rm -rf "$out"
mkdir -p "$out"
cp "$root"/examples/j1939_example.ktxt "$out/"
project="$out/j1939_example.ktxt"
export KESTREL_NONINTERACTIVE=1
export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
"$root/build/bin/j1939-kestrel" "$project" -hidden -now -g 2>"$out/run.log" || true
echo "Generated from $(basename "$project") into $out:"
find "$out" -maxdepth 1 -type f ! -name "$(basename "$project")" ! -name 'run.log' -printf '  %f\n' | sort
