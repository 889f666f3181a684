# Sourced, not run: sets the AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer
# options that every run of our instrumented code uses, tests and fuzzers alike.
#
#   sanitizer_options [REPORT_PREFIX]
#
# With a prefix, reports go to the files REPORT_PREFIX.<pid> instead of standard error.
# Options already in the environment come last, so a developer can still add or override.

sanitizer_options() {
  local here common symbolizer
  here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
  common="halt_on_error=1:abort_on_error=0:print_summary=1"
  [[ -n ${1:-} ]] && common+=":log_path=$1"
  # Debian's llvm-14 has no unversioned llvm-symbolizer on the PATH; without one, reports
  # show bare addresses instead of files and lines.
  for symbolizer in /usr/lib/llvm-14/bin/llvm-symbolizer /usr/bin/llvm-symbolizer; do
    if [[ -x $symbolizer ]]; then
      common+=":external_symbolizer_path=$symbolizer"
      break
    fi
  done
  export ASAN_OPTIONS="$common:detect_leaks=1:check_initialization_order=1:strict_init_order=1:detect_stack_use_after_return=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
  export LSAN_OPTIONS="suppressions=$here/leaks.supp:print_suppressions=0${LSAN_OPTIONS:+:$LSAN_OPTIONS}"
  export UBSAN_OPTIONS="$common:print_stacktrace=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"
}
