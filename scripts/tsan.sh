#!/usr/bin/env bash
# Builds the job-queue and refresh tests with ThreadSanitizer into build-tsan/ (or
# $JELV_BUILD_DIR) and runs them. Fails when a test fails or the tool reports anything.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${JELV_BUILD_DIR:-build-tsan}
targets=(test_core_Jobs test_core_Refresh)
export CCACHE_BASEDIR="$PWD" CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DJELV_TSAN=ON >/dev/null
cmake --build "$dir" -j "${JELV_JOBS:-2}" --target "${targets[@]}"

# Keep going after a report so one run shows them all; exitcode marks a run that reported.
export TSAN_OPTIONS="halt_on_error=0 exitcode=66 second_deadlock_stack=1 die_after_fork=0 suppressions=$PWD/scripts/tsan.supp ${TSAN_OPTIONS:-}"
export QT_QPA_PLATFORM=offscreen
failed=0
for target in "${targets[@]}"; do
  log=$(mktemp)
  set +e
  "$dir/bin/$target" 2>&1 | tee "$log"
  status=${PIPESTATUS[0]}
  set -e
  reports=$(grep -c '^WARNING: ThreadSanitizer' "$log" || true)
  rm -f "$log"
  echo "== $target: exit status $status, $reports ThreadSanitizer report(s)"
  if [ "$status" -ne 0 ] || [ "$reports" -ne 0 ]; then failed=1; fi
done
exit "$failed"
