#!/usr/bin/env bash
# Installs what is missing, builds, and starts Jelv (optionally on a repository path).
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
"$here/scripts/install-deps.sh"
"$here/scripts/build.sh"
exec "$here/build/bin/jelv-app" "$@"
