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
full_page_line() {
  local page=$1 mid low sum=0 line bytes=()
  mid=$(( 1 + (page - 1) / 2 )); low=$(( page % 2 == 0 ? 64 : 0 ))
  bytes=(16 $mid $low)
  for i in $(seq 48); do bytes+=(31); done
  for i in $(seq 16); do bytes+=(16); done
  for b in "${bytes[@]}"; do sum=$((sum + b)); done
  bytes+=($(( (128 - sum % 128) % 128 )))
  line="F0 41 10 45 12"
  for b in "${bytes[@]}"; do line+=$(printf ' %02X' "$b"); done
  printf '%s F7\r\n' "$line"
}

runs=5
visible=(); total=(); peak=()
for run in $(seq $runs); do
  folder="$E2E_TMP/run$run"
  mkdir -p "$folder"
  cp "$BINARY" "$folder/lumidot"
  for p in $(seq 10); do full_page_line "$p"; done > "$folder/memory.txt"
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
  cmp -s <(for p in $(seq 10); do full_page_line "$p"; done) "$folder/memory.txt" \
    || echo "warning: run $run did not save the ten pages back unchanged"
done

median() { printf '%s\n' "$@" | sort -n | sed -n "$(( ($# + 1) / 2 ))p"; }
echo "Start-up of the real program with ten full pages (median of $runs runs)"
printf '  %-50s %6d ms\n' "process start to window on screen" "$(median "${visible[@]}")"
printf '  %-50s %6d ms\n' "process start to SIGTERM handled, pages saved, exit" "$(median "${total[@]}")"
printf '  %-50s %6d KiB\n' "peak resident memory" "$(median "${peak[@]}")"
