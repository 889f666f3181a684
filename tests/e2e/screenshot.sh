#!/usr/bin/env bash
# Takes a picture of the program's window under Xvfb: screenshot.sh BINARY OUTPUT.png [draw]
# With "draw", paints a small picture on the grid first with the real pointer and Shift.
# With "midi", chooses the first MIDI port and shows the MIDI menu open (run it where a MIDI
# system has a port, as make screenshot does under a private JACK server).
set -eu
BINARY=$1
OUTPUT=$2
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"
start_xvfb
start_app "$E2E_TMP/app" "$BINARY"
if [[ "${3:-}" == "draw" ]]; then
  # Two beamed notes on page 1: cell (row r, column c) is at (125 + 24c, 42 + 10r)
  # in the window.
  picture=(
  "1 6" "1 7" "1 8" "1 9" "1 10" "1 11" "2 6" "2 11" "3 6" "3 7" "3 8" "3 9" "3 10" "3 11"
  "4 6" "4 11" "5 6" "5 11" "6 6" "6 11" "7 6" "7 11" "8 6" "8 11" "9 6" "9 11" "10 3" "10 4"
  "10 5" "10 6" "10 9" "10 10" "10 11" "11 2" "11 3" "11 4" "11 5" "11 6" "11 8" "11 9" "11 10"
  "11 11" "12 2" "12 3" "12 4" "12 5" "12 6" "12 8" "12 9" "12 10" "12 11" "13 3" "13 4" "13 5"
  "13 9" "13 10"
  )
  xdotool keydown shift
  for cell in "${picture[@]}"; do
    read -r r c <<<"$cell"
    point_at $((125 + 24 * c)) $((42 + 10 * r)); sleep 0.05
  done
  xdotool keyup shift
  point_at 560 500
  click_at 60 281
  xdotool type --delay 30 "Lumidot!"
  click_at 160 400   # back to the store message
  sleep 0.3
fi
if [[ "${3:-}" == "midi" ]]; then
  # Keys go where the pointer is, as there is no window manager.
  point_at 3 300
  xdotool key alt; sleep 0.3; xdotool key m; sleep 0.8; xdotool key 1; sleep 0.8
  point_at 3 300
  xdotool key alt; sleep 0.3; xdotool key m; sleep 0.8
fi
if [[ "${3:-}" == "import" ]]; then
  # The import dialog on a drawn picture: a quaver, black on white, larger than the page.
  convert -size 240x180 xc:white -fill black -draw "ellipse 90,140 38,28 0,360" \
    -draw "rectangle 120,20 132,140" -draw "polygon 132,20 190,60 190,84 132,44" \
    "$E2E_TMP/quaver.png"
  # No window manager gives the window the keyboard: the shortcut needs it.
  point_at 3 300; xdotool windowfocus --sync "$WINDOW"; sleep 0.3
  xdotool key ctrl+i
  wait_window 'Import Picture' >/dev/null; sleep 0.5
  xdotool type --delay 10 "$E2E_TMP/quaver.png"; xdotool key Return
  sleep 1
  WINDOW=$(xdotool getactivewindow 2>/dev/null || xdotool search --onlyvisible --name 'Import Picture' | tail -1)
fi
sleep 0.3
geometry=$(xdotool getwindowgeometry --shell "$WINDOW")
eval "$geometry"
import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" "$OUTPUT"
echo "wrote $OUTPUT (${WIDTH}x${HEIGHT})"
