#!/usr/bin/env bash
# End to end, sending to the module: the real program under Xvfb with JACK as its MIDI system
# (run by run_with_jack.sh, which starts a private server with the dummy backend). The
# receiver's port is chosen in the real MIDI menu by keyboard, all pages are sent and arrive
# byte for byte in order with the module's pauses; then live sending follows 20 pixels
# painted quickly with Shift and the real pointer, and the last message to arrive is the
# final picture.
# Fails, saying why, when no X server, JACK server or receiver can be started.
#   run_midi_e2e.sh LUMIDOT JACK_RECEIVER LUMIDOT_CLI
set -u
BINARY=$1
RECEIVER=$2
CLI=$3
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"

if [[ -z "${JACK_DEFAULT_SERVER:-}" || "${LUMIDOT_MIDI_API:-}" != jack ]]; then
  echo "FAILED: run this through tests/device/run_with_jack.sh (ctest does), which starts JACK"
  exit 1
fi
begin_e2e xdotool jack_lsp python3

# The receiver goes before the program and the X server, whatever happens.
RECEIVER_PID=
midi_cleanup() {
  [[ -n "$RECEIVER_PID" ]] && kill "$RECEIVER_PID" 2>/dev/null && wait "$RECEIVER_PID" 2>/dev/null
  e2e_cleanup
}
trap midi_cleanup EXIT

RECEIVED="$E2E_TMP/received.txt"
"$RECEIVER" lumidot-receiver "$RECEIVED" >"$E2E_TMP/receiver.log" 2>&1 &
RECEIVER_PID=$!
listed=no
for _ in $(seq 100); do
  jack_lsp 2>/dev/null | grep -qx 'lumidot-receiver:in' && { listed=yes; break; }
  kill -0 "$RECEIVER_PID" 2>/dev/null || break
  sleep 0.1
done
if [[ $listed != yes ]]; then
  echo "FAILED: the receiver's JACK port never appeared: $(cat "$E2E_TMP/receiver.log")"
  exit 1
fi

# The program notes each hand-over to JACK, so that its pauses are judged exactly.
export LUMIDOT_MIDI_LOG="$E2E_TMP/handed-over.txt"
APPDIR="$E2E_TMP/app"
start_app "$APPDIR" "$BINARY"
[[ -n "$WINDOW" ]] || { echo "FAILED: the window did not appear: $(cat "$E2E_TMP/app.log")"; exit 1; }

# Keys go where the pointer is, as there is no window manager: it rests on the bare window.
key() { point_at 3 300; sleep 0.1; xdotool key "$@"; sleep 0.4; }
# Alt, then M: the MIDI menu opens, fresh from the MIDI system.
open_midi_menu() { key alt; xdotool key m; sleep 0.6; }
# Waits until the receiver has recorded $1 messages (up to 10 s), then a moment for more.
received_count() { wc -l <"$RECEIVED" 2>/dev/null || echo 0; }
wait_received() {
  local i
  for i in $(seq 100); do (( $(received_count) >= $1 )) && break; sleep 0.1; done
  sleep 0.5
}

# --- choosing the receiver's port in the MIDI menu -----------------------------
# The menu numbers the ports from 1 in the order the MIDI system lists them, as ports does.
number=$("$CLI" ports | grep -nx 'lumidot-receiver:in' | cut -d: -f1)
check "the receiver's port is one of the first nine" yes "$([[ $number =~ ^[1-9]$ ]] && echo yes)"
open_midi_menu
key "${number:-1}"
sleep 0.5

# --- all pages, in order, with the pauses -----------------------------------------
# Page 1 has the pixel of row 2, column 7; the others are blank in a new folder.
point_at 3 300; sleep 0.1
xdotool keydown shift
point_at $((125 + 24 * 7)) $((42 + 10 * 2)); sleep 0.3
xdotool keyup shift; sleep 0.3
open_midi_menu
key a
wait_received 11
expected=$(store_message 1 39
  for page in $(seq 2 10); do echo; store_message "$page"; done
  echo; echo "F0 41 10 45 12 10 20 00 01 4F F7")
check "the receiver got the ten pages and the display of page 1, in order" \
  "$expected" "$(cut -d' ' -f2- "$RECEIVED")"

# Each pause as handed over exactly; as received, typically (JACK without realtime may
# deliver a message late now and then), to within a cycle of the dummy backend.
pauses=$(python3 - "$LUMIDOT_MIDI_LOG" "$RECEIVED" "${LUMIDOT_TEST_JACK_PERIOD_US:-21333}" <<'PY'
import statistics, sys
def read(path):
    with open(path) as f:
        return [(int(line.split()[0]), len(line.split()) - 1) for line in f if line.strip()]
handed, received, cycle = read(sys.argv[1]), read(sys.argv[2]), int(sys.argv[3])
def pauses(times):
    return [b[0] - a[0] - 320 * a[1] for a, b in zip(times, times[1:])]
shortest = min(pauses(handed[:11]))
median = statistics.median(pauses(received[:11]))
print("handed-over-ok" if shortest >= 40000 else f"handed over {shortest} us apart",
      "received-ok" if median + cycle >= 40000 else f"received {median} us apart (median)")
PY
)
check "the pauses are at least 40 ms" "handed-over-ok received-ok" "$pauses"

# --- live sending while painting ------------------------------------------------------
open_midi_menu
key l
before=$(received_count)
point_at 3 300; sleep 0.1
xdotool keydown shift
painted=(39)
for cell in $(seq 0 19); do
  row=$((cell % 16)) column=$((cell / 16 * 4 + 2))
  point_at $((125 + 24 * column)) $((42 + 10 * row))
  painted+=($((16 * row + column)))
done
xdotool keyup shift
sleep 1.5
check "live sending sent while painting" yes "$( (( $(received_count) > before )) && echo yes)"
check "the last message received is the final picture" \
  "$(store_message 1 "${painted[@]}")" "$(tail -1 "$RECEIVED" | cut -d' ' -f2-)"

checks_end
