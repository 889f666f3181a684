#!/usr/bin/env bash
# Takes a picture of the program's window under Xvfb: screenshot.sh BINARY OUTPUT.png [draw]
# With "draw", paints a small picture on the grid first with the real pointer and Shift.
set -eu
BINARY=$1
OUTPUT=$2
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"
start_xvfb
start_app "$E2E_TMP/app" "$BINARY"
if [[ "${3:-}" == "draw" ]]; then
  # A heart on page 1: cell (row r, column c) is at (8 + 106 + 24c + 11, 8 + 30 + 10r + 4).
  heart=( "2 3" "2 4" "2 6" "2 7" "3 2" "3 5" "3 8" "4 2" "4 8" "5 3" "5 7" "6 4" "6 6" "7 5"
          "2 9" "2 10" "2 12" "2 13" "3 11" "3 14" )
  xdotool keydown shift
  for cell in "${heart[@]}"; do
    read -r r c <<<"$cell"
    xdotool mousemove --window "$WINDOW" $((125 + 24 * c)) $((42 + 10 * r)); sleep 0.05
  done
  xdotool keyup shift
  xdotool mousemove --window "$WINDOW" 560 500
  click_at 60 281
  xdotool type --delay 30 "Lumidot!"
  click_at 160 400   # back to the store message
  sleep 0.3
fi
sleep 0.3
geometry=$(xdotool getwindowgeometry --shell "$WINDOW")
eval "$geometry"
import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" "$OUTPUT"
echo "wrote $OUTPUT (${WIDTH}x${HEIGHT})"
