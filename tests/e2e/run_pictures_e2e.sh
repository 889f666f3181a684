#!/usr/bin/env bash
# End to end: a picture imported through the real File menu and the real file dialog, under
# Xvfb with the real X11 clipboard and real keys; then Ctrl+Z takes the import back.
# Fails, saying why, when no X server or tool is there: nothing here passes by skipping.
set -u
BINARY=$1
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"

begin_e2e xdotool xclip convert

# The picture: 16 x 16, black on white, a diagonal from the top left and a dot at row 3,
# column 12. Written as a plain PBM (1 is black), then made a PNG.
PICTURE_CELLS=(0 17 34 51 68 85 102 119 136 153 170 187 204 221 238 255 60)
{
  echo "P1 16 16"
  for r in $(seq 0 15); do
    row=""
    for c in $(seq 0 15); do
      bit=0
      for p in "${PICTURE_CELLS[@]}"; do (( p == 16 * r + c )) && bit=1; done
      row+="$bit "
    done
    echo "$row"
  done
} >"$E2E_TMP/picture.pbm"
PICTURE="$E2E_TMP/picture.png"
convert "pbm:$E2E_TMP/picture.pbm" "png:$PICTURE" || { echo "FAILED: convert made no PNG"; exit 1; }

start_app "$E2E_TMP/app" "$BINARY"
[[ -n "$WINDOW" ]] || { echo "FAILED: the window did not appear"; cat "$E2E_TMP/app.log"; exit 1; }

# The step before the import: Shift over row 2, column 7 with automatic copy on.
click_at 30 490   # "Automatically copy when SysEx changes"
point_at 3 300; sleep 0.1
xdotool keydown shift
point_at $((125 + 24 * 7)) $((42 + 10 * 2)); sleep 0.3
xdotool keyup shift; sleep 0.3
check_clipboard "the painted pixel is stored" "$(store_message 1 39)"
# The pointer rests on the bare window, away from the cells, from here on.
point_at 3 300; sleep 0.2

# File > Import picture... by keyboard, the path typed into the file dialog, OK in the preview.
# Without a window manager nobody gives the window the keyboard focus; the menu bar needs it.
# Alt+F belongs to "Read from clipboard" too, so the menu bar is reached as Alt alone selects
# it: Alt, then Down opens File, the first menu.
xdotool windowfocus --sync "$WINDOW"; sleep 0.3
xdotool key alt; sleep 0.3
xdotool key Down; sleep 0.4
xdotool key t   # "Import pic&ture..."
FILE_DIALOG=$(wait_window 'Import Picture')
[[ -n "$FILE_DIALOG" ]] || { echo "FAILED: no file dialog"; cat "$E2E_TMP/app.log"; exit 1; }
sleep 0.5
xdotool type --delay 20 "$PICTURE"; sleep 0.2
xdotool key Return; sleep 1
xdotool key Return   # OK in the preview, which has the same title
check_clipboard "the imported picture's store message reaches the clipboard" \
  "$(store_message 1 "${PICTURE_CELLS[@]}")"

# Ctrl+Z in the window: the import is undone and the old message comes back.
# Once the dialogs have closed, the keyboard goes back to the window as a window manager
# would give it back.
point_at 3 300; xdotool windowfocus --sync "$WINDOW"; sleep 0.3
xdotool key ctrl+z
check_clipboard "Ctrl+Z brings back the message before the import" "$(store_message 1 39)"
xdotool key ctrl+y
check_clipboard "Ctrl+Y imports it again" "$(store_message 1 "${PICTURE_CELLS[@]}")"

checks_end
