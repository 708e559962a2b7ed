#!/usr/bin/env bash
# refresh-golden.sh [build-dir]: builds, renders the golden-output drawings (the line type
# catalogue and the sample road plan) with the options their test uses, and copies them
# over the reference images in tests/golden. Look at the images before committing them.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=${1:-build}
cd "$root"
bash scripts/build.sh "$dir"
VANTREL1_REFRESH_GOLDEN=1 QT_QPA_PLATFORM=offscreen \
  "$dir/tests/test_tools" --gtest_filter='GoldenOutput.*' >/dev/null
for f in tests/golden/*.png; do
  echo "$f  $("$dir/tools/vantrel1" crc "$f" | cut -d' ' -f1)"
done
