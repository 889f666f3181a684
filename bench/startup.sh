#!/usr/bin/env bash
# Start-up of the real program under Xvfb with ten full pages beside it: the time from
# process start until its window is on screen, until it has handled a SIGTERM (so its
# start-up is over, the ten pages saved again and the process gone), and its peak memory.
set -u
BINARY=$1
HERE=$(cd "$(dirname "$0")/../tests/e2e" && pwd)
source "$HERE/xlib.sh"

if ! start_xvfb >"$E2E_TMP/xvfb-reason" 2>&1; then
  reason=$(cat "$E2E_TMP/xvfb-reason")
  echo "start-up benchmark skipped: $reason"
  exit 0
fi

# memory.txt with every pixel of every page on.
all_pixels=$(seq 0 255)
full_pages() { for p in $(seq 10); do store_message "$p" $all_pixels; printf '\r\n'; done; }

runs=5
visible=(); total=(); peak=()
for run in $(seq $runs); do
  folder="$E2E_TMP/run$run"
  mkdir -p "$folder"
  cp "$BINARY" "$folder/lumidot"
  full_pages > "$folder/memory.txt"
  start=$(date +%s%N)
  /usr/bin/time -f '%M' -o "$folder/peak" "$folder/lumidot" >/dev/null 2>&1 &
  APP_PID=$!
  xdotool search --sync --onlyvisible --name 'Lumidot by Tarrowen' >/dev/null
  shown=$(date +%s%N)
  pkill -TERM -f "^$folder/lumidot" 2>/dev/null
  wait "$APP_PID"; APP_PID=
  ended=$(date +%s%N)
  visible+=($(( (shown - start) / 1000000 )))
  total+=($(( (ended - start) / 1000000 )))
  peak+=($(cat "$folder/peak"))
  cmp -s <(full_pages) "$folder/memory.txt" \
    || echo "warning: run $run did not save the ten pages back unchanged"
done

median() { printf '%s\n' "$@" | sort -n | sed -n "$(( ($# + 1) / 2 ))p"; }
echo "Start-up of the real program with ten full pages (median of $runs runs)"
printf '  %-50s %6d ms\n' "process start to window on screen" "$(median "${visible[@]}")"
printf '  %-50s %6d ms\n' "process start to SIGTERM handled, pages saved, exit" "$(median "${total[@]}")"
printf '  %-50s %6d KiB\n' "peak resident memory" "$(median "${peak[@]}")"
