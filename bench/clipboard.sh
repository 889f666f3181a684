#!/usr/bin/env bash
# A clipboard owner that never answers, under Xvfb: how long a decoding run takes to reach
# the read error box, and how long Qt's own clipboard read takes against the same owner.
set -u
BENCH=$1
OWNER=$2
HERE=$(cd "$(dirname "$0")/../tests/e2e" && pwd)
source "$HERE/xlib.sh"

if ! start_xvfb >"$E2E_TMP/xvfb-reason" 2>&1; then
  reason=$(cat "$E2E_TMP/xvfb-reason")
  echo "clipboard benchmark skipped: $reason"
  exit 0
fi
XDG_DATA_HOME="$E2E_TMP/data" QT_QPA_PLATFORM=xcb "$BENCH" clipboard "$OWNER" 2>"$E2E_TMP/bench.log"
status=$?
[[ $status -eq 0 ]] || cat "$E2E_TMP/bench.log"
exit $status
