#!/usr/bin/env bash
# Runs a test program against a private Xvfb; fails, saying why, when none can be started.
#   run_under_xvfb.sh PROGRAM [ARGS...]
set -u
HERE=$(cd "$(dirname "$0")/../e2e" && pwd)
source "$HERE/xlib.sh"

if ! start_xvfb >"$E2E_TMP/xvfb-reason" 2>&1; then
  echo "FAILED: $(cat "$E2E_TMP/xvfb-reason")"
  exit 1
fi
command -v xclip >/dev/null || { echo "FAILED: xclip is not installed"; exit 1; }
"$@"
status=$?
exit $status
