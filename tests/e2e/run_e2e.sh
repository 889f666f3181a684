#!/usr/bin/env bash
# End to end: the real program under Xvfb with the real X11 clipboard and real input.
# Fails, saying why, when no X server can be started: nothing here passes by skipping.
set -u
BINARY=$1
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"

begin_e2e xdotool xclip

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
check_clipboard "LCD text Hello reaches the clipboard" \
  "F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7"

# --- a prefix of 0x and a comma separator ------------------------------------
click_at $TXT_PREFIX
xdotool type --delay 40 "0x"; sleep 0.2
click_at $TXT_SEP
xdotool key ctrl+a; xdotool type --delay 40 ","; sleep 0.4
check_clipboard "laid-out message reaches the clipboard" \
  "0xF0,0x41,0x10,0x45,0x12,0x10,0x00,0x00,0x48,0x65,0x6C,0x6C,0x6F,0x7C,0xF7"

# Back to the plain layout: no prefix, one space between bytes.
click_at $TXT_PREFIX
xdotool key ctrl+a BackSpace
click_at $TXT_SEP
xdotool key ctrl+a; xdotool type " "; sleep 0.3

# --- painting with Shift and the real pointer ---------------------------------
# Cell (row r, column c) lies at (125 + 24c, 42 + 10r) in the window.
point_at 3 300; sleep 0.1   # bare window: no cell under the mouse
xdotool keydown shift
point_at $((125 + 24 * 7)) $((42 + 10 * 2)); sleep 0.3
xdotool keyup shift; sleep 0.3
check_clipboard "Shift over row 2, column 7 stores page 1 with data byte 18 = 04" \
  "$(store_message 1 39)"

# --- reading two messages back from the clipboard -----------------------------
TEXT_ABC="F0 41 10 45 12 10 00 00 61 62 63 4A F7"
DIAGONAL="$(store_message 3 0 17 34 51 68 85 102 119 136 153 170 187 204 221 238 255)"
printf '%s\r\n%s\r\n' "$TEXT_ABC" "$DIAGONAL" | xclip -i -selection clipboard
sleep 0.3
click_at 404 492   # "Read from clipboard"
sleep 0.8
check_clipboard "cleaned messages reach the clipboard" \
  "$(printf '%s\r\n%s' "$TEXT_ABC" "$DIAGONAL")"
# The results window puts the focus in its text; keys go where the pointer is, so move
# it there, then select all and copy.
DIALOG=$(wait_window 'SysEx Decoding Results')
xdotool mousemove --window "$DIALOG" 300 100; sleep 0.2
xdotool key ctrl+a ctrl+c; sleep 0.3
check_clipboard "results window lists both messages" \
  "$(printf ' #1. Display text: abc\r\n #2. Graphic: Store page 3\r\n')"
xdotool key Return; sleep 0.3

# --- pages and prefix survive a SIGTERM and a new start -----------------------
# Page 3 (the decoded diagonal) is open: step down to page 2 and paint row 5, column 0.
click_at 577 45    # lower half of the page spinner
point_at 3 300; sleep 0.1   # bare window: no cell under the mouse
xdotool keydown shift
point_at 125 92; sleep 0.3
xdotool keyup shift
click_at $TXT_PREFIX
xdotool type --delay 40 "0x"; sleep 0.3
kill -TERM "$APP_PID"
if wait_app_end; then
  passed "SIGTERM ends the program"
else
  failed "the program did not end after SIGTERM"
fi
expected_memory=$( { store_message 1 39; printf '\r\n'; store_message 2 80; printf '\r\n'
  printf '%s\r\n' "$DIAGONAL"; for p in $(seq 4 10); do store_message "$p"; printf '\r\n'; done; } | od -An -tx1 | tr -d ' \n')
check "memory.txt holds the three pages exactly" "$expected_memory" \
  "$(od -An -tx1 "$APPDIR/memory.txt" | tr -d ' \n')"
check "settings.bin holds the prefix 0x and the default suffix and separator" \
  "0200000030780000000001000000 20" "$(od -An -tx1 "$APPDIR/settings.bin" | tr -d '\n' | sed 's/^ //; s/ //g; s/^\(.\{28\}\)/\1 /')"

start_app "$APPDIR" "$BINARY"
click_at $CHK_AUTO
click_at 216 388   # "Store graphic page" regenerates and copies page 1
check_clipboard "page 1 is back after the restart, in the saved layout" \
  "$(store_message 1 39 | sed 's/\([0-9A-F][0-9A-F]\)/0x\1/g')"
click_at 577 36    # upper half of the page spinner: page 2
check_clipboard "page 2 is back after the restart" \
  "$(store_message 2 80 | sed 's/\([0-9A-F][0-9A-F]\)/0x\1/g')"

checks_end
