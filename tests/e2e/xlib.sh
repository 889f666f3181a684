# Shared by the end-to-end test and the screenshot script: a private Xvfb display, the
# program started in a folder of its own, and helpers to act on its window.
# Sourced, not run.

E2E_TMP=$(mktemp -d)
XVFB_PID=
APP_PID=

e2e_cleanup() {
  # The program ends before its X server, as it would for a user, so that its exit and the
  # leak check at exit are the normal ones.
  if [[ -n "$APP_PID" ]]; then
    kill "$APP_PID" 2>/dev/null
    wait_app_end || kill -KILL "$APP_PID" 2>/dev/null
  fi
  [[ -n "$XVFB_PID" ]] && kill "$XVFB_PID" 2>/dev/null
  wait 2>/dev/null
  rm -rf "$E2E_TMP"
}
trap e2e_cleanup EXIT

# Named checks: each prints ok or FAILED with both values; checks_end sums them up and fails
# when any failed.
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
checks_end() {
  echo "$passes passed, $failures failed"
  [[ $failures -eq 0 ]]
}
passed() { echo "ok: $1"; passes=$((passes + 1)); }
failed() { echo "FAILED: $1"; failures=$((failures + 1)); }

# Waits up to 5 s for the clipboard to hold the expected text, then checks it.
check_clipboard() {  # check_clipboard NAME EXPECTED
  local i actual
  for i in $(seq 50); do
    actual=$(clipboard)
    [[ "$actual" == "$2" ]] && break
    sleep 0.1
  done
  check "$1" "$2" "$actual"
}

# Starts Xvfb and makes sure the tools named are there; otherwise ends the test as failed,
# saying why.
begin_e2e() {  # begin_e2e TOOL...
  if ! start_xvfb >"$E2E_TMP/xvfb-reason" 2>&1; then
    echo "FAILED: the end-to-end test needs an X server: $(cat "$E2E_TMP/xvfb-reason")"
    exit 1
  fi
  local tool
  for tool in "$@"; do
    command -v "$tool" >/dev/null || { echo "FAILED: $tool is not installed"; exit 1; }
  done
}

# Starts Xvfb on a display number of its own and waits until it answers; returns 1 when
# none can be started. -noreset: by default the server starts itself over whenever its last
# client leaves (the readiness check, a copy of the program that ended), and a client that
# connects in that moment is turned away; under load one start in a few hundred failed so.
# The number is drawn at random from a wide range rather than taken as the lowest free one,
# so that a display a test has just given up is not at once another test's.
start_xvfb() {
  command -v Xvfb >/dev/null || { echo "Xvfb is not installed"; return 1; }
  local attempt i n
  for attempt in $(seq 20); do
    n=$((200 + RANDOM % 30000))
    [[ -e "/tmp/.X$n-lock" || -e "/tmp/.X11-unix/X$n" ]] && continue
    Xvfb ":$n" -screen 0 1024x768x24 -nolisten tcp -noreset >"$E2E_TMP/xvfb.log" 2>&1 &
    XVFB_PID=$!
    export DISPLAY=":$n"
    for i in $(seq 100); do
      xdpyinfo >/dev/null 2>&1 && return 0
      kill -0 "$XVFB_PID" 2>/dev/null || break
      sleep 0.1
    done
    kill "$XVFB_PID" 2>/dev/null; wait "$XVFB_PID" 2>/dev/null; XVFB_PID=
  done
  echo "no X server could be started: $(tail -3 "$E2E_TMP/xvfb.log" 2>/dev/null)"
  return 1
}

# Copies the program into folder $1 and starts it there; sets APP_PID and WINDOW.
start_app() {
  local folder=$1 binary=$2
  mkdir -p "$folder"
  cp "$binary" "$folder/lumidot"
  # Data and settings folders of its own: never the files of a real user of this machine.
  XDG_DATA_HOME="$E2E_TMP/data" XDG_CONFIG_HOME="$E2E_TMP/config" QT_QPA_PLATFORM=xcb \
    "$folder/lumidot" >"$E2E_TMP/app.log" 2>&1 &
  APP_PID=$!
  WINDOW=$(wait_window 'Lumidot by Tarrowen \(v')
  # Let the start-up finish painting and loading.
  sleep 0.7
}

# search_until SECONDS XDOTOOL-SEARCH-ARGS...: prints the first visible window the search
# finds, looking again every 0.1 s for up to SECONDS. Each look is a fresh search: a menu or
# tooltip that closes while xdotool walks the window tree makes that one search die of an X
# BadWindow error, and the next look goes on.
search_until() {
  local tries=$(($1 * 10)) i found
  shift
  for ((i = 0; i < tries; i++)); do
    found=$(xdotool search --onlyvisible "$@" 2>/dev/null | head -1)
    [[ -n "$found" ]] && { echo "$found"; return 0; }
    sleep 0.1
  done
  return 1
}

# Prints the id of the first visible window whose title matches $1, waiting up to 30 s; a
# program that died must fail the test, not hang it until CTest kills it unreported.
wait_window() { search_until 30 --name "$1"; }

# Waits for the program to end after a signal; fails if it does not within 10 s.
wait_app_end() {
  local i
  for i in $(seq 100); do
    kill -0 "$APP_PID" 2>/dev/null || { wait "$APP_PID" 2>/dev/null; APP_PID=; return 0; }
    sleep 0.1
  done
  return 1
}

# Moves the pointer to, or clicks at, a point of the window's client area (pixels). The
# designed client area lies below the menu bar, at the foot of the window.
point_at() {
  local top
  top=$(HEIGHT=0; eval "$(xdotool getwindowgeometry --shell "$WINDOW" 2>/dev/null)"
    echo $(( HEIGHT > 528 ? HEIGHT - 528 : 0 )))
  xdotool mousemove --window "$WINDOW" "$1" $(( $2 + top ))
}
click_at() { point_at "$1" "$2"; xdotool click 1; sleep 0.2; }
clipboard() { xclip -o -selection clipboard 2>/dev/null; }

# The store message for page $1 with the pixels given by index (16 * row + column) on,
# as the program writes it: store_message 1 39
store_message() {
  local page=$1; shift
  local -a data=() body=()
  local i p sum=0 line
  for i in $(seq 0 63); do data[i]=0; done
  for p in "$@"; do
    local r=$((p / 16)) c=$((p % 16))
    local idx=$(( (c / 5) * 16 + r ))
    data[idx]=$(( data[idx] | (16 >> (c % 5)) ))
  done
  body=(16 $(( 1 + (page - 1) / 2 )) $(( page % 2 == 0 ? 64 : 0 )) "${data[@]}")
  for i in "${body[@]}"; do sum=$((sum + i)); done
  line="F0 41 10 45 12"
  for i in "${body[@]}" $(( (128 - sum % 128) % 128 )); do line+=$(printf ' %02X' "$i"); done
  printf '%s F7' "$line"
}
