#!/usr/bin/env bash
# fuzz.sh [seconds] [target...]: builds the libFuzzer targets with clang (ASan+UBSan) and
# runs each for the given time (60 s by default), starting from fuzz/corpus/<target>.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
bash scripts/setup.sh
seconds=${1:-60}; shift || true
CXX=clang++ bash scripts/build.sh build-fuzz -DVANTREL1_BUILD_FUZZ=ON -DVANTREL1_BUILD_TESTS=OFF \
  -DVANTREL1_BUILD_QT=OFF -DVANTREL1_WERROR=OFF
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for f in build-fuzz/fuzz/fuzz_*; do targets+=("$(basename "$f" | sed 's/^fuzz_//')"); done
fi
status=0
for t in "${targets[@]}"; do
  work=$(mktemp -d)
  [ -d "fuzz/corpus/$t" ] && cp -r "fuzz/corpus/$t/." "$work/"
  echo "== fuzz_$t for ${seconds}s"
  log="$work.log"
  if VANTREL1_DIR="$root/resources" "build-fuzz/fuzz/fuzz_$t" -max_total_time="$seconds" -max_len=65536 \
       -print_final_stats=1 -artifact_prefix="$root/build-fuzz/" "$work" >"$log" 2>&1; then
    grep -E '^Done [0-9]+ runs' "$log" || tail -n 1 "$log"
  else
    # A finding: show the report; the input is saved in build-fuzz/ as crash-*/leak-*/timeout-*.
    grep -v '^#' "$log" | tail -n 40
    status=1
  fi
  rm -rf "$work" "$log"
done
exit $status
