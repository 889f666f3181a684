#!/usr/bin/env bash
# End to end: the real program's two files with real processes under Xvfb. Two copies on
# the same files, a copy killed with its lock held, a leftover of a killed save, and a
# program folder that its user really cannot write (run as an unprivileged user when the
# test runs as root, since root writes past permission bits).
set -u
export LC_ALL=C
BINARY=$1
HERE=$(cd "$(dirname "$0")" && pwd)
source "$HERE/xlib.sh"

begin_e2e xdotool xclip setpriv

# Every copy started here, so that the clean-up ends them all.
PIDS=()
storage_cleanup() {
  local pid
  for pid in "${PIDS[@]}"; do kill -KILL "$pid" 2>/dev/null; done
  e2e_cleanup
}
trap storage_cleanup EXIT

# start_copy FOLDER [USER]: starts the program in FOLDER (as USER, when given) with its own
# data folder; sets PID.
start_copy() {
  local folder=$1 user=${2:-}
  if [[ -n "$user" ]]; then
    setpriv --reuid="$user" --regid="$(id -g "$user")" --clear-groups \
      env HOME="$E2E_TMP/home-$user" XDG_DATA_HOME="$E2E_TMP/data-$user" \
      XDG_RUNTIME_DIR="$E2E_TMP/run-$user" QT_QPA_PLATFORM=xcb \
      "$folder/lumidot" >>"$E2E_TMP/app.log" 2>&1 &
  else
    XDG_DATA_HOME="$E2E_TMP/data" QT_QPA_PLATFORM=xcb "$folder/lumidot" >>"$E2E_TMP/app.log" 2>&1 &
  fi
  PID=$!
  PIDS+=("$PID")
}

# find_window PID TITLE-PATTERN: the visible window of that process, waiting up to 10 s.
find_window() {
  search_until 10 --all --pid "$1" --name "$2"
}

# Whether a window of process PID matching the pattern shows up within 2 s.
window_appears() {
  search_until 2 --all --pid "$1" --name "$2" >/dev/null
}

# press WINDOW KEY: keys go where the pointer is, as there is no window manager.
press() { xdotool mousemove --window "$1" 20 20; sleep 0.2; xdotool key "$2"; sleep 0.3; }

# Ends process PID with SIGTERM (which closes the window and saves) and waits for it.
end_copy() {
  kill -TERM "$1" 2>/dev/null
  local i
  for i in $(seq 100); do kill -0 "$1" 2>/dev/null || return 0; sleep 0.1; done
  return 1
}

ended_within() {  # ended_within PID SECONDS
  local i
  for i in $(seq $(($2 * 10))); do kill -0 "$1" 2>/dev/null || return 0; sleep 0.1; done
  return 1
}

files_of() { (cd "$1" && ls -A | sort | tr '\n' ' '); }
CAPTION='^Lumidot by Tarrowen \(v[0-9.]+\)'

# --- a second copy on the same files -----------------------------------------
APP="$E2E_TMP/app"
mkdir -p "$APP" && cp "$BINARY" "$APP/lumidot"
start_copy "$APP"; FIRST=$PID
FIRST_WINDOW=$(find_window "$FIRST" "$CAPTION\$")
[[ -n "$FIRST_WINDOW" ]] || { echo "FAILED: the first copy shows no window"; cat "$E2E_TMP/app.log"; exit 1; }

start_copy "$APP"; SECOND=$PID
QUESTION=$(find_window "$SECOND" '^Lumidot is already running$')
check "a second copy asks at once" "yes" "$([[ -n "$QUESTION" ]] && echo yes || echo no)"
[[ -n "${SHOTS:-}" ]] && import -window root "$SHOTS/second-copy-question.png"
press "$QUESTION" Return   # the default button: Open Read-Only
check "the read-only copy says so in its title" "yes" \
  "$(window_appears "$SECOND" "$CAPTION \\[Read-Only\\]\$" && echo yes || echo no)"
end_copy "$SECOND"
check "closing the read-only copy writes neither file" ".lumidot.lock lumidot " "$(files_of "$APP")"

start_copy "$APP"; THIRD=$PID
QUESTION=$(find_window "$THIRD" '^Lumidot is already running$')
press "$QUESTION" Escape   # Quit
check "Quit ends the second copy" "yes" "$(ended_within "$THIRD" 5 && echo yes || echo no)"
check "Quit touches neither file" ".lumidot.lock lumidot " "$(files_of "$APP")"

end_copy "$FIRST"
check "the first copy saves both files and gives up its lock" "lumidot memory.txt settings.bin " \
  "$(files_of "$APP")"

# --- a copy killed with its lock held, and a leftover of a killed save ---------
start_copy "$APP"; KILLED=$PID
find_window "$KILLED" "$CAPTION\$" >/dev/null
kill -KILL "$KILLED"; wait "$KILLED" 2>/dev/null
check "the killed copy leaves its lock" "yes" "$([[ -e "$APP/.lumidot.lock" ]] && echo yes || echo no)"
printf 'half a save' >"$APP/settings.bin.aB3xYz"
start_copy "$APP"; NEXT=$PID
check "the next copy takes over the dead copy's lock without asking" "yes" \
  "$(window_appears "$NEXT" "$CAPTION\$" && echo yes || echo no)"
check "and nothing asks" "no" \
  "$(window_appears "$NEXT" '^Lumidot is already running$' && echo yes || echo no)"
check "the leftover of the killed save is gone" ".lumidot.lock lumidot memory.txt settings.bin " \
  "$(files_of "$APP")"
end_copy "$NEXT"

# --- a program folder its user cannot write, over two runs ---------------------
# Root writes into read-only folders, so the copy then runs as an ordinary user.
RO="$E2E_TMP/readonly"
mkdir -p "$RO" && cp "$BINARY" "$RO/lumidot" && cp "$APP/memory.txt" "$APP/settings.bin" "$RO/"
RUN_AS=
if [[ $(id -u) -eq 0 ]]; then
  RUN_AS=nobody
  chmod 755 "$E2E_TMP"
  mkdir -p "$E2E_TMP/home-nobody" "$E2E_TMP/data-nobody" "$E2E_TMP/run-nobody"
  chown nobody "$E2E_TMP/home-nobody" "$E2E_TMP/data-nobody" "$E2E_TMP/run-nobody"
  chmod 700 "$E2E_TMP/run-nobody"
  DATA="$E2E_TMP/data-nobody/Lumidot"
else
  DATA="$E2E_TMP/data/Lumidot"
fi
chmod 555 "$RO"
before=$(cat "$RO/memory.txt" "$RO/settings.bin" | md5sum)

start_copy "$RO" $RUN_AS; RUN1=$PID
NOTES=$(find_window "$RUN1" '^Pages and layout files$')
check "run 1 says where the files go from now on" "yes" "$([[ -n "$NOTES" ]] && echo yes || echo no)"
[[ -n "${SHOTS:-}" ]] && import -window root "$SHOTS/read-only-folder-notes.png"
press "$NOTES" Return
WINDOW=$(find_window "$RUN1" "$CAPTION\$")
click_at 200 497   # the prefix
xdotool key ctrl+a; xdotool type --delay 40 '$'; sleep 0.3
end_copy "$RUN1"
check "run 1 saves its prefix in the user data folder" "0100000024" \
  "$(od -An -tx1 -N5 "$DATA/settings.bin" 2>/dev/null | tr -d ' \n')"

start_copy "$RO" $RUN_AS; RUN2=$PID
WINDOW=$(find_window "$RUN2" "$CAPTION\$")
check "run 2 has nothing to tell" "no" \
  "$(window_appears "$RUN2" '^Pages and layout files$' && echo yes || echo no)"
click_at 30 490    # automatic copy
click_at 216 388   # the store message of page 1, laid out
actual=""
for i in $(seq 30); do actual=$(clipboard | cut -c1-3); [[ "$actual" == '$F0' ]] && break; sleep 0.1; done
check "run 2 shows run 1's prefix" '$F0' "$actual"
end_copy "$RUN2"
chmod 755 "$RO"
check "the read-only folder's files are untouched" "$before" "$(cat "$RO/memory.txt" "$RO/settings.bin" | md5sum)"

checks_end
