#!/usr/bin/env bash
# Installs what is missing, builds, and runs the whole suite inside a private D-Bus
# session with an X server and an unlocked keyring. Pass --sanitize for ASan+UBSan.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
"$here/scripts/install-deps.sh"
"$here/scripts/build.sh" "$@"
dir=build
[ "${1:-}" = "--sanitize" ] && dir=build-asan
export JELV_TEST_BUILD_DIR="$here/${JELV_BUILD_DIR:-$dir}"
exec dbus-run-session -- "$here/scripts/test-session.sh"
