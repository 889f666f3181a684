#!/usr/bin/env bash
# End to end, files: the real program under Xvfb opens a MIDI file written by mido through
# Ctrl+O and the real file dialog, shows its messages in the results window, and exports the
# pages through the File menu by keyboard; the export holds memory.txt's messages, and after
# a new start the song is first under Open Recent.
# Fails, saying why, when no X server can be started: nothing here passes by skipping.
set -u
BINARY=$1
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"

# Types a path into the file dialog titled $1, once it is up, and accepts it.
answer_dialog() {  # answer_dialog TITLE PATH
  local dialog
  dialog=$(wait_window "^$1\$")
  [[ -n "$dialog" ]] || { failed "no dialog titled $1"; return 1; }
  # Keys go where the pointer is; the file name box has the focus.
  xdotool mousemove --window "$dialog" 100 60; sleep 0.3
  xdotool type --delay 20 "$2"; sleep 0.3
  xdotool key Return; sleep 0.8
}

begin_e2e xdotool xclip

# Waits for the results window, copies its text with Ctrl+A, Ctrl+C and checks it lists the
# song's two messages; closes it. Returns 1 when no results window came.
check_song_results() {  # check_song_results NAME
  local results
  results=$(wait_window 'SysEx Decoding Results')
  [[ -n "$results" ]] || { failed "$1: no results window"; return 1; }
  xdotool mousemove --window "$results" 300 100; sleep 0.2
  xdotool key ctrl+a ctrl+c; sleep 0.3
  check "$1" \
    "$(printf ' #1. [00:00.000 track 2] Display text: abc\r\n #2. [00:00.250 track 2] Graphic: Store page 3\r\n')" \
    "$(clipboard)"
  xdotool key Return; sleep 0.3
}

# A format 1 song by another MIDI library: a tempo track, then a track with the LCD text
# "abc" at the start and the diagonal stored as page 3 one beat (0.25 s) later.
DIAGONAL="$(store_message 3 0 17 34 51 68 85 102 119 136 153 170 187 204 221 238 255)"
SONG="$E2E_TMP/song.mid"
if ! /usr/bin/python3 - "$SONG" "$DIAGONAL" <<'PY'
import sys, mido
path, diagonal = sys.argv[1], [int(b, 16) for b in sys.argv[2].split()]
song = mido.MidiFile(type=1, ticks_per_beat=480)
tempo, lcd = mido.MidiTrack(), mido.MidiTrack()
song.tracks += [tempo, lcd]
tempo.append(mido.MetaMessage('set_tempo', tempo=250000, time=0))
lcd.append(mido.Message('sysex', data=[0x41, 0x10, 0x45, 0x12, 0x10, 0x00, 0x00, 0x61, 0x62, 0x63, 0x4A], time=0))
lcd.append(mido.Message('sysex', data=diagonal[1:-1], time=480))
song.save(path)
PY
then
  echo "FAILED: mido could not write the song (scripts/install-deps installs python3-mido)"
  exit 1
fi

APPDIR="$E2E_TMP/app"
start_app "$APPDIR" "$BINARY"
[[ -n "$WINDOW" ]] || { echo "FAILED: the window did not appear"; cat "$E2E_TMP/app.log"; exit 1; }

# --- File > Open by Ctrl+O, the path typed into the real dialog -----------------
click_at 3 300      # the bare window: no control takes the key for itself
xdotool key ctrl+o
answer_dialog "Open" "$SONG"
if ! check_song_results "the results window lists both messages with their times and track"; then
  cat "$E2E_TMP/app.log"; exit 1
fi

# --- File > Export all pages as .syx: Alt, then F for File, then P -------------
EXPORT="$E2E_TMP/pages.syx"
point_at 3 300; sleep 0.2
xdotool key alt; sleep 0.3
xdotool key f; sleep 0.4
xdotool key p
answer_dialog "Export all pages as .syx" "$EXPORT"
if [[ -f "$EXPORT" ]]; then passed "the pages were exported"; else failed "no $EXPORT"; fi

# --- after closing, memory.txt holds the same messages --------------------------
kill -TERM "$APP_PID"
if wait_app_end; then
  passed "SIGTERM ends the program"
else
  failed "the program did not end after SIGTERM"
fi
expected_memory=$( { store_message 1; printf '\r\n'; store_message 2; printf '\r\n'
  printf '%s\r\n' "$DIAGONAL"; for p in $(seq 4 10); do store_message "$p"; printf '\r\n'; done; } )
check "memory.txt holds the diagonal on page 3" "$expected_memory" "$(cat "$APPDIR/memory.txt")"
check "the export holds memory.txt's ten messages, byte for byte" \
  "$(tr -d ' \r\n' <"$APPDIR/memory.txt" | tr 'A-F' 'a-f')" \
  "$(od -An -v -tx1 "$EXPORT" 2>/dev/null | tr -d ' \n')"

# --- a new start: File > Open Recent > 1 opens the song again ------------------
start_app "$APPDIR" "$BINARY"
point_at 3 300; sleep 0.2
xdotool key alt; sleep 0.3
xdotool key f; sleep 0.4
xdotool key r; sleep 0.4
xdotool key 1
check_song_results "the recent song opens again after a restart"

checks_end
