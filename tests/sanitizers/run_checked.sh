#!/usr/bin/env bash
# Runs a command of the sanitizer build with our sanitizer options, and fails when any
# process started under it, the command or a child of it, wrote a report. A child's report
# alone would otherwise be lost whenever its parent (the end-to-end script, say) does not
# look at how the child ended.
#
#   run_checked.sh COMMAND [ARGS...]
set -u
source "$(dirname "$0")/options.sh"
reports=$(mktemp -d "${TMPDIR:-/tmp}/lumidot-sanitizers.XXXXXX")
trap 'rm -rf "$reports"' EXIT
sanitizer_options "$reports/report"

"$@"
status=$?

shopt -s nullglob
found=("$reports"/report.*)
if [[ ${#found[@]} -gt 0 ]]; then
  for report in "${found[@]}"; do
    echo "=== sanitizer report from process ${report##*.} ===" >&2
    cat "$report" >&2
  done
  echo "FAILED: ${#found[@]} sanitizer report(s), see above" >&2
  [[ $status -ne 0 ]] || status=1
fi
exit "$status"
