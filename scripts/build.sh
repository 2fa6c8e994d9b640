#!/usr/bin/env bash
# Configures and builds into build/ (or $JELV_BUILD_DIR). Pass --sanitize for ASan+UBSan
# (into build-asan/ unless JELV_BUILD_DIR is set).
set -euo pipefail
cd "$(dirname "$0")/.."
extra=()
dir=${JELV_BUILD_DIR:-build}
if [ "${1:-}" = "--sanitize" ]; then
  extra+=(-DJELV_SANITIZE=ON)
  dir=${JELV_BUILD_DIR:-build-asan}
fi
export CCACHE_BASEDIR="$PWD" CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${extra[@]}" >/dev/null
cmake --build "$dir" -j "${JELV_JOBS:-$(nproc)}"
