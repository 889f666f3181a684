#!/usr/bin/env bash
# Runs a test program against a private JACK server (dummy backend, no realtime) under a name
# that no other test and no JACK server of the user's shares. The server is stopped however
# the program ends, even when this script itself is killed. Fails, saying why, when the
# server cannot be started: the test never passes by skipping.
#   run_with_jack.sh PROGRAM [ARGS...]
set -u
for tool in jackd jack_wait; do
  command -v $tool >/dev/null ||
    { echo "FAILED: $tool is not installed (scripts/install-deps installs jackd2)"; exit 1; }
done

export JACK_DEFAULT_SERVER="lumidot-test-$$-$RANDOM"
export JACK_NO_AUDIO_RESERVATION=1  # no D-Bus device reservation for a dummy backend
export LUMIDOT_MIDI_API=jack
# 64 frames at 48 kHz: a cycle every 1.33 ms, so arrival times are that fine.
export LUMIDOT_TEST_JACK_PERIOD_US=1333
log=$(mktemp)

# Synchronous mode: a late client delays the cycle instead of losing its MIDI. A higher
# priority where allowed (nice ignores it otherwise), as other tests and builds share the
# processor and JACK's cycles run without realtime scheduling.
boost=()
[[ $(nice -n -10 nice 2>/dev/null) -lt 0 ]] && boost=(nice -n -10)
"${boost[@]}" jackd --no-realtime -S -n "$JACK_DEFAULT_SERVER" -d dummy -r 48000 -p 64 -w 1333 \
  >"$log" 2>&1 &
jack_pid=$!
# Watches this script: if it is killed outright (a timeout), the server goes too.
script_pid=$$
( while kill -0 $script_pid 2>/dev/null && kill -0 $jack_pid 2>/dev/null; do sleep 1; done
  kill -TERM $jack_pid 2>/dev/null ) </dev/null >/dev/null 2>&1 &
watch_pid=$!

cleanup() {
  kill -TERM $jack_pid 2>/dev/null
  for _ in $(seq 50); do kill -0 $jack_pid 2>/dev/null || break; sleep 0.1; done
  kill -KILL $jack_pid 2>/dev/null
  wait $jack_pid 2>/dev/null
  kill $watch_pid 2>/dev/null
  rm -f "$log" /dev/shm/jack_sem.*_"${JACK_DEFAULT_SERVER}"_*
}
trap cleanup EXIT
trap 'exit 1' INT TERM

# Up to 10 s for the server to answer, unless it has already given up.
started=no
for _ in $(seq 50); do
  kill -0 $jack_pid 2>/dev/null || break
  if [[ $(jack_wait -s "$JACK_DEFAULT_SERVER" -c 2>/dev/null) == running ]]; then
    started=yes
    break
  fi
  sleep 0.2
done
if [[ $started != yes ]]; then
  echo "FAILED: the JACK server (jackd, dummy backend) did not start:"
  cat "$log"
  exit 1
fi
"${boost[@]}" "$@"
