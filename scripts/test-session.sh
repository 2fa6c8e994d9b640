#!/usr/bin/env bash
# Runs inside dbus-run-session: starts Xvfb and the keyring, then ctest (arguments go to ctest, e.g. -R app.Sheets).
set -uo pipefail
display=:$((90 + RANDOM % 100))
Xvfb "$display" -screen 0 1600x1000x24 -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
export DISPLAY=$display
for _ in $(seq 50); do [ -e "/tmp/.X11-unix/X${display#:}" ] && break; sleep 0.1; done
# Everything a run leaves lives in one folder removed at its end: the temporary folders of
# the tests (also those of a death test's child or of a program that crashed) and a keyring
# of this run only (items a test stored in an earlier run, keyed by a random port, would
# otherwise answer a later test's prompt).
run_dir=$(mktemp -d /tmp/jelv-run.XXXXXX)
export TMPDIR=$run_dir XDG_DATA_HOME=$run_dir/keyring-data
trap 'kill $xvfb_pid 2>/dev/null; rm -rf "$run_dir"' EXIT
# A non-empty password keeps the keyring from waiting for a graphical prompt.
eval "$(echo -n test-pass | gnome-keyring-daemon --unlock --components=secrets 2>/dev/null)" || true
export GNOME_KEYRING_CONTROL SSH_AUTH_SOCK 2>/dev/null || true
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
cd "$JELV_TEST_BUILD_DIR"
ctest --output-on-failure -j "${JELV_TEST_JOBS:-2}" "$@"
