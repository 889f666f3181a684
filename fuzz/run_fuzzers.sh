#!/usr/bin/env bash
# Runs each fuzzer for a fixed time and fails when any of them found a crash, a leak,
# undefined behaviour or an input that runs too long. Prints one line per fuzzer with its
# number of executions, and the end of a failing fuzzer's log with the report.
#
#   run_fuzzers.sh SECONDS WORK_FOLDER FUZZER...
#
# WORK_FOLDER keeps each fuzzer's growing corpus, its log and the inputs that failed.
# Committed seeds in fuzz/corpus/<fuzzer>/ are read, never written.
set -u
seconds=$1 work=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
source "$here/../tests/sanitizers/options.sh"
sanitizer_options

failed=0
for fuzzer in "$@"; do
  name=$(basename "$fuzzer")
  corpus=$work/corpus/$name artifacts=$work/failures/$name/ log=$work/$name.log
  mkdir -p "$corpus" "$artifacts"
  seeds=()
  [[ -d $here/corpus/$name ]] && seeds=("$here/corpus/$name")

  # -timeout: one input running this long counts as a hang and fails the run.
  "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="$artifacts" "$corpus" "${seeds[@]}" >"$log" 2>&1
  status=$?

  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  [[ -n $runs ]] || runs=$(sed -n 's/^Done \([0-9]*\) runs.*/\1/p' "$log" | tail -1)
  units=$(ls "$corpus" | wc -l)
  if [[ $status -eq 0 ]]; then
    printf '%-24s ok      %10s executions in %s s, corpus of %s inputs\n' \
      "$name" "${runs:-?}" "$seconds" "$units"
  else
    printf '%-24s FAILED  %10s executions, exit status %s; failing input in %s\n' \
      "$name" "${runs:-?}" "$status" "$artifacts"
    tail -60 "$log"
    failed=$((failed + 1))
  fi
done
[[ $failed -eq 0 ]]
