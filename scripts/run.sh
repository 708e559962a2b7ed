#!/usr/bin/env bash
# Sets up the machine, builds the library and its command-line program, and runs the
# main job.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
bash scripts/setup.sh
bash scripts/build.sh build
./build/tools/vantrel1 version
