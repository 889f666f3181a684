#!/usr/bin/env bash
# End to end: the real program under Xvfb with the real X11 clipboard and real input.
# Exit code 77 means skipped (no X server could be started at all).
set -u
BINARY=$1
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"

failures=0
passes=0
check() {  # check NAME EXPECTED ACTUAL
  if [[ "$2" == "$3" ]]; then
    echo "ok: $1"; passes=$((passes + 1))
  else
    echo "FAILED: $1"; echo "  expected: $2"; echo "  actual:   $3"
    failures=$((failures + 1))
  fi
}

if ! start_xvfb >"$E2E_TMP/xvfb-reason" 2>&1; then
  reason=$(cat "$E2E_TMP/xvfb-reason")
  echo "SKIPPED: $reason"
  exit 77
fi
for tool in xdotool xclip; do
  command -v $tool >/dev/null || { echo "FAILED: $tool is not installed"; exit 1; }
done

APPDIR="$E2E_TMP/app"
start_app "$APPDIR" "$BINARY"
[[ -n "$WINDOW" ]] || { echo "FAILED: the window did not appear"; cat "$E2E_TMP/app.log"; exit 1; }

# Places in the client area: frame origin plus the control's own position.
CHK_AUTO="30 490"        # "Automatically copy when SysEx changes"
TXT_TEXTIN="60 281"      # the LCD text
TXT_PREFIX="200 497"
TXT_SEP="290 497"

# --- typing the LCD text with automatic copy on ------------------------------
click_at $CHK_AUTO
click_at $TXT_TEXTIN
xdotool type --delay 40 "Hello"; sleep 0.4
check "LCD text Hello reaches the clipboard" \
  "F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7" "$(clipboard)"

# --- a prefix of 0x and a comma separator ------------------------------------
click_at $TXT_PREFIX
xdotool type --delay 40 "0x"; sleep 0.2
click_at $TXT_SEP
xdotool key ctrl+a; xdotool type --delay 40 ","; sleep 0.4
check "laid-out message reaches the clipboard" \
  "0xF0,0x41,0x10,0x45,0x12,0x10,0x00,0x00,0x48,0x65,0x6C,0x6C,0x6F,0x7C,0xF7" "$(clipboard)"

if [[ -x "$HERE/run_e2e_more.sh" ]]; then
  source "$HERE/run_e2e_more.sh"
fi

echo "$passes passed, $failures failed"
[[ $failures -eq 0 ]]
