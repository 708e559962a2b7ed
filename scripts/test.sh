#!/usr/bin/env bash
# Sets up the machine, builds, and runs the whole test suite: the normal build, then the
# same tests under AddressSanitizer and UndefinedBehaviorSanitizer.
# VANTREL1_SKIP_SANITIZE=1 runs the normal build only.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
bash scripts/setup.sh
jobs=$(nproc)

bash scripts/build.sh build
ctest --test-dir build --output-on-failure --parallel "$jobs"

if [ "${VANTREL1_SKIP_SANITIZE:-0}" != 1 ]; then
  bash scripts/build.sh build-asan -DVANTREL1_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug
  ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1 \
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  LSAN_OPTIONS="suppressions=$root/scripts/lsan.supp" \
    ctest --test-dir build-asan --output-on-failure --parallel "$jobs"
fi
